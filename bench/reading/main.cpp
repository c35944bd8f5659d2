#include "ErrorList.h"
#include "Generator.h"
#include "Manifest.h"
#include "Options.h"
#include "Reader.h"
#include "Report.h"

#include <QDateTime>
#include <QDir>
#include <QFileInfo>
#include <QGuiApplication>
#include <QJsonDocument>

#include <cstdio>

namespace {

using namespace Lumenote::Bench;
using namespace Qt::StringLiterals;

/// Draws the pictures where this program has not done so before, in a process of its own: the
/// memory of one that measures shows in what it measures.
void requirePictures(const Options& options)
{
    const QString stamp = options.folder + u"/drawn-by"_s;
    const QFileInfo program(QCoreApplication::applicationFilePath());
    const QByteArray wanted = program.lastModified().toString(Qt::ISODateWithMs).toUtf8();
    QFile file(stamp);
    if (file.open(QIODevice::ReadOnly) && file.readAll() == wanted)
        return;
    file.close();
    std::fprintf(stderr, "Drawing the pictures in %s\n", qPrintable(options.folder));
    if (runCommand({program.filePath(), u"--generate"_s, u"--out"_s, options.folder}).exitCode != 0)
        qFatal("The pictures are faulty; --generate tells why");
    if (file.open(QIODevice::WriteOnly))
        file.write(wanted);
}

QList<Picture> wantedPictures(const Options& options)
{
    QList<Picture> pictures;
    for (const Picture& picture : Manifest::readAll(options.folder)) {
        if ((options.group.isEmpty() || picture.group == options.group)
            && (!options.split || picture.split == *options.split) && Readers::canRead(picture))
            pictures.append(picture);
    }
    return pictures;
}

void writeJson(const QString& path, const QJsonObject& json)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        qFatal("Cannot write %s", qPrintable(path));
    file.write(QJsonDocument(json).toJson());
}

int draw(int argc, char** argv, const Options& options)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    return Generator::drawAll(options.folder, options.group) ? 0 : 1;
}

} // namespace

int main(int argc, char** argv)
{
    const Options options = [&] {
        const QCoreApplication application(argc, argv);
        return parseOptions(QCoreApplication::arguments());
    }();
    if (options.drawsOnly)
        return draw(argc, argv, options);

    const QCoreApplication application(argc, argv);
    if (options.doubling.size() == 2) {
        Generator::saveDoubled(options.doubling[0], options.doubling[1]);
        return 0;
    }
    requirePictures(options);
    const QList<Picture> pictures = wantedPictures(options);
    if (options.listsErrors) {
        printErrors(pictures, options);
        return 0;
    }
    const Measurements measurements = measure(pictures, options);
    std::fputs(qUtf8Printable(Report::toMarkdown(measurements, options)), stdout);
    if (!options.jsonFile.isEmpty())
        writeJson(options.jsonFile, Report::toJson(measurements));
}
