// What the history costs: in memory over many captures, at its limit, and at the start.
//
//   history-bench soak CAPTURES   resident memory and files on disk, as a curve
//   history-bench memory          30 captures of 3840 by 2160, all but six of them released
//   history-bench scan            the scan of 30 such captures against decoding them

#include "Model/CaptureHistory.h"
#include "OCR/OCRService.h"
#include "Platform/Freedesktop/FreedesktopFileSystem.h"
#include "Platform/TextRecognizer.h"
#include "images/Pictures.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QGuiApplication>
#include <QImageReader>
#include <QPainter>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QTextStream>

#include <algorithm>
#include <unistd.h>

using namespace Lumenote;

namespace {

QTextStream& out()
{
    static QTextStream stream(stdout);
    return stream;
}

/// Finds a few lines in every picture, at once: what is measured here is what becomes of them.
class InstantRecognizer final : public Platform::TextRecognizer {
public:
    Platform::Result<QList<Platform::TextObservation>> recognize(
        const QImage& /*image*/, std::stop_token /*stop*/) override
    {
        QList<Platform::TextObservation> lines;
        for (int line = 0; line < 40; ++line)
            lines.append(
                {.candidates = {{.text = QStringLiteral("The quick brown fox %1").arg(line),
                     .confidence = 1}},
                    .boundingBox = QRectF(10, 20 * line, 300, 16)});
        return lines;
    }
};

/// A history on a folder of its own, with nothing to paste to or to ask.
struct World {
    QTemporaryDir folder{QDir::tempPath() + QStringLiteral("/history-bench")};
    OCRService ocr{std::make_shared<InstantRecognizer>()};
    std::shared_ptr<Platform::FileSystem> files =
        std::make_shared<Platform::FreedesktopFileSystem>();
    WorkbenchModel::Services services{.ocr = &ocr};
    CaptureStore store{folder.path().toStdString(), files};
    std::unique_ptr<CaptureHistory> history = std::make_unique<CaptureHistory>(store, services);

    /// Whether everything asked for until now is on disk and every model is read.
    bool isSettled() const
    {
        return std::all_of(
            history->entries().cbegin(), history->entries().cend(), [](const auto& entry) {
                return entry.isStored && !entry.thumbnail.isNull()
                    && (!entry.model || entry.isTextStored);
            });
    }

    void settle() const
    {
        while (!isSettled())
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }

    void record(const QImage& image) const
    {
        history->record(WorkbenchModel::create(image, {}, {}, services));
    }
};

double residentMebibytes()
{
    QFile statm(QStringLiteral("/proc/self/statm"));
    if (!statm.open(QIODevice::ReadOnly))
        return 0;
    const auto pages = statm.readAll().split(' ').value(1).toDouble();
    return pages * static_cast<double>(sysconf(_SC_PAGESIZE)) / (1 << 20);
}

QImage smallCapture(int number)
{
    QImage image(800, 500, QImage::Format_RGB32);
    image.fill(QColor::fromHsv(number * 7 % 360, 60, 200));
    QPainter painter(&image);
    for (int line = 0; line < 20; ++line)
        painter.drawText(
            20, 24 * (line + 1), QStringLiteral("Capture %1, line %2").arg(number).arg(line));
    return image;
}

qsizetype filesIn(const QString& folder)
{
    return QDir(folder).entryList({QStringLiteral("*.png")}, QDir::Files).size();
}

void soak(int captures)
{
    World world;
    QRandomGenerator random(1);
    qsizetype mostFiles = 0;
    out() << "captures  resident MiB  png files  text files\n";
    for (int number = 1; number <= captures; ++number) {
        world.record(smallCapture(number));
        world.settle();
        const auto& entries = world.history->entries();
        const auto any = entries.at(random.bounded(static_cast<int>(entries.size()))).id;
        if (number % 3 == 0) {
            const auto selection = world.history->select(any);
            while (!selection.isFinished())
                QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
            world.settle();
        }
        if (number % 10 == 0)
            world.history->deleteEntry(any);
        if (number % 1000 == 0)
            world.history->clear();
        mostFiles = std::max(mostFiles, filesIn(world.folder.path()));
        if (number <= 100 ? number % 20 == 0 : number % (captures / 20) == 0) {
            out() << QStringLiteral("%1  %2  %3  %4\n")
                         .arg(number, 8)
                         .arg(residentMebibytes(), 12, 'f', 1)
                         .arg(filesIn(world.folder.path()), 9)
                         .arg(QDir(world.folder.filePath(QStringLiteral("Text")))
                                  .entryList(QDir::Files)
                                  .size(),
                             10);
            out().flush();
        }
    }
    out() << "most png files at once: " << mostFiles << '\n';
}

void memory()
{
    World world;
    const auto pictures = Bench::screenPictures();
    const auto size = pictures.constFirst().image.size();
    const auto before = residentMebibytes();
    for (int number = 0; number < CaptureHistory::historyLimit; ++number) {
        world.record(pictures.at(number % pictures.size()).image.copy());
        world.settle();
    }
    qsizetype resident = 0;
    for (const auto& entry : world.history->entries())
        resident += entry.model ? 1 : 0;
    const auto bitmaps =
        static_cast<double>(resident) * size.width() * size.height() * 4 / (1 << 20);
    const auto grown = residentMebibytes() - before;
    out() << QStringLiteral(
        "%1 entries of %2 x %3, %4 models resident: %5 MiB of bitmaps, resident "
        "memory grew by %6 MiB: ratio %7\n")
                 .arg(world.history->entries().size())
                 .arg(size.width())
                 .arg(size.height())
                 .arg(resident)
                 .arg(bitmaps, 0, 'f', 1)
                 .arg(grown, 0, 'f', 1)
                 .arg(grown / bitmaps, 0, 'f', 2);
}

/// The longest time in which the event loop could not turn while @p isOver was false.
template <typename Condition>
double longestWait(Condition isOver)
{
    double longest = 0;
    QElapsedTimer turn;
    turn.start();
    while (!isOver()) {
        QCoreApplication::processEvents(QEventLoop::AllEvents);
        longest = std::max(longest, static_cast<double>(turn.nsecsElapsed()) / 1e6);
        turn.restart();
        usleep(200);
    }
    return longest;
}

void scan()
{
    World world;
    const auto pictures = Bench::screenPictures();
    for (int number = 0; number < CaptureHistory::historyLimit; ++number) {
        world.record(pictures.at(number % pictures.size()).image);
        world.settle();
    }
    for (int run = 0; run < 3; ++run) {
        QElapsedTimer timer;
        timer.start();
        const auto found = world.store.load(CaptureHistory::historyLimit).size();
        const auto scanned = static_cast<double>(timer.restart()) / 1e3;
        const QDir folder(world.folder.path());
        for (const auto& name : folder.entryList({QStringLiteral("*.png")}, QDir::Files))
            QImageReader(folder.filePath(name)).read();
        const auto decoded = static_cast<double>(timer.elapsed()) / 1e3;
        world.history = std::make_unique<CaptureHistory>(world.store, world.services);
        world.history->loadPersisted();
        const auto longest = longestWait([&] { return !world.history->entries().isEmpty(); });
        out() << QStringLiteral(
            "scan of %1: %2 s; decoded one after the other: %3 s; ratio %4; the "
            "main thread waited at most %5 ms\n")
                     .arg(found)
                     .arg(scanned, 0, 'f', 2)
                     .arg(decoded, 0, 'f', 2)
                     .arg(decoded / scanned, 0, 'f', 2)
                     .arg(longest, 0, 'f', 2);
        out().flush();
    }
}

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QTemporaryDir home;
    qputenv("HOME", home.path().toUtf8());
    qputenv("XDG_DATA_HOME", home.path().toUtf8());
    const QGuiApplication application(argc, argv);
    const auto arguments = QCoreApplication::arguments();
    const auto what = arguments.value(1);
    if (what == QStringLiteral("soak") && arguments.value(2).toInt() >= 20)
        soak(arguments.value(2).toInt());
    else if (what == QStringLiteral("memory"))
        memory();
    else if (what == QStringLiteral("scan"))
        scan();
    else {
        QTextStream(stderr) << "usage: history-bench soak CAPTURES | memory | scan\n";
        return 64;
    }
    return 0;
}
