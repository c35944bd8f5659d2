#pragma once

#include <QString>

namespace Platform {

/// The system's own log.
class SystemLog {
public:
    virtual ~SystemLog() = default;

    /// Sends one entry. Any thread; never fails, and is quick unless the system's log itself hangs.
    virtual void write(
        const QString& subsystem, const QString& category, const QString& message) = 0;
};

} // namespace Platform
