#include "Platform/StandardStreams.h"

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

namespace Platform {

namespace {

/// Open for the wrong direction on purpose, standard input aside.
void fillIfClosed(int descriptor, int flags)
{
    if (fcntl(descriptor, F_GETFD) == -1 && errno == EBADF)
        static_cast<void>(open("/dev/null", flags)); // The lowest free one: this descriptor.
}

void waitUntilWritable(int descriptor)
{
    pollfd request{.fd = descriptor, .events = POLLOUT, .revents = 0};
    static_cast<void>(poll(&request, 1, -1));
}

} // namespace

void guardStandardStreams()
{
    fillIfClosed(STDIN_FILENO, O_RDONLY);
    fillIfClosed(STDOUT_FILENO, O_RDONLY);
    fillIfClosed(STDERR_FILENO, O_WRONLY);
    static_cast<void>(std::signal(SIGPIPE, SIG_IGN));
}

void silenceLibraries()
{
    // A variable in glibc, unlike in the standard.
    if (auto* const nowhere = std::fopen("/dev/null", "we"))
        stderr = nowhere;
}

bool writeAll(int descriptor, const QByteArray& bytes)
{
    qsizetype written = 0;
    while (written < bytes.size()) {
        const auto count = write(
            descriptor, bytes.constData() + written, static_cast<size_t>(bytes.size() - written));
        if (count >= 0)
            written += count;
        else if (errno == EAGAIN) // The other side made the pipe non-blocking.
            waitUntilWritable(descriptor);
        else if (errno != EINTR)
            return false;
    }
    return true;
}

} // namespace Platform
