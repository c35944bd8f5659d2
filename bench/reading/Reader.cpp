#include "Reader.h"

#include "Boxes.h"
#include "Generator.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QSet>

#include <algorithm>

namespace Lumenote::Bench::Readers {

using namespace Qt::StringLiterals;

namespace {
const QString oneThread = u"OMP_THREAD_LIMIT=1"_s;

QSet<QString> installedLanguages()
{
    QSet<QString> languages;
    const CommandRun run = runCommand({u"tesseract"_s, u"--list-langs"_s});
    for (const QByteArray& line : run.output.split('\n'))
        languages.insert(QString::fromUtf8(line.trimmed()));
    return languages;
}

CommandRun tesseract(const QString& file, const Picture& picture, const QStringList& variables)
{
    return runCommand(
        {u"tesseract"_s, file, u"-"_s, u"-l"_s, picture.languages.join(u'+')}, variables);
}

/// The doubled copy of @p picture. Another process makes it, so that ours stays small.
QString doubled(const Picture& picture, const Options& options)
{
    QString target = options.folder + u'/' + Generator::doubledPrefix + picture.name + u".png"_s;
    const QString source = options.folder + u'/' + picture.file;
    const QFileInfo info(target);
    if (info.exists() && info.lastModified() > QFileInfo(source).lastModified())
        return target;
    const CommandRun run =
        runCommand({QCoreApplication::applicationFilePath(), u"--double"_s, source, target});
    if (run.exitCode != 0)
        qFatal("Cannot double %s", qPrintable(source));
    return target;
}
} // namespace

QStringList allNames()
{
    return {u"lumenote"_s, u"tesseract"_s, u"tesseract-1"_s, u"tesseract-2x"_s};
}

bool canRead(const Picture& picture)
{
    static const QSet<QString> installed = installedLanguages();
    return std::ranges::all_of(
        picture.languages, [](const QString& language) { return installed.contains(language); });
}

CommandRun read(const QString& name, const Picture& picture, const Options& options)
{
    const QString file = options.folder + u'/' + picture.file;
    if (name == "lumenote"_L1)
        return runCommand({options.lumenote, u"--ocr"_s, file});
    if (name == "tesseract"_L1)
        return tesseract(file, picture, {});
    if (name == "tesseract-1"_L1)
        return tesseract(file, picture, {oneThread});
    return tesseract(doubled(picture, options), picture, {oneThread});
}

std::optional<QList<Piece>> missedBoxes(const Picture& picture, const Options& options)
{
    const QString program = QCoreApplication::applicationDirPath() + u"/reading-boxes"_s;
    if (!QFileInfo(program).isExecutable())
        return std::nullopt;
    const CommandRun run = runCommand({program, options.folder + u'/' + picture.file});
    return Boxes::missed(picture.pieces, Boxes::parse(run.output));
}

} // namespace Lumenote::Bench::Readers
