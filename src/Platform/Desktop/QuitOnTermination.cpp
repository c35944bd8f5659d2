#include "Platform/Desktop/QuitOnTermination.h"

#include <QCoreApplication>

#include <array>
#include <cerrno>
#include <csignal>
#include <sys/eventfd.h>
#include <unistd.h>

namespace Platform {

namespace {

constexpr std::array requests{SIGTERM, SIGINT, SIGHUP};

/// A handler of signals can do no more than write to a descriptor.
int requested()
{
    static const int descriptor = eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
    return descriptor;
}

void noteRequest(int signal)
{
    const auto number = errno;
    static_cast<void>(eventfd_write(requested(), 1));
    static_cast<void>(std::signal(signal, SIG_DFL));
    errno = number;
}

} // namespace

QuitOnTermination::QuitOnTermination()
    : m_notifier(requested(), QSocketNotifier::Read)
{
    QObject::connect(&m_notifier, &QSocketNotifier::activated, &m_notifier, [] {
        eventfd_t count = 0;
        static_cast<void>(eventfd_read(requested(), &count));
        QCoreApplication::quit();
    });
    for (const auto request : requests)
        static_cast<void>(std::signal(request, noteRequest));
}

QuitOnTermination::~QuitOnTermination()
{
    for (const auto request : requests)
        static_cast<void>(std::signal(request, SIG_DFL));
}

} // namespace Platform
