#include "Fakes/ThreadShortage.h"
#include "OCR/OCRServiceFixture.h"

#include <array>
#include <limits>
#include <random>
#include <stdexcept>
#include <thread>

using namespace Lumenote;
using namespace std::chrono_literals;

namespace {

using OCRServiceTest = OCRServiceFixture;
using Platform::Error;
using Platform::TextObservation;

OCRResult interrupted()
{
    return {.lines = {}, .imageSize = QSizeF(200, 100), .interrupted = true};
}

TEST_F(OCRServiceTest, everyOutcomeIsAResultAndALogLine)
{
    const auto check = [&](const char* name, const std::function<void()>& queue,
                           const QStringList& lines, bool interrupted, const QStringList& log) {
        SCOPED_TRACE(name);
        queue();
        const auto logged = systemLog->messages().size();
        const auto result = recognized();
        EXPECT_EQ(result.text(), lines.join(u'\n'));
        EXPECT_EQ(result.lines.size(), lines.size());
        EXPECT_EQ(result.interrupted, interrupted);
        EXPECT_EQ(result.imageSize, QSizeF(200, 100));
        EXPECT_EQ(systemLog->messages().mid(logged), log);
    };
    check("lines",
        [this] {
            recognizer->queueLines({u"b"_qs, u"a"_qs});
        },
        {u"b"_qs, u"a"_qs}, false, {u"OCR: 2 lines in 0ms"_qs});
    check("noText", [this] { recognizer->queueLines({}); }, {}, false, {u"OCR: 0 lines in 0ms"_qs});
    check("atTheThreshold", [this] { queueSlow(2s); }, {u"slow"_qs}, false,
        {u"OCR: 1 lines in 2.0s"_qs});
    check("modelLoad", [this] { queueSlow(2s + 1ns); }, {u"slow"_qs}, false,
        {u"OCR: 1 lines in 2.0s — model load"_qs});
    check("fails", [this] { recognizer->queueError(Error::Kind::failed, u"secret"_qs); }, {}, true,
        {u"OCR: gave up after 0ms"_qs});
    check("noLanguage",
        [this] { recognizer->queueError(Error::Kind::missingLanguageData, u"install me"_qs); }, {},
        true, {u"OCR: install me"_qs, u"OCR: gave up after 0ms"_qs});
    check("throws",
        [this] {
            recognizer->queue([](const auto&) -> Fakes::FakeTextRecognizer::Answer {
                throw std::runtime_error("broken");
            });
        },
        {}, true, {u"OCR: gave up after 0ms"_qs});
}

TEST_F(OCRServiceTest, theBestCandidateStandsInABoxWithinTheImage)
{
    constexpr auto nan = std::numeric_limits<double>::quiet_NaN();
    constexpr auto infinity = std::numeric_limits<double>::infinity();
    const auto check = [this](const char* name, const QRectF& given, const QRectF& kept) {
        SCOPED_TRACE(name);
        const TextObservation none{.candidates = {}, .boundingBox = QRectF(1, 2, 3, 4)};
        const TextObservation found{.candidates = {{.text = u"best"_qs, .confidence = 0.9},
                                        {.text = u"second"_qs, .confidence = 0.1}},
            .boundingBox = given};
        recognizer->queue([=](const auto&) { return QList{none, found}; });
        const auto lines = recognized().lines;
        ASSERT_EQ(lines.size(), 1) << "the one without a candidate is skipped";
        EXPECT_EQ(lines.first().text, u"best"_qs);
        EXPECT_EQ(lines.first().boundingBox, kept);
    };
    check("inside", {10, 20, 30, 40}, {10, 20, 30, 40});
    check("overTheEdges", {-5, -5, 500, 500}, {0, 0, 200, 100});
    check("outside", {300, 20, 30, 40}, {200, 20, 0, 40});
    check("upsideDown", {40, 60, -30, -40}, {10, 20, 30, 40});
    check("notANumber", {10, nan, 30, 40}, {});
    check("endless", {10, 20, infinity, 40}, {});
    check("beyondCounting", {-1e308, 0, 1e308, 10}, {0, 0, 0, 10});
}

TEST_F(OCRServiceTest, aHungRecogniserIsGivenUpAtTheLimit)
{
    startService({.recognitionLimit = 1s});
    recognizer->queueHang();
    EXPECT_EQ(recognized(), interrupted());
    EXPECT_EQ(systemLog->messages(), QStringList{u"OCR: gave up after 0ms"_qs});
    ASSERT_TRUE(Harness::waitFor([this] { return recognizer->callCount() == 1; }));
    recognizer->queueLines({u"next"_qs});
    EXPECT_EQ(recognized().text(), u"next"_qs) << "the hung one holds up nobody";
}

TEST_F(OCRServiceTest, aCancelledRecognitionDoesNotWaitForTheRecogniser)
{
    recognizer->queueHang({u"too late"_qs});
    std::stop_source stop;
    const auto future = service->recognize(image, stop.get_token());
    ASSERT_TRUE(Harness::waitFor([this] { return recognizer->callCount() == 1; }));
    EXPECT_FALSE(future.isFinished());
    stop.request_stop();
    ASSERT_TRUE(Harness::waitForFinished(future));
    EXPECT_EQ(future.result(), interrupted());
    EXPECT_EQ(systemLog->messages(), QStringList{u"OCR: cancelled after 0ms"_qs});
}

TEST_F(OCRServiceTest, withoutAThreadOrCancelledBeforeTheAnswerIsInterrupted)
{
    std::stop_source stop;
    stop.request_stop();
    EXPECT_EQ(recognized(stop.get_token()), interrupted());
    const Fakes::ThreadShortage shortage;
    const auto future = service->recognize(image, {});
    ASSERT_TRUE(future.isFinished());
    EXPECT_EQ(future.result(), interrupted());
}

TEST_F(OCRServiceTest, aServiceThatGoesAwayStillAnswers)
{
    recognizer->queueHang({u"late"_qs});
    const auto future = service->recognize(image, {});
    ASSERT_TRUE(Harness::waitFor([this] { return recognizer->callCount() == 1; }));
    service.reset();
    recognizer->releaseHangs();
    ASSERT_TRUE(Harness::waitForFinished(future));
    EXPECT_EQ(future.result().text(), u"late"_qs);
}

TEST_F(OCRServiceTest, noAnswerIsLostAmongManyThatAreCancelled)
{
    constexpr int rounds = 250;
    std::mt19937 random(1);
    const auto pause = [&random] { std::this_thread::sleep_for((random() % 200) * 1us); };
    const auto line = u"read"_qs;
    int interruptedOnes = 0;
    for (int round = 0; round < rounds; ++round) {
        std::array<std::pair<std::stop_source, QFuture<OCRResult>>, 4> atOnce;
        for (auto& [stop, future] : atOnce) {
            recognizer->queue([line, wait = (random() % 200) * 1us](const auto&) {
                std::this_thread::sleep_for(wait);
                return Fakes::observations({line});
            });
            future = service->recognize(image, stop.get_token());
        }
        for (auto& [stop, future] : atOnce) {
            pause();
            if (random() % 4 != 0)
                stop.request_stop();
        }
        for (const auto& [stop, future] : atOnce) {
            ASSERT_TRUE(Harness::waitForFinished(future));
            ASSERT_EQ(future.resultCount(), 1);
            const auto result = future.result();
            ASSERT_EQ(result.text(), result.interrupted ? QString() : line);
            interruptedOnes += result.interrupted ? 1 : 0;
        }
    }
    EXPECT_EQ(systemLog->messages().size(), rounds * 4) << "one line for each";
    EXPECT_GT(interruptedOnes, 0);
    EXPECT_LT(interruptedOnes, rounds * 4);
}

} // namespace
