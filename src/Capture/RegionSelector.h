#pragma once

#include "Capture/CaptureTarget.h"

#include <QFuture>

#include <optional>
#include <stop_token>

namespace Platform {
class DisplayServer;
class OverlayKeyboard;
} // namespace Platform

namespace Lumenote::RegionSelector {

/// Lets the user pick a region or a window, across all displays at once. Answers exactly once: no
/// target where the user cancelled, the displays changed meanwhile, @p stop was asked for, or there
/// is no display. Main thread; a stop may be asked for from any. Both others outlive the future.
QFuture<std::optional<CaptureTarget>> selectTarget(Platform::DisplayServer& server,
    Platform::OverlayKeyboard& keyboard, std::stop_token stop = {});

} // namespace Lumenote::RegionSelector
