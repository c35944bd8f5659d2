#include "Platform/Confinement.h"

#include <cerrno>
#include <csignal>
#include <fstream>
#include <poll.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

namespace Platform {

namespace {

tl::unexpected<Error> failed(const char* message)
{
    return tl::make_unexpected(
        Error{.kind = Error::Kind::failed, .message = QString::fromUtf8(message)});
}

/// All addresses that this process has mapped, which is what RLIMIT_AS counts.
qint64 mappedBytes()
{
    std::ifstream file("/proc/self/statm");
    qint64 pages = 0;
    file >> pages;
    return pages * sysconf(_SC_PAGESIZE);
}

void bound(int resource, rlim_t value)
{
    const rlimit limit{.rlim_cur = value, .rlim_max = value};
    setrlimit(static_cast<__rlimit_resource>(resource), &limit);
}

[[noreturn]] void runAndEnd(const std::function<bool()>& work, const Confinement& limits)
{
    bound(RLIMIT_CORE, 0);
    bound(RLIMIT_AS, static_cast<rlim_t>(mappedBytes() + limits.bytes));
    for (const int number : {SIGSEGV, SIGBUS, SIGABRT, SIGFPE, SIGILL})
        std::signal(number, SIG_DFL); // A crash here is no crash of the program.
    bool isGood = false;
    try {
        isGood = work();
    } catch (...) { // Told by the exit code.
    }
    _exit(isGood ? 0 : 1);
}

bool waitForEnd(pid_t process, std::chrono::milliseconds limit)
{
    // The C library of Debian 12 declares pidfd_open for C alone.
    const auto descriptor = static_cast<int>(syscall(SYS_pidfd_open, process, 0));
    if (descriptor < 0)
        return false;
    pollfd request{.fd = descriptor, .events = POLLIN, .revents = 0};
    int count = -1;
    do
        count = poll(&request, 1, static_cast<int>(limit.count()));
    while (count < 0 && errno == EINTR);
    close(descriptor);
    return count > 0;
}

} // namespace

Result<void> runConfined(const std::function<bool()>& work, const Confinement& limits)
{
    const auto process = fork();
    if (process < 0)
        return failed("no process to run in");
    if (process == 0)
        runAndEnd(work, limits);
    const bool hasEnded = waitForEnd(process, limits.time);
    if (!hasEnded)
        kill(process, SIGKILL);
    int status = 0;
    while (waitpid(process, &status, 0) < 0 && errno == EINTR) { }
    if (!hasEnded)
        return failed("it took too long");
    if (!WIFEXITED(status))
        return failed("it crashed");
    if (WEXITSTATUS(status) != 0)
        return failed("it failed");
    return {};
}

} // namespace Platform
