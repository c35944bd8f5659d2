#include "Capture/SelectionSession.h"

#include "Harness/Waiting.h"

#include <QPromise>
#include <QSignalSpy>

#include <gtest/gtest.h>
#include <memory>
#include <variant>
#include <vector>

using namespace Lumenote;

namespace {

struct Press {
    QPointF at;
};
struct Drag {
    QPointF to;
};
struct Release {
    QPointF at;
};
struct Hover {
    QPointF at;
};
struct Space { };
struct Escape { };
using Gesture = std::variant<Press, Drag, Release, Hover, Space, Escape>;

using Target = std::optional<CaptureTarget>;

const CapturableWindow front{7, {100, 100, 200, 100}, QStringLiteral("A"), {}};
const CapturableWindow back{8, {50, 50, 400, 300}, QStringLiteral("B"), {}};

Target region(double x, double y, double width, double height)
{
    return RegionTarget{{x, y, width, height}};
}

Target window(const CapturableWindow& window)
{
    return WindowTarget{window.id};
}

/// A session over two windows, one in front of the other, and what it has told.
class SessionUnderTest {
public:
    explicit SessionUnderTest(QList<CapturableWindow> candidates = {front, back})
        : session({.candidates =
                          [this] {
                              ++candidateRequests;
                              return candidatePromise.future();
                          },
                      .pointer = [this] { return pointer; }},
            std::move(candidates))
    {
        candidatePromise.start();
        QObject::connect(&session, &SelectionSession::ended, &session,
            [this] { targets.push_back(session.target()); });
        QObject::connect(
            &session, &SelectionSession::stateChanged, &session, [this] { ++changes; });
    }

    void take(const Gesture& gesture)
    {
        if (const auto* const press = std::get_if<Press>(&gesture)) {
            pointer = press->at;
            if (session.mode() == SelectionMode::window)
                session.updateHover(press->at);
            else
                session.beginDrag(press->at);
        } else if (const auto* const drag = std::get_if<Drag>(&gesture)) {
            session.handleMouseDragged(pointer = drag->to);
        } else if (const auto* const release = std::get_if<Release>(&gesture)) {
            session.handleMouseUp(pointer = release->at);
        } else if (const auto* const hover = std::get_if<Hover>(&gesture)) {
            session.updateHover(pointer = hover->at);
        } else if (std::holds_alternative<Space>(gesture)) {
            session.toggleMode();
        } else {
            session.finish(std::nullopt);
        }
    }

    void take(const std::vector<Gesture>& gestures)
    {
        for (const auto& gesture : gestures)
            take(gesture);
    }

    void answerCandidates(const QList<CapturableWindow>& candidates)
    {
        candidatePromise.addResult(candidates);
        candidatePromise.finish();
        QCoreApplication::processEvents();
    }

    QPointF pointer;
    int candidateRequests = 0;
    int changes = 0;
    std::vector<Target> targets;
    QPromise<QList<CapturableWindow>> candidatePromise;
    SelectionSession session;
};

struct Picking {
    const char* name;
    std::vector<Gesture> gestures;
    Target target;
};

class SelectionSessionPicking : public testing::TestWithParam<Picking> { };

TEST_P(SelectionSessionPicking, endsOnceWithTheTarget)
{
    SessionUnderTest it;
    it.take(GetParam().gestures);
    ASSERT_EQ(it.targets.size(), 1U);
    EXPECT_EQ(it.targets.front(), GetParam().target);
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(, SelectionSessionPicking, testing::Values(
    Picking{"aDragDownAndRight", {Press{{10, 20}}, Drag{{50, 60}}, Release{{110, 70}}}, region(10, 20, 100, 50)},
    Picking{"aDragUpAndLeftOfEverything", {Press{{10, 20}}, Release{{-40, -30}}}, region(-40, -30, 50, 50)},
    Picking{"theSmallestRegion", {Press{{10, 20}}, Release{{15, 25}}}, region(10, 20, 5, 5)},
    Picking{"tooNarrow", {Press{{10, 20}}, Release{{14.9, 220}}}, {}},
    Picking{"tooLow", {Press{{10, 20}}, Release{{210, 24.9}}}, {}},
    Picking{"aClick", {Press{{10, 20}}, Release{{10, 20}}}, {}},
    Picking{"aDragBackToItsAnchor", {Press{{10, 20}}, Drag{{110, 120}}, Release{{10, 20}}}, {}},
    Picking{"aReleaseWithoutAPress", {Release{{110, 120}}}, {}},
    Picking{"aSecondPressBeginsAnew", {Press{{10, 20}}, Drag{{60, 70}}, Press{{100, 100}}, Release{{120, 110}}}, region(100, 100, 20, 10)},
    Picking{"escape", {Press{{10, 20}}, Drag{{110, 120}}, Escape{}}, {}},
    Picking{"nothingAfterTheEnd", {Press{{10, 20}}, Release{{110, 70}}, Escape{}, Release{{1, 1}}}, region(10, 20, 100, 50)},
    Picking{"theFrontWindow", {Space{}, Press{{150, 150}}, Release{{150, 150}}}, window(front)},
    Picking{"theWindowUnderTheRelease", {Space{}, Press{{150, 150}}, Drag{{60, 60}}, Release{{60, 60}}}, window(back)},
    Picking{"theFarEdgeIsOutside", {Space{}, Release{{300, 150}}}, window(back)},
    Picking{"theBareDesktop", {Space{}, Press{{500, 500}}, Release{{500, 500}}}, {}},
    Picking{"spaceDropsTheDrag", {Press{{10, 20}}, Drag{{60, 70}}, Space{}, Release{{60, 70}}}, window(back)},
    Picking{"spaceTwiceDropsTheDragToo", {Press{{10, 20}}, Drag{{60, 70}}, Space{}, Space{}, Release{{200, 200}}}, {}}),
    [](const auto& row) { return std::string(row.param.name); });
// clang-format on

TEST(SelectionSessionTest, theStateFollowsTheGestures)
{
    SessionUnderTest it;
    it.take({Press{{30, 40}}, Drag{{10, 100}}});
    EXPECT_EQ(it.session.state().selection, QRectF(10, 40, 20, 60));
    it.take(Space{});
    EXPECT_EQ(it.session.mode(), SelectionMode::window);
    EXPECT_EQ(it.session.state().selection, std::nullopt);
    EXPECT_EQ(it.session.state().hoveredWindow, std::nullopt) << "the pointer is on no window";
    it.take(Drag{{120, 120}});
    EXPECT_EQ(it.session.state().hoveredWindow, front);
    it.take(Space{});
    EXPECT_EQ(it.session.state().hoveredWindow, std::nullopt);
}

TEST(SelectionSessionTest, hoverTellsOfAnotherWindowOnly)
{
    SessionUnderTest it;
    it.take(Hover{{150, 150}});
    EXPECT_EQ(it.changes, 0) << "in region mode";
    it.take(Space{});
    it.changes = 0;
    it.take({Hover{{151, 150}}, Hover{{160, 160}}});
    EXPECT_EQ(it.changes, 0);
    it.take({Hover{{60, 60}}, Hover{{600, 60}}});
    EXPECT_EQ(it.changes, 2);
}

TEST(SelectionSessionTest, candidatesAreLoadedOnceAndShownWhenTheyCome)
{
    SessionUnderTest it(QList<CapturableWindow>{});
    it.take({Hover{{150, 150}}, Space{}, Space{}, Space{}});
    EXPECT_EQ(it.candidateRequests, 1);
    EXPECT_EQ(it.session.state().hoveredWindow, std::nullopt);
    it.pointer = {150, 150};
    it.answerCandidates({front, back});
    EXPECT_EQ(it.session.state().hoveredWindow, front);
    it.take({Space{}, Space{}, Release{{60, 60}}});
    EXPECT_EQ(it.candidateRequests, 1);
    EXPECT_EQ(it.targets, std::vector{window(back)});
}

TEST(SelectionSessionTest, candidatesThatComeInRegionModeHoverNothing)
{
    SessionUnderTest it(QList<CapturableWindow>{});
    it.take({Space{}, Space{}});
    it.pointer = {150, 150};
    it.answerCandidates({front});
    EXPECT_EQ(it.session.state().hoveredWindow, std::nullopt);
    it.take(Space{});
    EXPECT_EQ(it.session.state().hoveredWindow, front);
}

TEST(SelectionSessionTest, candidatesThatComeAfterTheEndAreDropped)
{
    SessionUnderTest it(QList<CapturableWindow>{});
    it.take({Space{}, Escape{}});
    it.pointer = {150, 150};
    it.changes = 0;
    it.answerCandidates({front});
    EXPECT_EQ(it.changes, 0);
    EXPECT_EQ(it.session.state().hoveredWindow, std::nullopt);
}

} // namespace
