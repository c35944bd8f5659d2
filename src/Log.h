#pragma once

#include <QString>

#include <memory>

namespace Platform {
class SystemLog;
}

/// The single diagnostic channel: the system's log, with a mirror to standard error for runs in a
/// terminal. It has no levels, no files and no rotation. Never give it a picture or recognised
/// text.
namespace Lumenote::Log {

/// A source of log lines.
struct Logger {
    const char* category; ///< In the system's log.
    const char* prefix; ///< The source's short name in the line.
};

inline constexpr Logger ocr{"ocr", "OCR"};
inline constexpr Logger capture{"capture", "capture"};
inline constexpr Logger picker{"picker", "picker"};
inline constexpr Logger hotkey{"hotkey", "hotkey"};
inline constexpr Logger history{"history", "history"};

/// Sends later entries to @p log under @p subsystem. Until then, and after a null log, entries
/// reach the mirror alone. Any thread.
void setSystemLog(std::shared_ptr<Platform::SystemLog> log, const QString& subsystem);

/// Whether each line also goes to standard error; at first, whether that is a terminal. Any thread.
void setMirrorsToStandardError(bool mirrors);

/// Sends "prefix: message" to the system's log, and mirrors "lumenote: prefix message" as one
/// line. Never fails. Any thread.
void write(const Logger& logger, const QString& message);

} // namespace Lumenote::Log
