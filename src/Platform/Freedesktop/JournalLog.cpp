#include "Platform/Freedesktop/JournalLog.h"

#include <QByteArray>

#include <array>
#include <span>
#include <syslog.h>

// The place in the source would be this file for every entry.
#define SD_JOURNAL_SUPPRESS_LOCATION
#include <systemd/sd-journal.h>

namespace Platform {

static_assert(LOG_NOTICE == 5, "The journal field below is the priority as a digit.");

void JournalLog::write(const QString& subsystem, const QString& category, const QString& message)
{
    // Fields are sent as bytes, not through a format, so that a '%' in a message stays one.
    std::array<QByteArray, 5> fields{
        QByteArray("MESSAGE=") + message.toUtf8(),
        QByteArray("PRIORITY=5"),
        QByteArray("SYSLOG_IDENTIFIER=lumenote"),
        QByteArray("LUMENOTE_SUBSYSTEM=") + subsystem.toUtf8(),
        QByteArray("LUMENOTE_CATEGORY=") + category.toUtf8(),
    };
    std::array<iovec, fields.size()> vectors{};
    for (size_t i = 0; i < fields.size(); ++i)
        vectors[i] = {
            .iov_base = fields[i].data(), .iov_len = static_cast<size_t>(fields[i].size())};
    // A missing journal is no failure of ours, and nobody could be told of it.
    static_cast<void>(sd_journal_sendv(vectors.data(), static_cast<int>(vectors.size())));
}

} // namespace Platform
