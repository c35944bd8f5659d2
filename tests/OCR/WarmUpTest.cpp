#include "Fakes/ThreadShortage.h"
#include "OCR/OCRServiceFixture.h"

#include <sys/resource.h>

using namespace Lumenote;
using namespace std::chrono_literals;

namespace {

using Phase = OCRService::Phase;
using Platform::Error;

class WarmUpTest : public OCRServiceFixture {
protected:
    bool warmUpAndWait()
    {
        service->warmUp();
        return Harness::waitForFinished(service->runner());
    }

    bool waitForCalls(qsizetype count) const
    {
        return Harness::waitFor([this, count] { return recognizer->callCount() >= count; });
    }
};

TEST_F(WarmUpTest, theSeriesEndsAtItsFirstFailure)
{
    struct Probe {
        std::chrono::nanoseconds takes;
        bool fails = false;
    };

    const auto check = [&](const char* name, const QList<Probe>& probes, Phase phase,
                           const QString& log) {
        SCOPED_TRACE(name);
        startService({});
        const auto callsBefore = recognizer->callCount();
        for (const auto& probe : probes)
            recognizer->queue(
                [clock = clock, probe](const auto&) -> Fakes::FakeTextRecognizer::Answer {
                    clock->advance(probe.takes);
                    if (probe.fails)
                        return tl::make_unexpected(Error());
                    return {};
                });
        EXPECT_EQ(service->phase(), Phase::idle);
        ASSERT_TRUE(warmUpAndWait());
        EXPECT_EQ(service->phase(), phase);
        EXPECT_EQ(service->warmUpFailed(), phase == Phase::failed);
        EXPECT_EQ(systemLog->messages().last(), log);
        EXPECT_EQ(recognizer->callCount() - callsBefore, probes.size());
    };
    check("allQuick", {{100ms}, {100ms}, {100ms}, {100ms}, {100ms}}, Phase::ready,
        u"OCR: warm-up ready in 500ms"_qs);
    check("oneLoad", {{2s + 1ns}, {2s}, {0s}, {0s}, {0s}}, Phase::ready,
        u"OCR: warm-up ready in 4.0s — 1 model load"_qs);
    check("threeLoads", {{3s}, {0s}, {3s}, {3s}, {0s}}, Phase::ready,
        u"OCR: warm-up ready in 9.0s — 3 model loads"_qs);
    check("firstFails", {{1s, true}}, Phase::failed, u"OCR: warm-up failed in 1.0s"_qs);
    check("firstLoadsAndFails", {{3s, true}}, Phase::failed,
        u"OCR: warm-up failed in 3.0s — 1 model load"_qs);
    check("laterOneFailsUncounted", {{3s}, {0s}, {3s, true}}, Phase::failed,
        u"OCR: warm-up failed in 6.0s — 1 model load"_qs);
}

TEST_F(WarmUpTest, theProbesGrowAndRunAtUtilityPriority)
{
    ASSERT_TRUE(warmUpAndWait());
    QList<int> heights;
    for (const auto& call : recognizer->calls()) {
        heights.append(call.imageSize.height());
        EXPECT_GE(call.niceValue, 10);
    }
    EXPECT_EQ(heights, (QList<int>{246, 707, 1398, 2089, 3241}));
    recognized();
    EXPECT_EQ(recognizer->calls().last().niceValue, getpriority(PRIO_PROCESS, 0))
        << "somebody waits for this one";
}

TEST_F(WarmUpTest, oneSeriesRunsAtATimeAndNoneAfterSuccess)
{
    recognizer->queueHang();
    service->warmUp();
    service->warmUp();
    EXPECT_TRUE(service->isWarmingUp());
    recognizer->releaseHangs();
    ASSERT_TRUE(Harness::waitForFinished(service->runner()));
    EXPECT_FALSE(service->isWarmingUp());
    ASSERT_TRUE(warmUpAndWait());
    EXPECT_EQ(recognizer->callCount(), 5);
    EXPECT_EQ(systemLog->messages().size(), 1);
}

TEST_F(WarmUpTest, aHungProbeFailsAtItsLimit)
{
    startService({.probeLimit = 20ms});
    recognizer->queueHang();
    ASSERT_TRUE(warmUpAndWait());
    EXPECT_TRUE(service->warmUpFailed());
    EXPECT_LE(recognizer->callCount(), 1) << "none after it; it may itself come too late";
}

TEST_F(WarmUpTest, aFailureIsMendedByARetryOrARecognition)
{
    const auto failTheWarmUp = [this] {
        startService({});
        recognizer->queueError(Error::Kind::failed);
        ASSERT_TRUE(warmUpAndWait());
        ASSERT_TRUE(service->warmUpFailed());
    };
    failTheWarmUp();
    ASSERT_TRUE(warmUpAndWait());
    EXPECT_EQ(service->phase(), Phase::ready);

    failTheWarmUp();
    recognizer->queueError(Error::Kind::failed);
    EXPECT_TRUE(recognized().interrupted);
    EXPECT_TRUE(service->warmUpFailed());
    recognizer->queueLines({});
    EXPECT_FALSE(recognized().interrupted);
    EXPECT_EQ(service->phase(), Phase::ready);
}

TEST_F(WarmUpTest, withoutAThreadTheWarmUpFails)
{
    {
        const Fakes::ThreadShortage shortage;
        service->warmUp();
    }
    EXPECT_TRUE(service->warmUpFailed());
    EXPECT_TRUE(service->runner().isFinished());
    EXPECT_FALSE(recognized().interrupted) << "nor does a recognition wait for it";
}

TEST_F(WarmUpTest, aRecognitionWaitsForTheFirstProbeAndDoesNotCountThatTime)
{
    recognizer->queueHang();
    service->warmUp();
    ASSERT_TRUE(waitForCalls(1));
    const auto future = service->recognize(image, {});
    EXPECT_FALSE(QTest::qWaitFor([&] { return recognizer->callCount() > 1; }, 50));
    clock->advance(5s);
    recognizer->releaseHangs();
    ASSERT_TRUE(Harness::waitForFinished(future));
    ASSERT_TRUE(Harness::waitForFinished(service->runner()));
    EXPECT_TRUE(systemLog->messages().contains(u"OCR: 0 lines in 0ms"_qs));
    EXPECT_TRUE(systemLog->messages().contains(u"OCR: warm-up ready in 5.0s — 1 model load"_qs));
}

TEST_F(WarmUpTest, laterProbesHoldUpNobody)
{
    recognizer->queueLines({});
    recognizer->queueHang();
    service->warmUp();
    ASSERT_TRUE(waitForCalls(2));
    recognizer->queueLines({u"read"_qs});
    EXPECT_EQ(recognized().text(), u"read"_qs);
    EXPECT_TRUE(service->isWarmingUp());
}

TEST_F(WarmUpTest, aHungFirstProbeHoldsUpNobodyForEver)
{
    startService({.warmUpWaitLimit = 20ms});
    recognizer->queueHang();
    service->warmUp();
    ASSERT_TRUE(waitForCalls(1));
    recognizer->queueLines({u"read"_qs});
    EXPECT_EQ(recognized().text(), u"read"_qs);
}

TEST_F(WarmUpTest, cancellingWhileWaitingLeavesTheRecogniserAlone)
{
    recognizer->queueHang();
    service->warmUp();
    ASSERT_TRUE(waitForCalls(1));
    std::stop_source stop;
    const auto future = service->recognize(image, stop.get_token());
    stop.request_stop();
    ASSERT_TRUE(Harness::waitForFinished(future));
    EXPECT_EQ(future.result(),
        (OCRResult{.lines = {}, .imageSize = QSizeF(200, 100), .interrupted = true}));
    EXPECT_EQ(
        systemLog->messages(), QStringList{u"OCR: cancelled while waiting for the warm-up"_qs});
    EXPECT_EQ(recognizer->callCount(), 1);
}

} // namespace
