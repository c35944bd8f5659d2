#include "Platform/Freedesktop/JournalLog.h"

#include <QByteArray>
#include <QtEndian>

#include <cstring>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>
#include <utility>

namespace Platform {

namespace {

/// A field in the form of https://systemd.io/JOURNAL_NATIVE_PROTOCOL that takes any bytes.
QByteArray field(const char* name, const QByteArray& value)
{
    const auto size = qToLittleEndian(quint64(value.size()));
    return QByteArray(name) + '\n' + QByteArray(reinterpret_cast<const char*>(&size), sizeof size)
        + value + '\n';
}

} // namespace

// The journal's own library waits where a journal that hangs leaves no room in its socket.
JournalLog::JournalLog(std::filesystem::path socket)
    : m_path(std::move(socket))
    , m_socket(::socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0))
{
}

JournalLog::~JournalLog()
{
    if (m_socket >= 0)
        ::close(m_socket);
}

void JournalLog::write(const QString& subsystem, const QString& category, const QString& message)
{
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (m_socket < 0 || m_path.native().size() >= sizeof address.sun_path)
        return;
    std::memcpy(address.sun_path, m_path.c_str(), m_path.native().size());
    const QByteArray entry = field("MESSAGE", message.toUtf8()) + field("PRIORITY", "5")
        + field("SYSLOG_IDENTIFIER", "lumenote") + field("LUMENOTE_SUBSYSTEM", subsystem.toUtf8())
        + field("LUMENOTE_CATEGORY", category.toUtf8());
    // A missing journal is no failure of ours, and nobody could be told of it.
    static_cast<void>(::sendto(m_socket, entry.constData(), size_t(entry.size()), MSG_NOSIGNAL,
        reinterpret_cast<const sockaddr*>(&address), sizeof address));
}

} // namespace Platform
