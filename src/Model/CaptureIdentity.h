#pragma once

#include <QDateTime>
#include <QUuid>

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace Lumenote {

/// What the name of a capture's file tells of it: `<date>-<UUID>.png`, as in
/// `20260116-173005-123-3F2504E0-4F89-41D3-9A0C-0305E82C3301.png`. The date is in UTC.
struct CaptureIdentity {
    QUuid id;
    QDateTime capturedAt; ///< To the millisecond once it was stored.

    bool operator==(const CaptureIdentity&) const = default;

    /// With any extension or none; nothing where the rest isn't exactly a date that exists and a
    /// UUID. Never looks at the disk.
    static std::optional<CaptureIdentity> fromFileName(const std::filesystem::path& name);

    std::string fileName() const;
};

/// @p text in the form 8-4-4-4-12 of hexadecimal digits, without braces.
std::optional<QUuid> uuidFromText(std::string_view text);

/// The same form, in upper case.
std::string uuidText(const QUuid& uuid);

} // namespace Lumenote
