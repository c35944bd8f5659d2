// What every file system behind the seam keeps to: the real one, and the one other tests stand on.

#include "Fakes/FakeFileSystem.h"
#include "Platform/Freedesktop/FreedesktopFileSystem.h"

#include <QTemporaryDir>

#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

namespace {

namespace fs = std::filesystem;
using testing::UnorderedElementsAre;

enum class Kind { freedesktop, fake };

class FileSystemTest : public testing::TestWithParam<Kind> {
protected:
    FileSystemTest() { EXPECT_TRUE(m_files->preparePrivateFolder(m_folder)); }
    // QTemporaryDir can't remove names that aren't UTF-8.
    void TearDown() override { fs::remove_all(m_folder); }

    Platform::Result<void> write(const fs::path& file, const char* bytes)
    {
        return m_files->writeFile(file, bytes);
    }

    std::optional<QByteArray> read(const fs::path& file, qint64 limit = 1000)
    {
        const auto bytes = m_files->readFile(file, limit);
        return bytes ? std::optional(*bytes) : std::nullopt;
    }

    std::vector<fs::path> names() { return m_files->names(m_folder).value(); }

    static fs::perms modeOf(const fs::path& path) { return fs::status(path).permissions(); }

    QTemporaryDir m_root;
    fs::path m_folder = fs::path(m_root.path().toStdString()) / "Program" / "Captures";
    const std::shared_ptr<Platform::FileSystem> m_files = make();

private:
    static std::shared_ptr<Platform::FileSystem> make()
    {
        if (GetParam() == Kind::fake)
            return std::make_shared<Fakes::FakeFileSystem>();
        return std::make_shared<Platform::FreedesktopFileSystem>();
    }
};

TEST_P(FileSystemTest, preparedFoldersAreForTheUserAlone)
{
    EXPECT_EQ(modeOf(m_folder), fs::perms::owner_all);

    fs::permissions(m_folder, fs::perms::all);
    const auto link = m_folder.parent_path() / "link";
    fs::create_directory_symlink(m_folder, link);
    EXPECT_TRUE(m_files->preparePrivateFolder(link));
    EXPECT_EQ(modeOf(m_folder), fs::perms::owner_all);
    EXPECT_TRUE(fs::is_symlink(link));
}

TEST_P(FileSystemTest, whatCanNotBeAFolderIsTold)
{
    ASSERT_TRUE(write(m_folder / "file", ""));
    fs::create_symlink(m_folder / "nowhere", m_folder / "dangling");
    EXPECT_FALSE(m_files->preparePrivateFolder(m_folder / "file"));
    EXPECT_FALSE(m_files->preparePrivateFolder(m_folder / "file" / "below"));
    EXPECT_FALSE(m_files->preparePrivateFolder(m_folder / "dangling"));
}

TEST_P(FileSystemTest, writtenFilesAreWholeAndForTheUserAlone)
{
    const auto file = m_folder / "a b %41 \xf0\x9f\x93\xb8 \xff.png"; // Not all of it is UTF-8.
    const auto mask = umask(0);
    EXPECT_TRUE(write(file, "first"));
    umask(mask);
    EXPECT_EQ(read(file), "first");
    EXPECT_EQ(modeOf(file), fs::perms::owner_read | fs::perms::owner_write);

    EXPECT_TRUE(write(file, ""));
    EXPECT_EQ(read(file), "");
    EXPECT_THAT(names(), UnorderedElementsAre(file.filename()));
}

TEST_P(FileSystemTest, aLinkOfThatNameIsReplaced)
{
    ASSERT_TRUE(write(m_folder / "other", "other"));
    fs::create_symlink(m_folder / "other", m_folder / "link");
    EXPECT_TRUE(write(m_folder / "link", "own"));
    EXPECT_EQ(read(m_folder / "other"), "other");
    EXPECT_EQ(read(m_folder / "link"), "own");
    EXPECT_FALSE(fs::is_symlink(m_folder / "link"));
}

TEST_P(FileSystemTest, whatCanNotBeWrittenLeavesNothing)
{
    fs::create_directories(m_folder / "folder" / "below");
    EXPECT_FALSE(write(m_folder / "folder", "bytes"));
    EXPECT_FALSE(write(m_folder / "vanished" / "file", "bytes"));
    EXPECT_THAT(names(), UnorderedElementsAre("folder"));
}

TEST_P(FileSystemTest, onlyTheFirstBytesAreRead)
{
    ASSERT_TRUE(write(m_folder / "file", "0123456789"));
    EXPECT_EQ(read(m_folder / "file", 4), "0123");
    EXPECT_EQ(read(m_folder / "file", 10), "0123456789");

    const QByteArray large(200'000, 'x');
    ASSERT_TRUE(m_files->writeFile(m_folder / "large", large));
    EXPECT_TRUE(read(m_folder / "large", 1 << 20) == large);
}

TEST_P(FileSystemTest, onlyRegularFilesAreRead)
{
    ASSERT_TRUE(write(m_folder / "file", "bytes"));
    ASSERT_EQ(mkfifo((m_folder / "pipe").c_str(), 0600), 0);
    fs::create_symlink(m_folder / "file", m_folder / "link");
    fs::create_symlink(m_folder / "circle", m_folder / "circle");
    EXPECT_EQ(read(m_folder / "link"), "bytes");
    for (const auto* name : {"pipe", "circle", "missing", "."}) {
        const auto bytes = m_files->readFile(m_folder / name, 10);
        ASSERT_FALSE(bytes) << name;
        EXPECT_EQ(bytes.error().kind, Platform::Error::Kind::unreadable) << name;
    }
}

TEST_P(FileSystemTest, namesAreThoseOfTheFolderAlone)
{
    ASSERT_TRUE(write(m_folder / "file", ""));
    fs::create_directory(m_folder / "folder");
    ASSERT_TRUE(write(m_folder / "folder" / "below", ""));
    fs::create_symlink("nowhere", m_folder / "dangling");
    EXPECT_THAT(names(), UnorderedElementsAre("file", "folder", "dangling"));
    EXPECT_FALSE(m_files->names(m_folder / "vanished"));
}

TEST_P(FileSystemTest, removalStopsAtLinksAndFullFolders)
{
    fs::create_directory(m_folder / "folder");
    ASSERT_TRUE(write(m_folder / "folder" / "below", "bytes"));
    fs::create_directory_symlink(m_folder / "folder", m_folder / "link");
    EXPECT_FALSE(m_files->remove(m_folder / "folder"));
    EXPECT_FALSE(m_files->remove(m_folder / "missing"));
    EXPECT_TRUE(m_files->remove(m_folder / "link"));
    EXPECT_THAT(names(), UnorderedElementsAre("folder"));

    fs::create_directory_symlink(m_folder / "folder", m_folder / "link");
    EXPECT_TRUE(m_files->removeFolder(m_folder / "link"));
    EXPECT_EQ(read(m_folder / "folder" / "below"), "bytes");
    EXPECT_TRUE(m_files->removeFolder(m_folder / "folder"));
    EXPECT_THAT(names(), UnorderedElementsAre());
}

TEST_P(FileSystemTest, whatIsInTheTrashIsNoLongerInTheFolder)
{
    ASSERT_TRUE(write(m_folder / "file", ""));
    EXPECT_TRUE(m_files->moveToTrash(m_folder / "file"));
    EXPECT_FALSE(m_files->moveToTrash(m_folder / "file"));
    EXPECT_THAT(names(), UnorderedElementsAre());
}

TEST_P(FileSystemTest, aCopyIsAloneUntilAnotherHoldsAClaim)
{
    const auto isAlone = [](Platform::FolderClaim& claim) {
        bool hasRun = false;
        EXPECT_EQ(claim.runAlone([&] { hasRun = true; }), hasRun);
        return hasRun;
    };
    const auto first = m_files->claim(m_folder);
    auto second = m_files->claim(m_folder);
    EXPECT_TRUE(isAlone(*first)); // The second has only been made yet.
    first->hold();
    second->hold();
    EXPECT_FALSE(isAlone(*first));
    EXPECT_FALSE(isAlone(*second));
    second.reset();
    EXPECT_TRUE(isAlone(*first));
    EXPECT_TRUE(isAlone(*first));
    second = m_files->claim(m_folder);
    EXPECT_FALSE(isAlone(*second)); // The first has it still, after it was alone.
}

std::string nameOf(const testing::TestParamInfo<Kind>& info)
{
    return info.param == Kind::fake ? "fake" : "freedesktop";
}

INSTANTIATE_TEST_SUITE_P(, FileSystemTest, testing::Values(Kind::freedesktop, Kind::fake), nameOf);

} // namespace
