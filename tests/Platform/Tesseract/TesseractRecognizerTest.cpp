#include "Platform/Tesseract/TesseractRecognizer.h"

#include "Platform/TextLayout/Canvas.h"

#include <QFile>
#include <QLinearGradient>
#include <QTemporaryDir>

#include <array>
#include <atomic>
#include <gtest/gtest.h>
#include <memory>
#include <random>
#include <thread>

using Drawing::Canvas;
using Platform::Error;
using Platform::TesseractEngine;
using Platform::TesseractRecognizer;
using Platform::TextObservation;
using namespace std::chrono_literals;

namespace {

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr bool isSanitized = true;
#else
constexpr bool isSanitized = false;
#endif

QStringList textsOf(const QList<TextObservation>& observations)
{
    QStringList texts;
    for (const auto& observation : observations)
        texts.append(observation.candidates.front().text);
    return texts;
}

/// A number that the kernel tells of this process, such as "Threads" or "VmRSS" (kilobytes).
qint64 statusOf(const char* name)
{
    QFile file(u"/proc/self/status"_qs);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    for (const auto& line : file.readAll().split('\n'))
        if (line.startsWith(name))
            return line.simplified().split(' ').at(1).toLongLong();
    ADD_FAILURE() << name;
    return 0;
}

Canvas dialog()
{
    return Canvas({520, 260}, QColor(246, 245, 244))
        .write({30, 40}, u"Save changes before closing?"_qs, {.size = 20, .isBold = true})
        .write({30, 80}, u"Unsaved work will be lost within 30 seconds."_qs)
        .write({30, 110}, u"/home/anna/report-2024.odt"_qs, {.family = Drawing::mono})
        .frame({250, 190, 100, 36}, Qt::gray, 6)
        .write({276, 213}, u"Cancel"_qs)
        .fill({370, 190, 100, 36}, QColor(53, 132, 228), 6)
        .write({400, 213}, u"Save"_qs, {.colour = Qt::white, .isBold = true});
}

Canvas darkWindow()
{
    const QColor light(222, 222, 222);
    return Canvas({500, 200}, QColor(36, 36, 40))
        .fill({0, 0, 500, 40}, QColor(48, 48, 54))
        .write({20, 26}, u"Preferences"_qs, {.colour = light, .isBold = true})
        .write({20, 80}, u"Follow the system theme"_qs, {.colour = light})
        .write({20, 110}, u"Changes take effect at once"_qs, {.size = 12, .colour = Qt::gray})
        .write({20, 150}, u"Learn more"_qs, {.colour = QColor(120, 174, 237)});
}

Canvas table()
{
    Canvas canvas({460, 140});
    const QStringList cells{u"Name"_qs, u"Size"_qs, u"Owner"_qs, u"notes.txt"_qs, u"214 kB"_qs,
        u"anna"_qs, u"photos.zip"_qs, u"38 MB"_qs, u"peter"_qs};
    for (int row = 0; row < 4; ++row)
        canvas.fill({20, 20 + row * 30, 421, 1}, Qt::lightGray);
    for (int column = 0; column < 4; ++column)
        canvas.fill({20 + column * 140, 20, 1, 91}, Qt::lightGray);
    for (int cell = 0; cell < 9; ++cell)
        canvas.write({30 + cell % 3 * 140, 40 + cell / 3 * 30}, cells[cell]);
    return canvas;
}

/// What a desktop at twice the scale shows.
Canvas fineScreen()
{
    return Canvas({900, 260})
        .write({60, 70}, u"Display scale: 200 %"_qs, {.size = 28})
        .fill({60, 130, 260, 80}, QColor(30, 100, 200), 12)
        .write({100, 182}, u"Keep changes"_qs, {.size = 26, .colour = Qt::white})
        .write({380, 182}, u"Reverting in 15 seconds"_qs, {.size = 28});
}

/// A page whose reading takes long.
const QImage& bigPage()
{
    static const QImage page = [] {
        Canvas canvas({2000, 2000});
        for (int line = 0; line < 95; ++line)
            canvas.write({20, 40 + line * 20},
                u"%1. "_qs.arg(line)
                    + u"The quick brown fox jumps over the lazy dog and rests by the river. "_qs
                          .repeated(3));
        return canvas.image;
    }();
    return page;
}

class TesseractRecognizerTest : public testing::Test {
protected:
    static void SetUpTestSuite() { warm = std::make_unique<TesseractRecognizer>(); }
    /// Engines have to end before the dictionaries that they share, which the library keeps.
    static void TearDownTestSuite() { warm.reset(); }

    static TesseractRecognizer& recognizer() { return *warm; }

    static QList<TextObservation> read(const QImage& image)
    {
        const auto observations = recognizer().recognize(image, {});
        EXPECT_TRUE(observations);
        return observations.value_or(QList<TextObservation>());
    }

private:
    static inline std::unique_ptr<TesseractRecognizer> warm;
};

TEST_F(TesseractRecognizerTest, screensAreReadAsTheyWereWritten)
{
    const std::array pages{
        std::pair("dialog", dialog()),
        std::pair("darkWindow", darkWindow()),
        std::pair("table", table()),
        std::pair("fineScreen", fineScreen()),
        std::pair("typewriter",
            Canvas({620, 80}).write(
                {30, 48}, u"for (int i = 0; i < 10; ++i)"_qs, {.family = Drawing::mono})),
        std::pair("heading",
            Canvas({700, 200}).write({40, 120}, u"Welcome back"_qs, {.size = 72, .isBold = true})),
    };
    for (const auto& [name, page] : pages) {
        SCOPED_TRACE(name);
        const auto observations = read(page.image);
        const auto texts = textsOf(observations);
        EXPECT_EQ(std::size_t(texts.size()), page.pieces.size());
        for (const auto& piece : page.pieces) {
            const auto index = texts.indexOf(piece.text);
            ASSERT_GE(index, 0) << piece.text.toStdString() << " is not among "
                                << texts.join(u" / ").toStdString();
            const auto& box = observations[index].boundingBox;
            const QRectF drawn = piece.box;
            const auto common = box & drawn;
            const auto whole = box | drawn;
            EXPECT_TRUE(QRectF(page.image.rect()).contains(box)) << texts[index].toStdString();
            EXPECT_GE(common.width() * common.height(), 0.7 * whole.width() * whole.height())
                << texts[index].toStdString();
        }
    }
}

// That text on nothing stands out is tested in tests/Platform/TextLayout/BackdropTest.cpp.
TEST_F(TesseractRecognizerTest, theFormatOfThePixelsDoesNotMatter)
{
    const auto text = u"All formats are read alike"_qs;
    const auto image = Canvas({620, 80}).write({30, 48}, text, {.size = 16}).image;
    for (int format = QImage::Format_Mono; format < QImage::NImageFormats; ++format) {
        if (format == QImage::Format_Alpha8) // Has no colours.
            continue;
        const auto pixels = static_cast<QImage::Format>(format);
        EXPECT_EQ(
            textsOf(read(image.convertToFormat(pixels, Qt::ThresholdDither))), QStringList(text))
            << "format " << format;
    }
}

TEST_F(TesseractRecognizerTest, whereThereIsNoTextNothingIsFound)
{
    std::mt19937 random(17);
    Canvas noise({300, 200});
    for (int y = 0; y < 200; ++y)
        for (int x = 0; x < 300; ++x)
            noise.image.setPixel(x, y, QRgb(random() | 0xff000000U));
    Canvas stripes({400, 300});
    for (int x = 0; x < 400; x += 12)
        stripes.fill({x, 0, 6, 300}, Qt::darkBlue);
    Canvas thinStripes({400, 300});
    for (int y = 0; y < 300; y += 4)
        thinStripes.fill({0, y, 400, 2}, Qt::black);
    Canvas gradient({600, 90}); // Qt fills large ones in threads of its own.
    QLinearGradient colours({0, 0}, {600, 90});
    colours.setColorAt(0, Qt::black);
    colours.setColorAt(1, Qt::white);
    QPainter(&gradient.image).fillRect(gradient.image.rect(), colours);
    const std::array pictures{
        std::pair("null", QImage()),
        std::pair("blank", Canvas({400, 300}).image),
        std::pair("black", Canvas({400, 300}, Qt::black).image),
        std::pair("onePixel", Canvas({1, 1}).image),
        std::pair("noise", noise.image),
        std::pair("stripes", stripes.image),
        std::pair("thinStripes", thinStripes.image),
        std::pair("gradient", gradient.image),
    };
    for (const auto& [name, picture] : pictures) {
        const auto texts = textsOf(read(picture));
        EXPECT_TRUE(texts.isEmpty()) << name << ": " << texts.join(u" / ").toStdString();
    }
}

TEST_F(TesseractRecognizerTest, otherLanguagesAreReadWhereTheyAreInstalled)
{
    const auto languages = TesseractEngine::installedLanguages();
    ASSERT_TRUE(languages.contains(u"eng"_qs));
    if (!languages.contains(u"deu"_qs))
        GTEST_SKIP() << "no German language data";
    Canvas page({640, 160});
    page.write({30, 40}, u"Möchten Sie die Änderungen übernehmen?"_qs, {.size = 16})
        .write({30, 80}, u"Größe und Schriftart können später geändert werden."_qs, {.size = 16})
        .write({30, 120}, u"Öffnen Sie dafür die Einstellungen für Schlüssel."_qs, {.size = 16});
    QStringList written;
    for (const auto& piece : page.pieces)
        written.append(piece.text);
    EXPECT_EQ(textsOf(read(page.image)), written);
}

TEST_F(TesseractRecognizerTest, withoutLanguageDataThePackageIsNamed)
{
    const QTemporaryDir empty;
    qputenv("TESSDATA_PREFIX", empty.path().toUtf8());
    const auto missing = recognizer().recognize(dialog().image, {});
    const auto missingAtFirst = TesseractRecognizer().recognize(dialog().image, {});
    qunsetenv("TESSDATA_PREFIX");
    for (const auto& answer : {missing, missingAtFirst}) {
        ASSERT_FALSE(answer);
        EXPECT_EQ(answer.error().kind, Error::Kind::missingLanguageData);
        EXPECT_TRUE(answer.error().message.contains(u"tesseract-ocr-eng"_qs));
    }
    EXPECT_FALSE(read(dialog().image).isEmpty());
}

TEST_F(TesseractRecognizerTest, aStopBeforeOrDuringTheReadingCancelsIt)
{
    for (const auto delay : {0ms, 5ms, 30ms, 200ms}) {
        std::stop_source stop;
        if (delay == 0ms)
            stop.request_stop();
        std::jthread stopper([&] {
            std::this_thread::sleep_for(delay);
            stop.request_stop();
        });
        const auto answer = recognizer().recognize(bigPage(), stop.get_token());
        ASSERT_FALSE(answer) << delay.count();
        EXPECT_EQ(answer.error().kind, Error::Kind::cancelled) << delay.count();
    }
    EXPECT_FALSE(read(dialog().image).isEmpty());
}

/// Answers how many recognitions, four at a time, ended with text or cancelled.
int answersOf(TesseractRecognizer& recognizer, const QImage& image, int count)
{
    constexpr int threads = 4;
    const auto lines = darkWindow().pieces.size();
    std::atomic<int> next = 0;
    std::atomic<int> answers = 0;
    const auto work = [&](unsigned seed) {
        std::mt19937 random(seed);
        while (next++ < count) {
            const auto delay = std::chrono::microseconds(random() % 60'000);
            std::stop_source stop;
            std::jthread stopper([&](const std::stop_token& isOver) {
                // Gives the recognition some time, but no more than it takes.
                const auto end = std::chrono::steady_clock::now() + delay;
                while (!isOver.stop_requested() && std::chrono::steady_clock::now() < end)
                    std::this_thread::sleep_for(1ms);
                stop.request_stop();
            });
            const auto answer = recognizer.recognize(image, stop.get_token());
            answers += answer ? std::size_t(answer->size()) == lines
                              : answer.error().kind == Error::Kind::cancelled;
        }
    };
    {
        std::vector<std::jthread> workers;
        workers.reserve(threads);
        for (int worker = 0; worker < threads; ++worker)
            workers.emplace_back(work, unsigned(worker + 1));
    }
    return answers;
}

TEST_F(TesseractRecognizerTest, manyAtATimeAreAllAnsweredAndLeaveNothingBehind)
{
    constexpr int warmUp = isSanitized ? 20 : 50;
    constexpr int count = isSanitized ? 100 : 1000;
    const auto image = darkWindow().image;
    EXPECT_EQ(answersOf(recognizer(), image, warmUp), warmUp);
    const auto threads = statusOf("Threads:");
    const auto kilobytes = statusOf("VmRSS:");
    EXPECT_EQ(answersOf(recognizer(), image, count), count);
    EXPECT_LE(statusOf("Threads:"), threads + 4);
    EXPECT_LE(statusOf("VmRSS:"), kilobytes + (isSanitized ? 400'000 : 150'000));
}

} // namespace
