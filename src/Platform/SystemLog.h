#pragma once

#include <QString>

namespace Platform {

/// The system's own log.
class SystemLog {
public:
    virtual ~SystemLog() = default;

    /// Sends one entry. May be called from any thread; never fails and never waits for a reader.
    virtual void write(
        const QString& subsystem, const QString& category, const QString& message) = 0;
};

} // namespace Platform
