#include "Platform/X11/X11KeyboardLayout.h"

#include "Harness/Waiting.h"
#include "Harness/XClient.h"
#include "Platform/StandardStreams.h"

#include <gtest/gtest.h>

using Platform::X11KeyboardLayout;

namespace {

class X11KeyboardLayoutTest : public testing::Test {
protected:
    void SetUp() override
    {
        Platform::guardStandardStreams();
        ASSERT_TRUE(m_server->isRunning()) << qPrintable(m_server->failure());
    }

    bool setKeyboard(const QByteArrayList& arguments) const
    {
        return Harness::setKeyboard(*m_server, arguments);
    }

    std::unique_ptr<Harness::XServer> m_server = std::make_unique<Harness::XServer>();
};

constexpr quint32 a = 0;
constexpr quint32 q = 12;
constexpr quint32 six = 22;
constexpr quint32 y = 16;

TEST_F(X11KeyboardLayoutTest, aKeyIsCalledByWhatItTypes)
{
    const auto check = [&](const char* name, const QByteArrayList& keyboard, quint32 key,
                           const std::optional<QString>& character) {
        SCOPED_TRACE(name);
        ASSERT_TRUE(setKeyboard(keyboard));
        EXPECT_EQ(X11KeyboardLayout(m_server->display()).character(key), character);
    };
    check("default", {"us"}, six, u"6"_qs);
    check("bracket", {"us"}, 33, u"["_qs);
    check("rightOfTheKeypad", {"us"}, 69, u"+"_qs);
    check("keypadWithShift", {"us"}, 83, u"1"_qs);
    check("escape", {"us"}, 53, std::nullopt);
    check("noSuchKey", {"us"}, 127, std::nullopt);
    check("swapped", {"de"}, y, u"z"_qs);
    check("deadKey", {"de"}, 50, u"^"_qs);
    check("digitWithShiftOnly", {"fr"}, six, u"-"_qs);
    check("azerty", {"fr"}, a, u"q"_qs);
    check("variant", {"us", "-variant", "dvorak"}, q, u"'"_qs);
    // Without a Latin layout the current one is better than none.
    check("cyrillicOnly", {"ru"}, a, u"ф"_qs);
}

TEST_F(X11KeyboardLayoutTest, theLatinLayoutLastUsedCounts)
{
    ASSERT_TRUE(setKeyboard({"ru,fr,de"}));
    Harness::XClient keyboard(m_server->display());
    const X11KeyboardLayout layout(m_server->display());
    EXPECT_EQ(layout.character(a), u"q"_qs) << "the first, as long as none was used";
    const auto becomes = [&](quint32 key, const QString& character) {
        return Harness::waitFor([&] { return layout.character(key) == character; });
    };
    keyboard.setLayout(2);
    EXPECT_TRUE(becomes(y, u"z"_qs));
    keyboard.setLayout(0);
    keyboard.setLayout(1);
    EXPECT_TRUE(becomes(y, u"y"_qs));
    keyboard.setLayout(0);
    ASSERT_TRUE(setKeyboard({"us,ru"})); // Told behind the switch.
    EXPECT_TRUE(becomes(a, u"a"_qs));
    EXPECT_EQ(layout.character(six), u"6"_qs);
}

TEST_F(X11KeyboardLayoutTest, aStartInOtherLettersFindsTheLatinLayout)
{
    ASSERT_TRUE(setKeyboard({"fr,ru"}));
    Harness::XClient keyboard(m_server->display());
    keyboard.setLayout(1);
    EXPECT_EQ(X11KeyboardLayout(m_server->display()).character(a), u"q"_qs);
}

TEST_F(X11KeyboardLayoutTest, theLastLayoutStaysWhenTheServerGoes)
{
    ASSERT_TRUE(setKeyboard({"de"}));
    const X11KeyboardLayout layout(m_server->display());
    m_server->die();
    for (int i = 0; i < 3; ++i)
        QCoreApplication::processEvents();
    EXPECT_EQ(layout.character(y), u"z"_qs);
    EXPECT_EQ(X11KeyboardLayout(m_server->display()).character(y), std::nullopt);
}

} // namespace
