#pragma once

#include "Platform/Error.h"

#include <QColorSpace>
#include <QFuture>
#include <QImage>
#include <QList>
#include <QObject>
#include <QRectF>

#include <variant>

namespace Platform {

/// A display, in points. One point is one of Qt's device-independent pixels, and the origin is the
/// lower left corner of the first display, with y up.
struct Screen {
    quint32 displayNumber = 0; ///< The same when plugged in anew. Zero where the system has none.
    QRectF frame;
    QRectF visibleFrame; ///< The frame without panels.
    double backingScaleFactor = 1; ///< Pixels in a point.
    QColorSpace colorSpace; ///< Invalid where the system knows no profile of the display.

    bool operator==(const Screen&) const = default;
};

/// A window of any program. Rectangles are in points, with the origin at the upper left corner of
/// the first display and y down.
struct SharedWindow {
    quint32 id = 0;
    QRectF frame; ///< What one sees as the window, without the shadow that it may draw itself.
    QString title; ///< Empty where it has none.
    QString application; ///< For the user's eyes. Empty where it isn't known.
    qint64 processID = 0; ///< Zero where it isn't known.
    bool isOwn = false; ///< Whether it belongs to this program.
    int layer =
        0; ///< Zero for normal windows, above for docks and what floats, below for desktops.
    bool isOnScreen = false;
    double pointPixelScale = 1; ///< Pixels in a point.
    QRectF contentRect; ///< What a capture of the window shows.

    bool operator==(const SharedWindow&) const = default;
};

/// What can be captured right now.
struct ShareableContent {
    QList<quint32> displays;
    QList<SharedWindow> windows; ///< Frontmost first.

    bool operator==(const ShareableContent&) const = default;
};

/// Without windows a list comes sooner: each of them takes a dozen questions.
enum class ListedWindows { none, withoutDesktops, all };

/// A display without the windows of this program.
struct DisplayFilter {
    quint32 displayNumber = 0;

    bool operator==(const DisplayFilter&) const = default;
};

/// A window by itself, whatever covers it.
struct WindowFilter {
    quint32 windowID = 0;

    bool operator==(const WindowFilter&) const = default;
};

using ContentFilter = std::variant<DisplayFilter, WindowFilter>;

struct CaptureConfiguration {
    QRectF sourceRect; ///< Points of the display, origin at its upper left, y down. Displays only.
    QSize pixelSize; ///< Of the image. Pixels are never scaled; what the source lacks is black.
    QColorSpace colorSpace; ///< What the image is tagged with, if valid.

    bool operator==(const CaptureConfiguration&) const = default;
};

/// The screens, the windows on them, and still images of both. Main thread only; nothing here waits
/// for another program.
class DisplayServer : public QObject {
    Q_OBJECT

public:
    /// In the system's order. The top of the first is the reference of all flips between y up and y
    /// down. Empty while no display is plugged in.
    virtual QList<Screen> screens() const = 0;

    /// In the space of Screen::frame.
    virtual QPointF pointerPosition() const = 0;

    /// Whether translucent windows show what is below them.
    virtual bool hasCompositor() const = 0;

    /// Whether this program may see the windows of others.
    virtual bool isRecordingGranted() const = 0;

    /// Asks for that where the system has a way to ask. Answers what is so now, not what a prompt
    /// that is now up will bring.
    virtual bool requestRecording() = 0;

    /// What is on screen. Fails with permissionDenied where recording isn't granted.
    virtual QFuture<Result<ShareableContent>> shareableContent(ListedWindows windows) = 0;

    /// One still image, without the pointer: of a display opaque (RGB32), of a window with its
    /// transparency where it has any (ARGB32_Premultiplied). Fails with windowGone, with
    /// permissionDenied, and with failed for all else, a display that is gone included. The future
    /// answers exactly once, in bounded time.
    virtual QFuture<Result<QImage>> captureImage(
        const ContentFilter& filter, const CaptureConfiguration& configuration) = 0;

signals:
    /// The answer of screens() is another one. Comes once for a change that passes through several
    /// states in quick succession.
    void screensChanged();

    void compositorChanged();
};

} // namespace Platform
