#pragma once

#include "Capture/CaptureOutcome.h"

#include <QFuture>

#include <stop_token>

namespace Platform {
class DisplayServer;
class OverlayKeyboard;
struct Screen;
} // namespace Platform

/// The two flows that end in a capture. Main thread; the server and the keyboard outlive the
/// futures, and each of these answers exactly once.
namespace Lumenote::ScreenshotCapture {

/// Captures what the user picks.
QFuture<CaptureOutcome> captureInteractive(Platform::DisplayServer& server,
    Platform::OverlayKeyboard& keyboard, std::stop_token stop = {});

/// Captures all of @p screen.
QFuture<CaptureOutcome> captureFullScreen(
    Platform::DisplayServer& server, const Platform::Screen& screen);

} // namespace Lumenote::ScreenshotCapture
