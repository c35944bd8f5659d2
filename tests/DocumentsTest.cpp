#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

#include <gtest/gtest.h>

namespace {

const QDir sources(QStringLiteral(LUMENOTE_SOURCES));

QStringList documents()
{
    QStringList paths{u"README.md"_qs};
    QDirIterator files(
        sources.filePath(u"docs"_qs), {u"*.md"_qs}, QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext())
        paths.append(sources.relativeFilePath(files.next()));
    return paths;
}

QString contentsOf(const QString& path)
{
    QFile file(sources.filePath(path));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
    return QString::fromUtf8(file.readAll());
}

QStringList captures(const QString& text, const QString& pattern)
{
    QStringList found;
    auto matches = QRegularExpression(pattern).globalMatch(text);
    while (matches.hasNext())
        found.append(matches.next().captured(1));
    return found;
}

/// What stands in code marks and starts with a folder of ours, or is run from the root.
QStringList pathsIn(const QString& text)
{
    const auto folders =
        sources.entryList(QDir::Dirs | QDir::NoDotAndDotDot | QDir::Hidden).join(u'|');
    auto paths = captures(text, u"`(?:\\./)?((?:%1)/[\\w./-]*)"_qs.arg(folders));
    paths += captures(text, u"(?m)(?:`|^ +)\\./([\\w-]+)"_qs);
    paths.removeIf([](const QString& path) { return path.startsWith(u"build/"); });
    return paths;
}

TEST(DocumentsTest, everyPathNamedExists)
{
    qsizetype named = 0;
    for (const auto& document : documents()) {
        const auto text = contentsOf(document);
        for (const auto& path : pathsIn(text)) {
            EXPECT_TRUE(QFileInfo::exists(sources.filePath(path)))
                << document.toStdString() << " names " << path.toStdString();
            ++named;
        }
        const QDir folder(QFileInfo(sources.filePath(document)).path());
        for (const auto& link : captures(text, u"\\]\\((?!\\w+:|#)([^)#\\s]+)"_qs)) {
            EXPECT_TRUE(QFileInfo::exists(folder.filePath(link)))
                << document.toStdString() << " links to " << link.toStdString();
            ++named;
        }
    }
    EXPECT_GT(named, 0);
}

} // namespace
