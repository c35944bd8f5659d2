#include "Platform/X11/X11KeyboardLayout.h"

#include "Harness/Waiting.h"
#include "Harness/XServer.h"
#include "Platform/StandardStreams.h"
#include "Platform/X11/TestKeyboard.h"

#include <array>
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

    bool setKeyboard(const QStringList& arguments) const
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
    struct Row {
        const char* name;
        QStringList keyboard;
        quint32 key;
        std::optional<QString> character;
    };
    const QStringList us{u"us"_qs};
    const QStringList de{u"de"_qs};
    const QStringList fr{u"fr"_qs};
    const std::array rows{
        Row{"default", us, six, u"6"_qs},
        Row{"letter", us, a, u"a"_qs},
        Row{"bracket", us, 33, u"["_qs},
        Row{"leftOfOne", us, 50, u"`"_qs},
        Row{"rightOfTheKeypad", us, 69, u"+"_qs},
        Row{"keypadWithShift", us, 83, u"1"_qs},
        Row{"functionKey", us, 122, std::nullopt},
        Row{"arrow", us, 123, std::nullopt},
        Row{"escape", us, 53, std::nullopt},
        Row{"noSuchKey", us, 127, std::nullopt},
        Row{"swapped", de, y, u"z"_qs},
        Row{"umlaut", de, 41, u"ö"_qs},
        Row{"deadKey", de, 50, u"^"_qs},
        Row{"europeanKey", de, 10, u"<"_qs},
        Row{"digitWithShiftOnly", fr, six, u"-"_qs},
        Row{"azerty", fr, a, u"q"_qs},
        Row{"variant", {u"us"_qs, u"-variant"_qs, u"dvorak"_qs}, q, u"'"_qs},
        // Without a Latin layout the current one is better than none.
        Row{"cyrillicOnly", {u"ru"_qs}, a, u"ф"_qs},
    };
    for (const auto& row : rows) {
        ASSERT_TRUE(setKeyboard(row.keyboard)) << row.name;
        EXPECT_EQ(X11KeyboardLayout(m_server->display()).character(row.key), row.character)
            << row.name;
    }
}

TEST_F(X11KeyboardLayoutTest, theLatinLayoutLastUsedCounts)
{
    ASSERT_TRUE(setKeyboard({u"ru,fr,de"_qs}));
    Harness::TestKeyboard keyboard(m_server->display());
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
    ASSERT_TRUE(setKeyboard({u"us,ru"_qs})); // Told behind the switch.
    EXPECT_TRUE(becomes(a, u"a"_qs));
    EXPECT_EQ(layout.character(six), u"6"_qs);
}

TEST_F(X11KeyboardLayoutTest, aStartInOtherLettersFindsTheLatinLayout)
{
    ASSERT_TRUE(setKeyboard({u"fr,ru"_qs}));
    Harness::TestKeyboard keyboard(m_server->display());
    keyboard.setLayout(1);
    EXPECT_EQ(X11KeyboardLayout(m_server->display()).character(a), u"q"_qs);
}

TEST_F(X11KeyboardLayoutTest, theLastLayoutStaysWhenTheServerGoes)
{
    ASSERT_TRUE(setKeyboard({u"de"_qs}));
    const X11KeyboardLayout layout(m_server->display());
    const auto gone = m_server->display();
    m_server.reset();
    for (int i = 0; i < 3; ++i)
        QCoreApplication::processEvents();
    EXPECT_EQ(layout.character(y), u"z"_qs);
    EXPECT_EQ(X11KeyboardLayout(gone).character(y), std::nullopt);
}

} // namespace
