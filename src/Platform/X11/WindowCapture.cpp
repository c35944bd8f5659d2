#include "Platform/X11/WindowCapture.h"

#include "Platform/X11/WindowList.h"
#include "Platform/X11/WindowPainter.h"
#include "Platform/X11/WindowTree.h"

namespace Platform::X11 {

namespace {

struct ShownWindow {
    TopLevel frame;
    QRect content;
};

/// Only a child of the root has a pixmap: for a window inside a frame, that of the frame.
Result<ShownWindow> find(Connection& connection, xcb_window_t window)
{
    const auto gone = [&connection] {
        if (!connection.finish())
            return tl::make_unexpected(connection.failure(QStringLiteral("finding a window")));
        return tl::make_unexpected(Error{.kind = Error::Kind::windowGone,
            .message = QStringLiteral("the window isn't shown any more")});
    };
    const auto frames = framesOf(connection, {window});
    if (frames.empty())
        return gone();
    const auto topLevel = topLevels(connection, {frames.begin()->second});
    const auto content = contentOf(connection, window);
    if (topLevel.empty() || !topLevel.front().hasPixels || content.isEmpty())
        return gone();
    return ShownWindow{.frame = topLevel.front(), .content = content};
}

} // namespace

Result<QImage> captureWindow(
    Server& server, xcb_window_t window, QSize imageSize, bool hasCompositor)
{
    auto canvas = server.canvas();
    bool isTranslucent = false;
    {
        const ServerGrab grab(server.connection());
        const auto shown = find(server.connection(), window);
        if (!shown)
            return tl::make_unexpected(shown.error());
        const WindowPainter painter(server, canvas, shown->content.topLeft(), hasCompositor);
        isTranslucent = painter.isTranslucent(shown->frame);
        canvas.create(
            imageSize, isTranslucent ? Canvas::Filling::transparent : Canvas::Filling::black);
        const QRect area(shown->content.topLeft(), imageSize);
        painter.paintWindow(
            shown->frame, area & shown->content & shown->frame.rect, XCB_RENDER_PICT_OP_SRC);
    }
    canvas.requestImage();
    return canvas.image(isTranslucent ? QImage::Format_ARGB32_Premultiplied : QImage::Format_RGB32);
}

} // namespace Platform::X11
