#include "Platform/Freedesktop/LockFileClaim.h"

#include <cerrno>
#include <chrono>
#include <fcntl.h>
#include <sys/stat.h>
#include <thread>

namespace Platform {

namespace {

/// How long a copy that removes something may be waited for; it takes microseconds.
constexpr int tries = 50;
constexpr std::chrono::milliseconds pause{5};

/// 0, or what went wrong. @p type is F_RDLCK or F_WRLCK; never waits.
int setLock(int file, short type)
{
    struct flock lock { };
    lock.l_type = type;
    lock.l_whence = SEEK_SET; // From here to the end: the whole file.
    while (fcntl(file, F_OFD_SETLK, &lock) != 0)
        if (errno != EINTR)
            return errno;
    return 0;
}

bool isHeldByAnother(int errorNumber)
{
    return errorNumber == EAGAIN || errorNumber == EACCES;
}

/// EBADF: the lock file is not ours to write, so neither is what stands beside it.
bool isUnsupported(int errorNumber)
{
    return errorNumber != 0 && errorNumber != EBADF && !isHeldByAnother(errorNumber);
}

Descriptor openLockFile(const std::filesystem::path& path)
{
    constexpr int flags = O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK;
    Descriptor file(open(path.c_str(), O_RDWR | O_CREAT | flags, 0600));
    return file ? std::move(file) : Descriptor(open(path.c_str(), O_RDONLY | flags));
}

} // namespace

LockFileClaim::LockFileClaim(const std::filesystem::path& folder)
    : m_path(folder / ".lock")
{
}

bool LockFileClaim::isLockOfFolder() const
{
    struct stat own { };
    struct stat found { };
    return fstat(m_file.number(), &own) == 0 && stat(m_path.c_str(), &found) == 0
        && own.st_dev == found.st_dev && own.st_ino == found.st_ino;
}

void LockFileClaim::hold()
{
    const std::scoped_lock guard(m_mutex);
    holdLocked();
}

void LockFileClaim::holdLocked()
{
    if (m_state != State::none && isLockOfFolder())
        return;
    release();
    m_file = openLockFile(m_path);
    for (int i = 0; i < tries && m_file && m_state == State::none; ++i) {
        const auto number = setLock(m_file.number(), F_RDLCK);
        if (number == 0)
            m_state = State::held;
        else if (isUnsupported(number))
            m_state = State::unsupported;
        else
            std::this_thread::sleep_for(pause);
    }
}

void LockFileClaim::release()
{
    m_state = State::none;
    m_file = Descriptor();
}

bool LockFileClaim::runAlone(const std::function<void()>& work)
{
    const std::scoped_lock guard(m_mutex);
    holdLocked();
    if (m_state == State::none)
        return false;
    if (m_state == State::held && setLock(m_file.number(), F_WRLCK) != 0)
        return false;
    work();
    if (m_state == State::held && setLock(m_file.number(), F_RDLCK) != 0)
        release();
    return true;
}

} // namespace Platform
