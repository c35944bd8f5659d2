#include "Capture/ScreenRecordingPermission.h"

#include "Platform/Alerts.h"
#include "Platform/DisplayServer.h"
#include "Platform/UserDefaults.h"

#include <chrono>
#include <utility>

namespace Lumenote::ScreenRecordingPermission {

namespace {

constexpr std::chrono::milliseconds promptInterval = std::chrono::minutes(10);

const QString& promptedKey()
{
    static const QString key = QStringLiteral("ScreenRecordingPrompted");
    return key;
}

} // namespace

PromptHistory promptHistory(const QVariant& stored, const QDateTime& now)
{
    if (stored.typeId() == QMetaType::QDateTime && stored.toDateTime().isValid())
        return stored.toDateTime().msecsTo(now) < promptInterval.count() ? PromptHistory::recent
                                                                         : PromptHistory::stale;
    if (stored.typeId() == QMetaType::Bool && stored.toBool())
        return PromptHistory::stale;
    return PromptHistory::never;
}

Outcome request(
    Platform::UserDefaults& defaults, Platform::DisplayServer& server, const QDateTime& now)
{
    if (server.isRecordingGranted())
        return Outcome::granted;
    const auto history = promptHistory(defaults.value(promptedKey()), now);
    // The record stays as it is, so that presses in between don't put the next prompt off.
    if (history == PromptHistory::recent)
        return Outcome::denied;
    defaults.setValue(promptedKey(), now);
    if (server.requestRecording())
        return Outcome::granted;
    return history == PromptHistory::never ? Outcome::promptShown : Outcome::denied;
}

void presentDeniedAlert(Platform::Alerts& alerts, Closed onClosed)
{
    const Platform::Alert alert{
        .title = QStringLiteral("Lumenote needs Screen Recording permission"),
        .text = QStringLiteral(
            "Captures are blocked until Lumenote is allowed to record the screen. Turn Lumenote on "
            "under Privacy & Security → Screen & System Audio Recording, then try again. You may "
            "need to quit and reopen Lumenote for the change to take effect."),
        .buttons = {QStringLiteral("Open Settings"), QStringLiteral("Cancel")}};
    alerts.present(alert, [&alerts, onClosed = std::move(onClosed)](int button) {
        if (button == 0)
            openSettings(alerts, onClosed);
        else
            onClosed();
    });
}

void openSettings(Platform::Alerts& alerts, Closed onClosed)
{
    const Platform::Alert alert{
        .title = QStringLiteral("Lumenote needs Screen Recording permission"),
        .text = QStringLiteral(
            "Turn Lumenote on under Privacy & Security → Screen & System Audio Recording, then "
            "quit and reopen Lumenote."),
        .buttons = {QStringLiteral("OK")}};
    alerts.present(alert, [onClosed = std::move(onClosed)](int) { onClosed(); });
}

} // namespace Lumenote::ScreenRecordingPermission
