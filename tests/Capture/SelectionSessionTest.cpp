#include "Capture/SelectionSession.h"

#include "Harness/Waiting.h"

#include <QPromise>

#include <gtest/gtest.h>
#include <vector>

using namespace Lumenote;

namespace {

using Target = std::optional<CaptureTarget>;

const CapturableWindow front{7, {100, 100, 200, 100}, u"A"_qs, {}};
const CapturableWindow back{8, {50, 50, 400, 300}, u"B"_qs, {}};

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

    SessionUnderTest& press(QPointF at)
    {
        pointer = at;
        if (session.mode() == SelectionMode::window)
            session.updateHover(at);
        else
            session.beginDrag(at);
        return *this;
    }
    SessionUnderTest& drag(QPointF to) { return session.handleMouseDragged(pointer = to), *this; }
    SessionUnderTest& release(QPointF at) { return session.handleMouseUp(pointer = at), *this; }
    SessionUnderTest& hover(QPointF at) { return session.updateHover(pointer = at), *this; }
    SessionUnderTest& space() { return session.toggleMode(), *this; }
    SessionUnderTest& escape() { return session.finish(std::nullopt), *this; }

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

TEST(SelectionSessionTest, endsOnceWithTheTarget)
{
    using It = SessionUnderTest;
    const auto check = [](const char* name, const It& it, const Target& target) {
        EXPECT_EQ(it.targets, std::vector{target}) << name;
    };
    check("aDragDownAndRight", It().press({10, 20}).drag({50, 60}).release({110, 70}),
        region(10, 20, 100, 50));
    check("aDragUpAndLeftOfEverything", It().press({10, 20}).release({-40, -30}),
        region(-40, -30, 50, 50));
    check("theSmallestRegion", It().press({10, 20}).release({15, 25}), region(10, 20, 5, 5));
    check("tooNarrow", It().press({10, 20}).release({14.9, 220}), {});
    check("tooLow", It().press({10, 20}).release({210, 24.9}), {});
    check("aDragBackToItsAnchor", It().press({10, 20}).drag({110, 120}).release({10, 20}), {});
    check("aReleaseWithoutAPress", It().release({110, 120}), {});
    check("aSecondPressBeginsAnew",
        It().press({10, 20}).drag({60, 70}).press({100, 100}).release({120, 110}),
        region(100, 100, 20, 10));
    check("escape", It().press({10, 20}).drag({110, 120}).escape(), {});
    check("nothingAfterTheEnd", It().press({10, 20}).release({110, 70}).escape().release({1, 1}),
        region(10, 20, 100, 50));
    check("theFrontWindow", It().space().press({150, 150}).release({150, 150}), window(front));
    check("theWindowUnderTheRelease",
        It().space().press({150, 150}).drag({60, 60}).release({60, 60}), window(back));
    check("theFarEdgeIsOutside", It().space().release({300, 150}), window(back));
    check("theBareDesktop", It().space().press({500, 500}).release({500, 500}), {});
    check("spaceDropsTheDrag", It().press({10, 20}).drag({60, 70}).space().release({60, 70}),
        window(back));
    check("spaceTwiceDropsTheDragToo",
        It().press({10, 20}).drag({60, 70}).space().space().release({200, 200}), {});
}

TEST(SelectionSessionTest, theStateFollowsTheGestures)
{
    SessionUnderTest it;
    it.press({30, 40}).drag({10, 100});
    EXPECT_EQ(it.session.state().selection, QRectF(10, 40, 20, 60));
    it.space();
    EXPECT_EQ(it.session.mode(), SelectionMode::window);
    EXPECT_EQ(it.session.state().selection, std::nullopt);
    EXPECT_EQ(it.session.state().hoveredWindow, std::nullopt) << "the pointer is on no window";
    it.drag({120, 120});
    EXPECT_EQ(it.session.state().hoveredWindow, front);
    it.space();
    EXPECT_EQ(it.session.state().hoveredWindow, std::nullopt);
}

TEST(SelectionSessionTest, hoverTellsOfAnotherWindowOnly)
{
    SessionUnderTest it;
    it.hover({150, 150});
    EXPECT_EQ(it.changes, 0) << "in region mode";
    it.space();
    it.changes = 0;
    it.hover({151, 150}).hover({160, 160});
    EXPECT_EQ(it.changes, 0);
    it.hover({60, 60}).hover({600, 60});
    EXPECT_EQ(it.changes, 2);
}

TEST(SelectionSessionTest, candidatesAreLoadedOnceAndShownWhenTheyCome)
{
    SessionUnderTest it(QList<CapturableWindow>{});
    it.hover({150, 150}).space().space().space();
    EXPECT_EQ(it.candidateRequests, 1);
    EXPECT_EQ(it.session.state().hoveredWindow, std::nullopt);
    it.pointer = {150, 150};
    it.answerCandidates({front, back});
    EXPECT_EQ(it.session.state().hoveredWindow, front);
    it.space().space().release({60, 60});
    EXPECT_EQ(it.candidateRequests, 1);
    EXPECT_EQ(it.targets, std::vector{window(back)});
}

TEST(SelectionSessionTest, candidatesThatComeInRegionModeHoverNothing)
{
    SessionUnderTest it(QList<CapturableWindow>{});
    it.space().space();
    it.pointer = {150, 150};
    it.answerCandidates({front});
    EXPECT_EQ(it.session.state().hoveredWindow, std::nullopt);
    it.space();
    EXPECT_EQ(it.session.state().hoveredWindow, front);
}

TEST(SelectionSessionTest, candidatesThatComeAfterTheEndAreDropped)
{
    SessionUnderTest it(QList<CapturableWindow>{});
    it.space().escape();
    it.pointer = {150, 150};
    it.changes = 0;
    it.answerCandidates({front});
    EXPECT_EQ(it.changes, 0);
    EXPECT_EQ(it.session.state().hoveredWindow, std::nullopt);
}

} // namespace
