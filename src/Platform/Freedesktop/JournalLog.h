#pragma once

#include "Platform/SystemLog.h"

#include <filesystem>

namespace Platform {

/// The journal of the system, read with `journalctl -t lumenote`. Silent where there is none. An
/// entry for which the journal has no room at once is dropped: nobody waits for a diagnostic.
class JournalLog final : public SystemLog {
public:
    /// @p socket is where the journal takes entries.
    explicit JournalLog(std::filesystem::path socket = "/run/systemd/journal/socket");
    JournalLog(const JournalLog&) = delete;
    JournalLog& operator=(const JournalLog&) = delete;
    ~JournalLog() override;

    void write(const QString& subsystem, const QString& category, const QString& message) override;

private:
    std::filesystem::path m_path;
    int m_socket;
};

} // namespace Platform
