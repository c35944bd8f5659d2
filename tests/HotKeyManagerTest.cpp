#include "HotKeyManager.h"

#include "Fakes/FakeHotKeyRegistrar.h"
#include "Fakes/FakeKeyboardLayout.h"
#include "Fakes/FakeSystemLog.h"

#include <QCoreApplication>

#include <gtest/gtest.h>

using namespace Lumenote;

namespace {

class HotKeyManagerTest : public testing::Test {
protected:
    void SetUp() override
    {
        m_layout.characters.insert(22, u"6"_qs);
        m_manager->onHotKey = [this] { ++m_presses; };
        m_manager->onLost = [this] { ++m_losses; };
    }

    const Fakes::CollectedLog m_log;
    Fakes::FakeHotKeyRegistrar m_registrar;
    Fakes::FakeKeyboardLayout m_layout;
    std::unique_ptr<HotKeyManager> m_manager =
        std::make_unique<HotKeyManager>(m_registrar, m_layout);
    int m_presses = 0;
    int m_losses = 0;

    const HotKeyShortcut m_usual{};
    const Fakes::FakeHotKeyRegistrar::Key m_usualKey{22, 0x300};
};

TEST_F(HotKeyManagerTest, aPressArrivesBehindTheSystemsEvent)
{
    ASSERT_TRUE(m_manager->registerShortcut(m_usual));
    EXPECT_EQ(m_registrar.registered, m_usualKey);
    m_registrar.press();
    EXPECT_EQ(m_presses, 0);
    QCoreApplication::processEvents();
    EXPECT_EQ(m_presses, 1);

    m_manager->onHotKey = nullptr;
    m_registrar.press();
    QCoreApplication::processEvents();
    m_registrar.press();
    m_manager.reset();
    QCoreApplication::processEvents();
    EXPECT_EQ(m_presses, 1);
    EXPECT_FALSE(m_registrar.handler);
}

TEST_F(HotKeyManagerTest, theHandlerIsInstalledOnce)
{
    EXPECT_TRUE(m_manager->registerShortcut(m_usual));
    EXPECT_TRUE(m_manager->registerShortcut(m_usual));
    m_manager->unregister();
    EXPECT_FALSE(m_registrar.registered);
    EXPECT_FALSE(m_manager->shortcut());
    EXPECT_TRUE(m_manager->registerShortcut({.keyCode = 49, .modifiers = 0x800}));
    EXPECT_EQ(m_registrar.installations, 1);
    EXPECT_EQ(m_registrar.registrations, 3);
    EXPECT_EQ(m_log->messages(), QStringList());
}

TEST_F(HotKeyManagerTest, aFailureLeavesNoHotKeyAndALine)
{
    const auto check = [this](const HotKeyShortcut& shortcut, const QString& line) {
        EXPECT_FALSE(m_manager->registerShortcut(shortcut));
        EXPECT_EQ(m_log->messages().last(), line);
        EXPECT_FALSE(m_registrar.registered);
        EXPECT_FALSE(m_manager->shortcut());
    };
    m_registrar.handlerError = Platform::Error{.message = {}, .code = -1};
    check(m_usual, u"hotkey: couldn't install the hotkey handler (OSStatus -1)"_qs);
    EXPECT_EQ(m_registrar.registrations, 0);

    m_registrar.handlerError.reset();
    ASSERT_TRUE(m_manager->registerShortcut(m_usual));
    check(
        {.keyCode = 22, .modifiers = 0x200}, u"hotkey: refusing to register ⇧6 — no ⌘, ⌃ or ⌥"_qs);
    EXPECT_EQ(m_registrar.registrations, 1);

    ASSERT_TRUE(m_manager->registerShortcut(m_usual));
    m_registrar.taken = {{122, 0x1000}};
    check({.keyCode = 122, .modifiers = 0x1000},
        u"hotkey: ⌃F1 is unavailable (OSStatus 10) — it may be taken by another app or by the "
        "system"_qs);
    EXPECT_EQ(m_log->entries().size(), 3);
}

TEST_F(HotKeyManagerTest, whatIsLostIsToldAndCanBeRegisteredAgain)
{
    ASSERT_TRUE(m_manager->registerShortcut(m_usual));
    m_registrar.lose(-1);
    EXPECT_FALSE(m_manager->shortcut());
    QCoreApplication::processEvents();
    EXPECT_EQ(m_losses, 1);
    EXPECT_EQ(m_log->messages(),
        QStringList{u"hotkey: ⇧⌘6 is unavailable (OSStatus -1) — it may be taken by another app or "
                    "by the system"_qs});
    EXPECT_TRUE(m_manager->registerShortcut(m_usual));
    EXPECT_EQ(m_registrar.installations, 2);

    m_manager->unregister();
    m_registrar.lose(-1);
    QCoreApplication::processEvents();
    EXPECT_EQ(m_losses, 1) << "there was nothing to lose";
    EXPECT_TRUE(m_manager->registerShortcut(m_usual));
}

} // namespace
