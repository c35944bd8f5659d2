#include "Fakes/ThreadShortage.h"
#include "OCR/OCRServiceFixture.h"

#include <array>
#include <limits>
#include <random>
#include <stdexcept>

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
    struct Row {
        const char* name;
        std::function<void()> queue;
        QStringList lines;
        bool interrupted;
        QStringList log;
    };
    const std::array rows{
        Row{"lines",
            [this] {
                recognizer->queueLines({u"b"_qs, u"a"_qs});
            },
            {u"b"_qs, u"a"_qs}, false, {u"OCR: 2 lines in 0ms"_qs}},
        Row{"noText", [this] { recognizer->queueLines({}); }, {}, false,
            {u"OCR: 0 lines in 0ms"_qs}},
        Row{"atTheThreshold", [this] { queueSlow(2s); }, {u"slow"_qs}, false,
            {u"OCR: 1 lines in 2.0s"_qs}},
        Row{"modelLoad", [this] { queueSlow(2s + 1ns); }, {u"slow"_qs}, false,
            {u"OCR: 1 lines in 2.0s — model load"_qs}},
        Row{"fails", [this] { recognizer->queueError(Error::Kind::failed, u"secret"_qs); }, {},
            true, {u"OCR: gave up after 0ms"_qs}},
        Row{"noLanguage",
            [this] { recognizer->queueError(Error::Kind::missingLanguageData, u"install me"_qs); },
            {}, true, {u"OCR: install me"_qs, u"OCR: gave up after 0ms"_qs}},
        Row{"throws",
            [this] {
                recognizer->queue([](const auto&) -> Fakes::FakeTextRecognizer::Answer {
                    throw std::runtime_error("broken");
                });
            },
            {}, true, {u"OCR: gave up after 0ms"_qs}},
    };
    for (const auto& row : rows) {
        row.queue();
        const auto logged = systemLog->messages().size();
        const auto result = recognized();
        EXPECT_EQ(result.text(), row.lines.join(u'\n')) << row.name;
        EXPECT_EQ(result.lines.size(), row.lines.size()) << row.name;
        EXPECT_EQ(result.interrupted, row.interrupted) << row.name;
        EXPECT_EQ(result.imageSize, QSizeF(200, 100)) << row.name;
        EXPECT_EQ(systemLog->messages().mid(logged), row.log) << row.name;
    }
}

TEST_F(OCRServiceTest, theBestCandidateStandsInABoxWithinTheImage)
{
    constexpr auto nan = std::numeric_limits<double>::quiet_NaN();
    constexpr auto infinity = std::numeric_limits<double>::infinity();
    struct Row {
        const char* name;
        QRectF given;
        QRectF kept;
    };
    constexpr std::array rows{
        Row{"inside", {10, 20, 30, 40}, {10, 20, 30, 40}},
        Row{"wholeImage", {0, 0, 200, 100}, {0, 0, 200, 100}},
        Row{"overTheEdges", {-5, -5, 500, 500}, {0, 0, 200, 100}},
        Row{"outside", {300, 20, 30, 40}, {200, 20, 0, 40}},
        Row{"upsideDown", {40, 60, -30, -40}, {10, 20, 30, 40}},
        Row{"notANumber", {10, nan, 30, 40}, {}},
        Row{"endless", {10, 20, infinity, 40}, {}},
        Row{"beyondCounting", {-1e308, 0, 1e308, 10}, {0, 0, 0, 10}},
    };
    QList<TextObservation> page{{.candidates = {}, .boundingBox = QRectF(1, 2, 3, 4)}};
    for (const auto& row : rows)
        page.append({.candidates = {{.text = u"best"_qs, .confidence = 0.9},
                         {.text = u"second"_qs, .confidence = 0.1}},
            .boundingBox = row.given});
    recognizer->queue([page](const auto&) { return page; });
    const auto lines = recognized().lines;
    ASSERT_EQ(lines.size(), rows.size()) << "the one without a candidate is skipped";
    for (size_t i = 0; i < rows.size(); ++i) {
        EXPECT_EQ(lines.at(i).text, u"best"_qs) << rows.at(i).name;
        EXPECT_EQ(lines.at(i).boundingBox, rows.at(i).kept) << rows.at(i).name;
    }
}

TEST_F(OCRServiceTest, aHungRecogniserIsGivenUpAtTheLimit)
{
    startService({.recognitionLimit = 20ms});
    recognizer->queueHang();
    EXPECT_EQ(recognized(), interrupted());
    EXPECT_EQ(systemLog->messages(), QStringList{u"OCR: gave up after 0ms"_qs});
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

TEST_F(OCRServiceTest, oneCancelledBeforeItStartsIsInterrupted)
{
    std::stop_source stop;
    stop.request_stop();
    EXPECT_EQ(recognized(stop.get_token()), interrupted());
}

TEST_F(OCRServiceTest, withoutAThreadTheAnswerIsInterrupted)
{
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
    constexpr int recognitions = 1000;
    constexpr int atOnce = 4;
    std::mt19937 random(1);
    std::uniform_int_distribution<int> microseconds(0, 200);
    const auto line = u"read"_qs;
    for (int i = 0; i < recognitions; ++i)
        recognizer->queue([line, wait = microseconds(random)](const std::stop_token& stop) {
            const auto end = std::chrono::steady_clock::now() + wait * 1us;
            while (std::chrono::steady_clock::now() < end && !stop.stop_requested()) { }
            return Fakes::observations({line});
        });
    int interruptedOnes = 0;
    for (int started = 0; started < recognitions; started += atOnce) {
        std::array<std::stop_source, atOnce> stops;
        std::array<QFuture<OCRResult>, atOnce> futures;
        for (size_t i = 0; i < atOnce; ++i)
            futures.at(i) = service->recognize(image, stops.at(i).get_token());
        for (auto& stop : stops) {
            const auto end = std::chrono::steady_clock::now() + microseconds(random) * 1us;
            while (std::chrono::steady_clock::now() < end) { }
            if (random() % 4 != 0)
                stop.request_stop();
        }
        for (const auto& future : futures) {
            ASSERT_TRUE(Harness::waitForFinished(future));
            ASSERT_EQ(future.resultCount(), 1);
            const auto result = future.result();
            ASSERT_EQ(result.text(), result.interrupted ? QString() : line);
            interruptedOnes += result.interrupted ? 1 : 0;
        }
    }
    EXPECT_EQ(systemLog->messages().size(), recognitions) << "one line for each";
    EXPECT_GT(interruptedOnes, 0);
    EXPECT_LT(interruptedOnes, recognitions);
}

} // namespace
