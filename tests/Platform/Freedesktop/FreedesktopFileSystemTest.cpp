// What only the real file system can do: faults of the disk, processes that die, and the desktop.

#include "Platform/Freedesktop/FreedesktopFileSystem.h"

#include "Fakes/DiskFaults.h"
#include "Harness/OwnDisk.h"
#include "Platform/Descriptor.h"

#include <QScopeGuard>
#include <QTemporaryDir>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/xattr.h>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;
using Fakes::DiskFaults;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::UnorderedElementsAre;

class FreedesktopFileSystemTest : public testing::Test {
protected:
    // QTemporaryDir can't remove names that aren't UTF-8.
    void TearDown() override { fs::remove_all(m_folder); }

    std::vector<fs::path> names() { return m_files.names(m_folder).value(); }

    QTemporaryDir m_root;
    fs::path m_folder = m_root.path().toStdString();
    Platform::FreedesktopFileSystem m_files;
};

TEST_F(FreedesktopFileSystemTest, faultsOfTheDiskLeaveAllOrNothing)
{
    const QByteArray bytes(100'000, 'x');
    // No reason where the file is written all the same.
    const auto check = [&](const char* fault, DiskFaults::Plan plan, const char* reason = nullptr) {
        SCOPED_TRACE(fault);
        for (const std::string name : {"old", "new", "old", "new"}) {
            ASSERT_TRUE(m_files.writeFile(m_folder / "old", "before"));
            const auto written = [&] {
                const DiskFaults faults(plan);
                return m_files.writeFile(m_folder / name, bytes);
            }();
            const auto there = m_files.readFile(m_folder / name, 1 << 20);
            EXPECT_EQ(written.has_value(), reason == nullptr);
            if (written) {
                EXPECT_TRUE(there == bytes) << name;
            } else {
                EXPECT_THAT(written.error().message.toStdString(), HasSubstr(reason ? reason : ""));
                EXPECT_EQ(there.value_or("none"), name == "old" ? "before" : "none");
            }
            fs::remove(m_folder / "new");
            EXPECT_THAT(names(), ElementsAre("old"));
            if (name == "new")
                plan.hasUnnamedFiles = false;
        }
    };
    check("full", {.room = 65'000, .writeError = ENOSPC}, "No space left");
    check("overQuota", {.room = 0, .writeError = EDQUOT}, "quota");
    check("failsToWrite", {.room = 1, .writeError = EIO}, "Input/output error");
    check("failsToSync", {.fileSyncError = EIO}, "Input/output error");
    check("fullAtLast", {.fileSyncError = ENOSPC}, "No space left");
    check("takesLittleAtOnce", {.mostAtOnce = 999});
    check("isInterrupted", {.mostAtOnce = 9'999, .interruptsWrites = true});
    check("cannotNameUnnamedFiles", {.canNameThem = false});
    check("cannotSyncFolders", {.folderSyncError = EINVAL});
}

TEST_F(FreedesktopFileSystemTest, bytesReachTheDiskBeforeTheirNameAndTheNameBeforeTheCallReturns)
{
    for (const bool hasUnnamedFiles : {true, false}) {
        const DiskFaults faults({.hasUnnamedFiles = hasUnnamedFiles});
        ASSERT_TRUE(m_files.writeFile(m_folder / (hasUnnamedFiles ? "a" : "b"), "bytes"));
        EXPECT_THAT(DiskFaults::steps(),
            ElementsAre("write", "sync file", hasUnnamedFiles ? "link" : "rename", "sync folder"));
    }
    const DiskFaults faults({});
    ASSERT_TRUE(m_files.writeFile(m_folder / "a", "others"));
    EXPECT_THAT(DiskFaults::steps(),
        ElementsAre("write", "sync file", "link", "link", "rename", "sync folder"));
}

TEST_F(FreedesktopFileSystemTest, newFoldersAreOnTheDiskBeforeAnythingIsInThem)
{
    const DiskFaults faults({});
    ASSERT_TRUE(m_files.preparePrivateFolder(m_folder / "a" / "b"));
    EXPECT_THAT(DiskFaults::steps(), ElementsAre("sync folder", "sync folder"));
    ASSERT_TRUE(m_files.preparePrivateFolder(m_folder / "a" / "b"));
    EXPECT_EQ(DiskFaults::steps().size(), 2);
}

TEST_F(FreedesktopFileSystemTest, aNameThatMayNotLastIsTold)
{
    const DiskFaults faults({.folderSyncError = EIO});
    EXPECT_FALSE(m_files.writeFile(m_folder / "file", "bytes"));
    EXPECT_EQ(m_files.readFile(m_folder / "file", 10), "bytes");
}

TEST_F(FreedesktopFileSystemTest, aFullDiskKeepsWhatItHas)
{
    Harness::onOwnDisk(m_folder, "size=256k", [this] {
        const QByteArray bytes(50'000, 'x');
        size_t stored = 0;
        Platform::Result<void> written;
        while ((written = m_files.writeFile(m_folder / std::to_string(stored), bytes)))
            ++stored;
        EXPECT_EQ(written.error().message.toStdString(), "No space left on device");
        ASSERT_GT(stored, 1);
        EXPECT_FALSE(m_files.writeFile(m_folder / "0", bytes + bytes));
        EXPECT_EQ(names().size(), stored);
        for (const auto& name : names())
            EXPECT_TRUE(m_files.readFile(m_folder / name, 1 << 20) == bytes);
        EXPECT_TRUE(m_files.remove(m_folder / "0"));
        EXPECT_TRUE(m_files.writeFile(m_folder / "again", bytes));
    });
}

TEST_F(FreedesktopFileSystemTest, aReadOnlyDiskIsReadAndNothingElse)
{
    Harness::onOwnDisk(m_folder, "", [this] {
        EXPECT_TRUE(m_files.claim(m_folder)->runAlone([] {}));
        ASSERT_TRUE(m_files.writeFile(m_folder / "file", "bytes"));
        ASSERT_TRUE(Harness::makeReadOnly(m_folder));
        EXPECT_TRUE(m_files.preparePrivateFolder(m_folder));
        EXPECT_FALSE(m_files.preparePrivateFolder(m_folder / "Text"));
        EXPECT_EQ(m_files.writeFile(m_folder / "file", "others").error().message.toStdString(),
            "Read-only file system");
        EXPECT_FALSE(m_files.remove(m_folder / "file"));
        EXPECT_FALSE(m_files.removeFolder(m_folder));
        EXPECT_FALSE(m_files.moveToTrash(m_folder / "file"));
        EXPECT_EQ(m_files.readFile(m_folder / "file", 10), "bytes");
        EXPECT_FALSE(m_files.claim(m_folder)->runAlone([] {}));
    });
}

TEST_F(FreedesktopFileSystemTest, onlyFilesOfDeadWritersAreSwept)
{
    for (const auto* name : {".unfinished-1", ".unfinished-2", ".other", "file"})
        ASSERT_TRUE(m_files.writeFile(m_folder / name, "bytes"));
    fs::create_directory(m_folder / ".unfinished-3");
    fs::create_symlink("file", m_folder / ".unfinished-4");
    {
        const Platform::Descriptor writer(open((m_folder / ".unfinished-1").c_str(), O_WRONLY));
        ASSERT_EQ(flock(writer.number(), LOCK_EX), 0);
        m_files.sweepUnfinished(m_folder);
        EXPECT_THAT(names(),
            UnorderedElementsAre(
                ".unfinished-1", ".unfinished-3", ".unfinished-4", ".other", "file"));
    }
    m_files.sweepUnfinished(m_folder);
    EXPECT_THAT(names(), UnorderedElementsAre(".unfinished-3", ".unfinished-4", ".other", "file"));
    m_files.sweepUnfinished(m_folder / "vanished");
}

TEST_F(FreedesktopFileSystemTest, aClaimOutlivesTheFolderBeingReplaced)
{
    const auto first = m_files.claim(m_folder);
    first->hold();
    fs::rename(m_folder / ".lock", m_folder / "moved");
    const auto second = m_files.claim(m_folder);
    EXPECT_TRUE(second->runAlone([] {})); // Nobody has claimed what lies there now.
    first->hold();
    EXPECT_FALSE(second->runAlone([] {}));
}

TEST_F(FreedesktopFileSystemTest, nobodyClaimsAFolderWhileSomethingIsRemoved)
{
    const auto first = m_files.claim(m_folder);
    const auto second = m_files.claim(m_folder);
    EXPECT_TRUE(first->runAlone([&] {
        second->hold(); // Gives up after a while.
        EXPECT_FALSE(second->runAlone([] {}));
    }));
    second->hold();
    EXPECT_FALSE(first->runAlone([] {}));
}

TEST_F(FreedesktopFileSystemTest, backupsLeavePreparedFoldersOutUnlessTheUserSaysOtherwise)
{
    constexpr auto attribute = "user.xdg.robots.backup";
    const auto folder = m_folder / "Captures";
    ASSERT_TRUE(m_files.preparePrivateFolder(folder));
    std::string value(8, ' ');
    const auto length = getxattr(folder.c_str(), attribute, value.data(), value.size());
    if (length < 0 && errno == ENOTSUP)
        GTEST_SKIP() << "The temporary folder is on a file system without extended attributes.";
    EXPECT_EQ(value.substr(0, static_cast<size_t>(std::max<ssize_t>(length, 0))), "false");

    ASSERT_EQ(setxattr(folder.c_str(), attribute, "true", 4, 0), 0);
    ASSERT_TRUE(m_files.preparePrivateFolder(folder));
    EXPECT_EQ(getxattr(folder.c_str(), attribute, value.data(), value.size()), 4);
}

TEST_F(FreedesktopFileSystemTest, theTrashTellsWhereAFileCameFrom)
{
    const auto file = m_folder / "20260116-173005-123-3F2504E0-4F89-41D3-9A0C-0305E82C3301.png";
    ASSERT_TRUE(m_files.writeFile(file, "bytes"));
    ASSERT_TRUE(m_files.moveToTrash(file));
    const auto trash = fs::path(qgetenv("XDG_DATA_HOME").toStdString()) / "Trash";
    EXPECT_EQ(m_files.readFile(trash / "files" / file.filename(), 10), "bytes");
    EXPECT_THAT(m_files.readFile(trash / "info" / (file.filename().string() + ".trashinfo"), 1000)
                    .value()
                    .toStdString(),
        HasSubstr("Path=" + file.string()));
}

TEST_F(FreedesktopFileSystemTest, dataLiesWhereTheDesktopWantsIt)
{
    const auto set = [](const char* name, const fs::path& value) {
        qputenv(name, QByteArray::fromStdString(value.native()));
    };
    const QByteArrayList names{"TMPDIR", "HOME", "XDG_DATA_HOME"};
    const QByteArrayList before{qgetenv("TMPDIR"), qgetenv("HOME"), qgetenv("XDG_DATA_HOME")};
    const auto restore = qScopeGuard([&] {
        for (qsizetype i = 0; i < names.size(); ++i)
            qputenv(names.at(i).constData(), before.at(i));
    });
    set("TMPDIR", m_folder);
    set("HOME", m_folder / "home \xff");
    ASSERT_TRUE(m_files.writeFile(m_folder / "file", ""));
    const auto check = [&](const fs::path& dataHome, const fs::path& expected) {
        set("XDG_DATA_HOME", dataHome);
        EXPECT_EQ(m_files.userDataFolder(), expected);
        EXPECT_TRUE(fs::is_directory(expected));
    };
    const auto fallback = m_folder / ("lumenote-" + std::to_string(geteuid()));
    check(m_folder / "data", m_folder / "data");
    check("", m_folder / "home \xff/.local/share");
    check("relative", m_folder / "home \xff/.local/share");
    check(m_folder / "file" / "data", fallback);
    fs::remove(fallback);
    fs::create_directory_symlink(m_folder, fallback); // Somebody else's trap.
    EXPECT_NE(m_files.userDataFolder(), fallback);
}

} // namespace
