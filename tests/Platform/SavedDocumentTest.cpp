#include "Fakes/DiskFaults.h"
#include "Platform/Documents.h"

#include <QFile>
#include <QTemporaryDir>

#include <cerrno>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

using Fakes::DiskFaults;

namespace {

QByteArray contentsOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

TEST(SavedDocument, isThereForGoodWithItsNameAndFollowsLinks)
{
    const QTemporaryDir folder;
    const auto file = folder.filePath(u"here.png"_qs);
    const auto link = folder.filePath(u"link.png"_qs);
    ASSERT_TRUE(QFile::link(file, link));
    for (const auto& path : {file, link}) {
        const DiskFaults disk({});
        ASSERT_TRUE(Platform::saveDocument(path.toStdString(), "bytes"));
        EXPECT_EQ(DiskFaults::steps().back(), "sync folder");
    }
    EXPECT_TRUE(QFile::symLinkTarget(link) == file);
    EXPECT_EQ(contentsOf(file), "bytes");

    const DiskFaults disk({.folderSyncError = EIO});
    const auto saved = Platform::saveDocument(file.toStdString(), "others");
    ASSERT_FALSE(saved);
    EXPECT_FALSE(saved.error().message.isEmpty());
}

} // namespace
