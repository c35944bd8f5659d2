#include "HotKeyManager.h"

#include "Fakes/FakeHotKeyRegistrar.h"
#include "Fakes/FakeKeyboardLayout.h"
#include "Fakes/FakeSystemLog.h"
#include "Log.h"

#include <QCoreApplication>

#include <gtest/gtest.h>

using namespace Lumenote;

namespace {

class HotKeyManagerTest : public testing::Test {
protected:
    void SetUp() override
    {
        Log::setSystemLog(m_log, QStringLiteral("Lumenote"));
        m_layout.characters.insert(22, u"6"_qs);
        m_manager->onHotKey = [this] { ++m_presses; };
        m_manager->onLost = [this] { ++m_losses; };
    }
    void TearDown() override { Log::setSystemLog(nullptr, {}); }

    std::shared_ptr<Fakes::FakeSystemLog> m_log = std::make_shared<Fakes::FakeSystemLog>();
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
    struct Row {
        const char* name;
        HotKeyShortcut shortcut;
        std::optional<Platform::Error> handlerError;
        QString line;
        int installations;
        int registrations;
    };
    const Platform::Error noServer{.message = {}, .code = -1};
    const std::array rows{
        Row{"shiftOnly", {.keyCode = 22, .modifiers = 0x200}, std::nullopt,
            u"hotkey: refusing to register ⇧6 — no ⌘, ⌃ or ⌥"_qs, 1, 1},
        Row{"noHandler", m_usual, noServer,
            u"hotkey: couldn't install the hotkey handler (OSStatus -1)"_qs, 1, 0},
        Row{"taken", {.keyCode = 122, .modifiers = 0x1000}, std::nullopt,
            u"hotkey: ⌃F1 is unavailable (OSStatus 10) — it may be taken by another app or by the "
            "system"_qs,
            1, 2},
    };
    m_registrar.taken = {{122, 0x1000}};
    for (const auto& row : rows) {
        Fakes::FakeHotKeyRegistrar registrar;
        registrar.taken = m_registrar.taken;
        registrar.handlerError = row.handlerError;
        HotKeyManager manager(registrar, m_layout);
        if (!row.handlerError) {
            ASSERT_TRUE(manager.registerShortcut({.keyCode = 36, .modifiers = 0x100})) << row.name;
        }
        EXPECT_FALSE(manager.registerShortcut(row.shortcut)) << row.name;
        EXPECT_EQ(m_log->messages().last(), row.line) << row.name;
        EXPECT_FALSE(registrar.registered) << row.name;
        EXPECT_FALSE(manager.shortcut()) << row.name;
        EXPECT_EQ(registrar.installations, row.installations) << row.name;
        EXPECT_EQ(registrar.registrations, row.registrations) << row.name;
    }
    EXPECT_EQ(m_log->entries().size(), qsizetype(rows.size()));
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
