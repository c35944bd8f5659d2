// The whole program, as the user runs it: keys and pointer in, files out.

#include "ProcessFixture.h"

#include <QColorSpace>

#include <csignal>

using namespace Lumenote;
using Harness::waitFor;

namespace {

constexpr int noDisplay = 69;
TEST_F(LumenoteProcess, theShortcutLeadsToAPictureAndItsTextOnDisk)
{
    beginSelection();
    pickPage();
    ASSERT_TRUE(waitFor([this] { return captures("Text").size() == 1; }));
    ASSERT_EQ(captures().size(), 1);
    QImage stored(captures().constFirst().filePath());
    stored.setColorSpace({});
    EXPECT_TRUE(stored.convertToFormat(QImage::Format_RGB32) == page());

    QFile json(captures("Text").constFirst().filePath());
    ASSERT_TRUE(json.open(QIODevice::ReadOnly));
    const auto text = storedTextFromJson(json.readAll());
    ASSERT_TRUE(text);
    ASSERT_EQ(text->lines.size(), 2);
    EXPECT_EQ(text->lines.at(0).text, u"Hello reader"_qs);
    EXPECT_EQ(text->lines.at(1).text, u"Second line"_qs);
    EXPECT_TRUE(
        waitFor([this] { return m_terminal.text().contains("lumenote: OCR 2 lines in "); }));

    m_lumenote.terminate();
    EXPECT_TRUE(endsWith(0));
}

TEST_F(LumenoteProcess, aRequestToEndEndsASelectionToo)
{
    beginSelection();
    m_lumenote.terminate();
    EXPECT_TRUE(endsWith(0));
    EXPECT_TRUE(waitFor([this] { return !isDimmed(); }));
    EXPECT_TRUE(m_other->canGrabKeyboard()) << "nobody holds the keyboard";
}

TEST_F(LumenoteProcess, aRequestToEndIsHeardWhileTheServerHangs)
{
    beginSelection();
    pickPage();
    ASSERT_TRUE(waitFor([this] { return captures("Text").size() == 1; }));
    beginSelection();
    // Once it has nothing more to ask: Qt may hang in a question, and then hears nothing.
    const auto inRegionMode = m_other->picture();
    xdotool({"key", "space"});
    ASSERT_TRUE(waitFor([&] { return m_other->picture() != inRegionMode; }));
    m_server->signal(SIGSTOP);
    m_lumenote.terminate();
    EXPECT_TRUE(endsWith(0));
    m_server->signal(SIGCONT);
    expectWholeHistory();
}

enum class Moment { idle, selecting, capturing, recognizing };

class LumenoteLosingItsServer : public LumenoteProcess,
                                public testing::WithParamInterface<Moment> { };

TEST_P(LumenoteLosingItsServer, endsWithAMessageAndAWholeHistory)
{
    beginSelection();
    if (GetParam() == Moment::idle) {
        xdotool({"key", "Escape"});
        ASSERT_TRUE(waitFor([this] { return !isDimmed(); }));
    } else if (GetParam() != Moment::selecting) {
        pickPage();
    }
    if (GetParam() == Moment::recognizing) {
        ASSERT_TRUE(waitFor([this] { return !captures().isEmpty(); }));
    }
    m_server->signal(SIGKILL);
    EXPECT_TRUE(endsWith(noDisplay));
    EXPECT_TRUE(m_terminal.text().contains("lumenote: needs a display: the X server is gone"));
    expectWholeHistory();
}

std::string nameOf(const testing::TestParamInfo<Moment>& row)
{
    constexpr std::array names{"idle", "selecting", "capturing", "recognizing"};
    return names.at(static_cast<size_t>(row.param));
}

INSTANTIATE_TEST_SUITE_P(, LumenoteLosingItsServer,
    testing::Values(Moment::idle, Moment::selecting, Moment::capturing, Moment::recognizing),
    nameOf);

} // namespace
