#include "Capture/DisplayCapture.h"

#include "Capture/ScreenGeometry.h"
#include "Log.h"
#include "Platform/Geometry.h"
#include "Platform/Tasks.h"

#include <algorithm>
#include <cmath>
#include <memory>

namespace Lumenote::DisplayCapture {

using namespace Platform;

namespace {

constexpr double smallestPickableSide = 40; // Points.

void log(const QString& message)
{
    Log::write(Log::capture, message);
}

QString described(const Error& error)
{
    return error.kind == Error::Kind::permissionDenied
        ? QStringLiteral("Screen Recording permission denied")
        : QStringLiteral("capture failed: ") + error.message;
}

CaptureError classified(const Error& error)
{
    return error.kind == Error::Kind::permissionDenied ? CaptureError::permissionDenied
                                                       : CaptureError::failed;
}

CaptureError logged(const QString& message, CaptureError error)
{
    log(message);
    return error;
}

CaptureError logged(const Error& error)
{
    return logged(described(error), classified(error));
}

CaptureError loggedAsGone(quint32 windowID)
{
    return logged(QStringLiteral("window %1 is gone").arg(windowID), CaptureError::windowGone);
}

/// The answer to one capture, given by whichever step is the last.
class Answer {
public:
    Answer() { m_promise->start(); }

    QFuture<CaptureResult> future() const { return m_promise->future(); }
    void give(const CaptureResult& result) const
    {
        m_promise->addResult(result);
        m_promise->finish();
    }
    void fail(CaptureError error) const { give(tl::make_unexpected(error)); }

private:
    std::shared_ptr<QPromise<CaptureResult>> m_promise =
        std::make_shared<QPromise<CaptureResult>>();
};

QSize wholePixels(QSizeF points, double scale)
{
    const auto whole = [scale](double side) { return static_cast<int>(std::lround(scale * side)); };
    return {whole(points.width()), whole(points.height())};
}

/// The part of one display that a region shows.
struct Source {
    quint32 displayNumber = 0;
    QSizeF pointSize;
    CaptureConfiguration configuration;
};

tl::expected<Source, CaptureError> sourceOf(const QRectF& region, const QList<Screen>& screens)
{
    const auto noDisplay = [](const QString& message) {
        return tl::make_unexpected(logged(message, CaptureError::noDisplay));
    };
    const auto frames = ScreenGeometry::globalFrames(screens);
    const auto index = displayIndex(region, frames);
    if (!index)
        return noDisplay(QStringLiteral("no display contains the selection"));
    const auto clipped = intersection(region, frames.at(*index));
    if (!clipped || clipped->width() < 1 || clipped->height() < 1)
        return noDisplay(QStringLiteral("selection does not overlap its display"));
    if (*clipped != region) // As QRectF compares: an edge may have moved by a rounding error.
        log(QStringLiteral("selection clipped to %1×%2 at the display edge")
                .arg(static_cast<int>(clipped->width()))
                .arg(static_cast<int>(clipped->height())));
    const auto& screen = screens.at(*index);
    if (screen.displayNumber == 0)
        return noDisplay(QStringLiteral("no display ID for the target screen"));
    return Source{.displayNumber = screen.displayNumber,
        .pointSize = clipped->size(),
        .configuration = {
            .sourceRect = ScreenGeometry::displayLocal(*clipped, frames.at(*index)),
            .pixelSize = wholePixels(clipped->size(), screen.backingScaleFactor),
            .colorSpace = screen.colorSpace,
        }};
}

CaptureConfiguration configurationOf(const SharedWindow& window, const QList<Screen>& screens)
{
    const auto index = displayIndex(window.frame, ScreenGeometry::globalFrames(screens));
    return {.sourceRect = {},
        .pixelSize = wholePixels(window.contentRect.size(), window.pointPixelScale),
        .colorSpace = index ? screens.at(*index).colorSpace : QColorSpace()};
}

bool isPickable(const SharedWindow& window)
{
    return window.isOnScreen && window.layer == 0 && !window.isOwn
        && window.frame.width() >= smallestPickableSide
        && window.frame.height() >= smallestPickableSide;
}

} // namespace

QFuture<QList<CapturableWindow>> capturableWindows(DisplayServer& server)
{
    const auto promise = std::make_shared<QPromise<QList<CapturableWindow>>>();
    promise->start();
    const auto onContent = [promise](const Result<ShareableContent>& content) {
        QList<CapturableWindow> pickable;
        if (!content)
            log(described(content.error()));
        else
            for (const auto& window : content->windows)
                if (isPickable(window))
                    pickable.append({.id = window.id,
                        .frame = window.frame,
                        .title = window.title,
                        .application = window.application});
        promise->addResult(pickable);
        promise->finish();
    };
    whenFinished(server.shareableContent(ListedWindows::withoutDesktops), &server, onContent);
    return promise->future();
}

QFuture<CaptureResult> capture(DisplayServer& server, const QRectF& region)
{
    const Answer answer;
    const auto source = sourceOf(region, server.screens());
    if (!source) {
        answer.fail(source.error());
        return answer.future();
    }
    const auto onImage = [answer, size = source->pointSize](const Result<QImage>& image) {
        if (!image)
            return answer.fail(logged(image.error()));
        answer.give(CapturedImage{.image = *image, .pointSize = size});
    };
    const auto onContent = [answer, onImage, &server, source = *source](
                               const Result<ShareableContent>& content) {
        if (!content)
            return answer.fail(logged(content.error()));
        if (!content->displays.contains(source.displayNumber))
            return answer.fail(
                logged(QStringLiteral("display %1 is not shareable").arg(source.displayNumber),
                    CaptureError::noDisplay));
        const DisplayFilter filter{.displayNumber = source.displayNumber};
        whenFinished(server.captureImage(filter, source.configuration), &server, onImage);
    };
    whenFinished(server.shareableContent(ListedWindows::none), &server, onContent);
    return answer.future();
}

QFuture<CaptureResult> capture(DisplayServer& server, quint32 windowID)
{
    const Answer answer;
    const auto onContent = [answer, &server, windowID](const Result<ShareableContent>& content) {
        if (!content)
            return answer.fail(logged(content.error()));
        const auto window = std::ranges::find(content->windows, windowID, &SharedWindow::id);
        if (window == content->windows.end())
            return answer.fail(loggedAsGone(windowID));
        const auto onImage = [answer, windowID, size = window->contentRect.size()](
                                 const Result<QImage>& image) {
            if (image)
                return answer.give(CapturedImage{.image = *image, .pointSize = size});
            if (image.error().kind == Error::Kind::windowGone)
                return answer.fail(loggedAsGone(windowID));
            answer.fail(logged(image.error()));
        };
        const auto how = configurationOf(*window, server.screens());
        whenFinished(
            server.captureImage(WindowFilter{.windowID = windowID}, how), &server, onImage);
    };
    whenFinished(server.shareableContent(ListedWindows::withoutDesktops), &server, onContent);
    return answer.future();
}

std::optional<CapturableWindow> windowAt(QPointF point, const QList<CapturableWindow>& windows)
{
    for (const auto& window : windows)
        if (contains(window.frame, point))
            return window;
    return std::nullopt;
}

std::optional<qsizetype> displayIndex(const QRectF& rect, const QList<QRectF>& displayFrames)
{
    const auto firstWhere = [&displayFrames](auto condition) -> std::optional<qsizetype> {
        const auto frame = std::ranges::find_if(displayFrames, condition);
        if (frame == displayFrames.end())
            return std::nullopt;
        return frame - displayFrames.begin();
    };
    const auto owner =
        firstWhere([&rect](const QRectF& frame) { return contains(frame, centre(rect)); });
    return owner ? owner : firstWhere([&rect](const QRectF& frame) {
        return intersection(frame, rect).has_value();
    });
}

} // namespace Lumenote::DisplayCapture
