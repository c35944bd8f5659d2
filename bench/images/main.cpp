// What it costs to write pictures of screens as PNG, and to look through a history of them.

#include "Encoders.h"
#include "Pictures.h"
#include "Platform/ImageSurvey.h"
#include "Ratios.h"

#include <QDir>
#include <QFile>
#include <QGuiApplication>
#include <QImageReader>
#include <QTemporaryDir>

#include <algorithm>
#include <atomic>
#include <functional>
#include <thread>

using namespace Lumenote::Bench;
using namespace Qt::StringLiterals;

namespace {

constexpr int historySize = 30;
constexpr int thumbnailLongEdge = 200;

benchmark::internal::Benchmark* add(
    const QString& subject, const char* way, const std::function<void(benchmark::State&)>& run)
{
    return benchmark::RegisterBenchmark((subject.toStdString() + '/' + way).c_str(), run)
        ->Unit(benchmark::kMillisecond)
        ->MeasureProcessCPUTime()
        ->UseRealTime();
}

void addEncoding(const ScreenPicture& picture)
{
    for (const PngWriter& writer : pngWriters) {
        add(picture.name, writer.name, [&](benchmark::State& state) {
            QByteArray file;
            for ([[maybe_unused]] auto _ : state)
                file = writer.encode(picture.image);
            state.counters["bytes"] = double(file.size());
        });
    }
}

QStringList historyIn(const QString& folder, const QList<ScreenPicture>& pictures)
{
    QStringList files;
    for (int i = 0; i < historySize; ++i) {
        files.append(u"%1/%2.png"_s.arg(folder).arg(i));
        QFile file(files.last());
        if (!file.open(QIODevice::WriteOnly)
            || file.write(withLumenote(pictures[i % pictures.size()].image)) < 0)
            qFatal("Cannot write %s", qPrintable(files.last()));
    }
    return files;
}

QImage decoded(const QString& file)
{
    return QImageReader(file).read();
}

QImage thumbnailByScaling(const QString& file)
{
    return decoded(file).scaled(
        thumbnailLongEdge, thumbnailLongEdge, Qt::KeepAspectRatio, Qt::SmoothTransformation);
}

QImage surveyed(const QString& file)
{
    return Platform::surveyImageFile(file.toStdString(), thumbnailLongEdge)->thumbnail;
}

/// Looks at all files, on as many threads as told.
template <typename Look>
void lookThrough(const QStringList& files, int threads, const Look& look)
{
    std::atomic<qsizetype> next = 0;
    std::vector<std::jthread> workers;
    for (int i = 0; i < threads; ++i)
        workers.emplace_back([&] {
            for (qsizetype index = next++; index < files.size(); index = next++)
                benchmark::DoNotOptimize(look(files[index]));
        });
}

void addHistory(const QString& subject, const QStringList& files)
{
    struct Way {
        const char* name;
        QImage (*look)(const QString& file);
        int threads;
    };
    for (const Way& way :
        {Way{"QImageReader", decoded, 1}, Way{"QImageReader and scaled", thumbnailByScaling, 1},
            Way{"survey", surveyed, 1}, Way{"survey on two threads", surveyed, 2}}) {
        add(subject, way.name, [way, files](benchmark::State& state) {
            for ([[maybe_unused]] auto _ : state)
                lookThrough(files, way.threads, way.look);
        });
    }
}

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    const QList<ScreenPicture> pictures = screenPictures();
    if (argc == 3 && qstrcmp(argv[1], "--save") == 0) { // For commands that capture a screen.
        for (const ScreenPicture& picture : pictures)
            picture.image.save(QString::fromLocal8Bit(argv[2]) + u'/' + picture.name + u".png"_s);
        return 0;
    }
    const QTemporaryDir folder;
    const auto inFolder = [&](const QString& name, bool isPhotographic) {
        QList<ScreenPicture> chosen;
        std::ranges::copy_if(pictures, std::back_inserter(chosen),
            [&](const ScreenPicture& each) { return each.isPhotographic == isPhotographic; });
        QDir(folder.path()).mkdir(name);
        return historyIn(folder.filePath(name), chosen);
    };
    for (const ScreenPicture& picture : pictures)
        addEncoding(picture);
    addHistory(u"30 screens of text"_s, inFolder(u"text"_s, false));
    addHistory(u"30 photographs"_s, inFolder(u"photographs"_s, true));
    RatioReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
}
