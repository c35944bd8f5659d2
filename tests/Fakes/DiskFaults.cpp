#include "Fakes/DiskFaults.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <optional>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace {

struct Disk {
    Fakes::DiskFaults::Plan plan;
    bool wasInterrupted = false;
    std::vector<std::string> steps;
};

thread_local std::optional<Disk> disk;

int failed(int error)
{
    errno = error;
    return -1;
}

int step(const char* name)
{
    if (disk)
        disk->steps.emplace_back(name);
    return 0;
}

/// 0, or the error that the plan has for this.
int syncError(int file)
{
    struct stat status { };
    if (!disk || fstat(file, &status) != 0)
        return 0;
    const bool isFolder = S_ISDIR(status.st_mode);
    step(isFolder ? "sync folder" : "sync file");
    return isFolder ? disk->plan.folderSyncError : disk->plan.fileSyncError;
}

} // namespace

// These stand before the C library's own in every program that links this file.
extern "C" {
int openOnDisk(int folder, const char* path, int flags, mode_t mode) __asm__("openat");
ssize_t writeToDisk(int file, const void* bytes, size_t count) __asm__("write");
int syncOnDisk(int file) __asm__("fsync");
int linkOnDisk(int from, const char* path, int to, const char* name, int flags) __asm__("linkat");
int renameOnDisk(int from, const char* path, int to, const char* name) __asm__("renameat");

// On the machines of this program an optional argument is passed like any other.
int openOnDisk(int folder, const char* path, int flags, mode_t mode)
{
    if (disk && !disk->plan.hasUnnamedFiles && (flags & O_TMPFILE) == O_TMPFILE)
        return failed(EOPNOTSUPP);
    return static_cast<int>(syscall(SYS_openat, folder, path, flags, mode));
}

ssize_t writeToDisk(int file, const void* bytes, size_t count)
{
    if (disk && disk->plan.interruptsWrites)
        if (disk->wasInterrupted = !disk->wasInterrupted; disk->wasInterrupted)
            return failed(EINTR);
    auto length = static_cast<ssize_t>(count);
    if (disk) {
        length = std::min({length, disk->plan.mostAtOnce, disk->plan.room});
        if (length == 0 && count > 0)
            return failed(disk->plan.writeError);
        disk->plan.room -= length;
        step("write");
    }
    return syscall(SYS_write, file, bytes, length);
}

int syncOnDisk(int file)
{
    if (const auto error = syncError(file); error != 0)
        return failed(error);
    return static_cast<int>(syscall(SYS_fsync, file));
}

int linkOnDisk(int from, const char* path, int to, const char* name, int flags)
{
    if (disk && !disk->plan.canNameThem)
        return failed(ENOENT);
    step("link");
    return static_cast<int>(syscall(SYS_linkat, from, path, to, name, flags));
}

int renameOnDisk(int from, const char* path, int to, const char* name)
{
    step("rename");
    return static_cast<int>(syscall(SYS_renameat, from, path, to, name));
}
}

namespace Fakes {

DiskFaults::DiskFaults(const Plan& plan)
{
    disk = Disk{.plan = plan, .wasInterrupted = false, .steps = {}};
}

DiskFaults::~DiskFaults()
{
    disk.reset();
}

const std::vector<std::string>& DiskFaults::steps()
{
    return disk->steps;
}

} // namespace Fakes
