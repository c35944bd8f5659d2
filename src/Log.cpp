#include "Log.h"

#include "Platform/SystemLog.h"

#include <QByteArray>

#include <atomic>
#include <cerrno>
#include <mutex>
#include <unistd.h>
#include <utility>

namespace Lumenote::Log {

namespace {

struct Channel {
    std::atomic<bool> mirrorsToStandardError{isatty(STDERR_FILENO) != 0};
    std::mutex lock; ///< Guards the two below.
    std::shared_ptr<Platform::SystemLog> systemLog;
    QString subsystem;
};

/// Never destroyed: a thread left behind may still write while the program ends.
Channel& channel()
{
    static auto* const instance = new Channel;
    return *instance;
}

/// One call of write(2), so that lines of several threads don't mix. What doesn't get out is
/// dropped: nobody waits for a diagnostic.
void mirror(const QByteArray& line)
{
    while (::write(STDERR_FILENO, line.constData(), static_cast<size_t>(line.size())) < 0
        && errno == EINTR) { }
}

} // namespace

void setSystemLog(std::shared_ptr<Platform::SystemLog> log, const QString& subsystem)
{
    const std::scoped_lock hold(channel().lock);
    channel().systemLog = std::move(log);
    channel().subsystem = subsystem;
}

void setMirrorsToStandardError(bool mirrors)
{
    channel().mirrorsToStandardError = mirrors;
}

void write(const Logger& logger, const QString& message)
{
    std::shared_ptr<Platform::SystemLog> systemLog;
    QString subsystem;
    {
        const std::scoped_lock hold(channel().lock);
        systemLog = channel().systemLog;
        subsystem = channel().subsystem;
    }
    const auto prefix = QString::fromUtf8(logger.prefix);
    if (systemLog)
        systemLog->write(
            subsystem, QString::fromUtf8(logger.category), prefix + QStringLiteral(": ") + message);
    if (channel().mirrorsToStandardError)
        mirror("lumenote: " + prefix.toUtf8() + ' ' + message.toUtf8() + '\n');
}

} // namespace Lumenote::Log
