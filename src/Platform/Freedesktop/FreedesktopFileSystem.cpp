#include "Platform/Freedesktop/FreedesktopFileSystem.h"

#include "Platform/Descriptor.h"
#include "Platform/DiskSync.h"
#include "Platform/Freedesktop/DurableFile.h"
#include "Platform/Freedesktop/LockFileClaim.h"
#include "Platform/Freedesktop/SystemError.h"

#include <QFile>

#include <algorithm>
#include <cstdlib>
#include <fcntl.h>
#include <string>
#include <string_view>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

namespace Platform {

namespace {

namespace fs = std::filesystem;

constexpr mode_t privateMode = 0700;

tl::unexpected<Error> failure(const std::error_code& error)
{
    return tl::make_unexpected(
        Error{.kind = Error::Kind::failed, .message = QString::fromStdString(error.message())});
}

bool isFolder(const fs::path& path)
{
    struct stat status { };
    return stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

/// A folder whose name is not on the disk would take with it all that was stored in it. One that we
/// may write but not read can't be synced.
Result<void> makeNameDurable(const fs::path& folder)
{
    const Descriptor parent(open((folder / "..").c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    return !parent || syncFolder(parent.number()) ? Result<void>() : systemError();
}

/// Makes @p folder and those above it that are missing.
Result<void> makeFolders(const fs::path& folder)
{
    if (isFolder(folder))
        return {};
    if (mkdir(folder.c_str(), privateMode) == 0)
        return makeNameDurable(folder);
    if (errno == ENOENT && folder.has_relative_path() && folder.parent_path() != folder) {
        if (auto made = makeFolders(folder.parent_path()); !made)
            return made;
        if (mkdir(folder.c_str(), privateMode) == 0)
            return makeNameDurable(folder);
    }
    const auto number = errno;
    if (number == EEXIST && isFolder(folder)) // Another copy was quicker.
        return {};
    return systemError(number);
}

/// Open for reading, but only if that can neither block nor do anything.
Result<Descriptor> openRegularFile(const fs::path& path)
{
    constexpr auto unreadable = Error::Kind::unreadable;
    struct stat status { };
    if (stat(path.c_str(), &status) != 0)
        return systemError(errno, unreadable);
    if (!S_ISREG(status.st_mode))
        return tl::make_unexpected(
            Error{.kind = unreadable, .message = QStringLiteral("not a regular file")});
    Descriptor file(open(path.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
    if (!file || fstat(file.number(), &status) != 0)
        return systemError(errno, unreadable);
    if (!S_ISREG(status.st_mode))
        return tl::make_unexpected(
            Error{.kind = unreadable, .message = QStringLiteral("not a regular file")});
    return file;
}

fs::path environmentPath(const char* name)
{
    const auto* value = std::getenv(name); // NOLINT(concurrency-mt-unsafe): nobody here sets any.
    return value == nullptr ? fs::path() : fs::path(value);
}

fs::path xdgDataHome()
{
    if (auto folder = environmentPath("XDG_DATA_HOME"); folder.is_absolute())
        return folder;
    const auto home = environmentPath("HOME");
    return home.is_absolute() ? home / ".local" / "share" : fs::path();
}

/// A folder that another user has made there first is no good.
bool isOwnFolder(const fs::path& path)
{
    struct stat status { };
    return lstat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode)
        && status.st_uid == geteuid();
}

/// One that is found again at the next start, if nobody is in the way.
fs::path temporaryDataFolder()
{
    std::error_code error;
    const auto all = fs::temp_directory_path(error);
    const auto prefix = ((error ? fs::path("/tmp") : all) / "lumenote-").native();
    fs::path usual = prefix + std::to_string(geteuid());
    if (mkdir(usual.c_str(), privateMode) == 0 || isOwnFolder(usual))
        return usual;
    auto unique = prefix + "XXXXXX";
    return mkdtemp(unique.data()) != nullptr ? fs::path(unique) : usual;
}

} // namespace

fs::path FreedesktopFileSystem::userDataFolder()
{
    const auto folder = xdgDataHome();
    return !folder.empty() && makeFolders(folder) ? folder : temporaryDataFolder();
}

Result<void> FreedesktopFileSystem::preparePrivateFolder(const fs::path& folder)
{
    if (auto made = makeFolders(folder); !made)
        return made;
    struct stat status { };
    if (stat(folder.c_str(), &status) == 0 && (status.st_mode & ALLPERMS) != privateMode)
        static_cast<void>(chmod(folder.c_str(), privateMode));
    // Not if it is there: then the user decided otherwise, or we did this before.
    constexpr std::string_view no = "false";
    static_cast<void>(
        setxattr(folder.c_str(), "user.xdg.robots.backup", no.data(), no.size(), XATTR_CREATE));
    return {};
}

Result<void> FreedesktopFileSystem::writeFile(const fs::path& file, const QByteArray& bytes)
{
    return writeDurableFile(file, bytes);
}

Result<QByteArray> FreedesktopFileSystem::readFile(const fs::path& file, qint64 limit)
{
    const auto descriptor = openRegularFile(file);
    if (!descriptor)
        return tl::make_unexpected(descriptor.error());
    QByteArray bytes;
    constexpr qint64 chunkSize = 65536;
    while (bytes.size() < limit) {
        const auto end = bytes.size();
        const auto wanted = std::min(chunkSize, limit - end);
        bytes.resize(end + wanted);
        const auto count =
            read(descriptor->number(), bytes.data() + end, static_cast<size_t>(wanted));
        if (count < 0 && errno != EINTR)
            return systemError(errno, Error::Kind::unreadable);
        bytes.resize(end + std::max<qint64>(count, 0));
        if (count == 0)
            break;
    }
    return bytes;
}

Result<std::vector<fs::path>> FreedesktopFileSystem::names(const fs::path& folder)
{
    std::vector<fs::path> names;
    std::error_code error;
    for (fs::directory_iterator entries(folder, error), end; !error && entries != end;
         entries.increment(error))
        names.push_back(entries->path().filename());
    if (error)
        return failure(error);
    return names;
}

Result<void> FreedesktopFileSystem::remove(const fs::path& file)
{
    std::error_code error;
    if (fs::remove(file, error))
        return {};
    return error ? failure(error) : systemError(ENOENT);
}

Result<void> FreedesktopFileSystem::removeFolder(const fs::path& folder)
{
    std::error_code error;
    fs::remove_all(folder, error);
    if (error)
        return failure(error);
    return {};
}

Result<void> FreedesktopFileSystem::moveToTrash(const fs::path& file)
{
    QFile source(QFile::decodeName(QByteArray::fromStdString(file.native())));
    if (!source.moveToTrash())
        return tl::make_unexpected(
            Error{.kind = Error::Kind::failed, .message = source.errorString()});
    return {};
}

void FreedesktopFileSystem::sweepUnfinished(const fs::path& folder)
{
    sweepUnfinishedFiles(folder);
}

std::unique_ptr<FolderClaim> FreedesktopFileSystem::claim(const fs::path& folder)
{
    return std::make_unique<LockFileClaim>(folder);
}

} // namespace Platform
