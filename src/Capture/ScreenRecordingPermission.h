#pragma once

#include <QDateTime>
#include <QVariant>

#include <functional>

namespace Platform {
class Alerts;
class DisplayServer;
class UserDefaults;
} // namespace Platform

/// The gate in front of captures: decides when the system is asked for the right to record the
/// screen, and when the program explains itself instead. Main thread.
namespace Lumenote::ScreenRecordingPermission {

enum class Outcome {
    granted, ///< Go on and capture.
    promptShown, ///< The system was asked for the first time; its prompt speaks for itself.
    denied, ///< No capture; presentDeniedAlert() tells why.
};

enum class PromptHistory {
    never, ///< No record of a prompt.
    recent, ///< Less than ten minutes ago.
    stale, ///< Longer ago.
};

/// What the record of the last prompt says: a date or, in an older form, the Boolean true.
PromptHistory promptHistory(const QVariant& stored, const QDateTime& now);

/// Asks the system, but no more often than every ten minutes, and records when.
Outcome request(Platform::UserDefaults& defaults, Platform::DisplayServer& server,
    const QDateTime& now = QDateTime::currentDateTimeUtc());

using Closed = std::function<void()>;

/// Tells that captures are blocked, and leads to the settings if the user wants. @p onClosed comes
/// once nothing of it is on screen any more.
void presentDeniedAlert(Platform::Alerts& alerts, Closed onClosed);

/// An X server has no settings for this: who may record is decided when a program connects. So this
/// tells what to change, which the desktop's words put in the place of the settings.
void openSettings(Platform::Alerts& alerts, Closed onClosed);

} // namespace Lumenote::ScreenRecordingPermission
