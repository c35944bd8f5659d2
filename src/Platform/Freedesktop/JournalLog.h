#pragma once

#include "Platform/SystemLog.h"

namespace Platform {

/// The journal of the system, read with `journalctl -t lumenote`. Silent where there is none.
class JournalLog final : public SystemLog {
public:
    void write(const QString& subsystem, const QString& category, const QString& message) override;
};

} // namespace Platform
