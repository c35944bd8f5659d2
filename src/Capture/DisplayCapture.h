#pragma once

#include "Capture/CapturableWindow.h"
#include "Capture/CaptureOutcome.h"
#include "Platform/DisplayServer.h"

#include <QFuture>

#include <optional>

/// Lists the windows that can be picked and turns targets into images. Rectangles and points are
/// global (ScreenGeometry). Main thread only; the server outlives the futures, and each of them
/// answers exactly once. Failures are logged here and end in a CaptureError, never in a retry.
namespace Lumenote::DisplayCapture {

/// Normal windows of other programs, at least 40 points wide and high, frontmost first. Empty where
/// they can't be listed.
QFuture<QList<CapturableWindow>> capturableWindows(Platform::DisplayServer& server);

/// Captures what @p region shows of the display that owns it, without any window of this program.
/// What lies on other displays is left out.
QFuture<CaptureResult> capture(Platform::DisplayServer& server, const QRectF& region);

/// Captures a window by itself, whatever covers it.
QFuture<CaptureResult> capture(Platform::DisplayServer& server, quint32 windowID);

/// The first of @p windows that holds @p point.
std::optional<CapturableWindow> windowAt(QPointF point, const QList<CapturableWindow>& windows);

/// The display that holds the centre of @p rect, else the first that meets it.
std::optional<qsizetype> displayIndex(const QRectF& rect, const QList<QRectF>& displayFrames);

} // namespace Lumenote::DisplayCapture
