#include "Fakes/FakeDisplayServer.h"

#include <QPainter>
#include <QPromise>

#include <algorithm>
#include <memory>
#include <utility>

namespace Fakes {

using namespace Platform;

namespace {

tl::unexpected<Error> error(Error::Kind kind, const QString& message)
{
    return tl::make_unexpected(Error{.kind = kind, .message = message});
}

QImage blankImage(const CaptureConfiguration& how, QImage::Format format, const QColor& color)
{
    QImage image(how.pixelSize, format);
    image.fill(color);
    image.setColorSpace(how.colorSpace);
    return image;
}

} // namespace

FakeDisplayServer::FakeDisplayServer(QSizeF displaySize)
    : m_screens{{.displayNumber = 1,
        .frame = {{}, displaySize},
        .visibleFrame = {{}, displaySize},
        .backingScaleFactor = 1,
        .colorSpace = {}}}
{
}

bool FakeDisplayServer::requestRecording()
{
    ++recordingRequests;
    return isGranted;
}

template <typename T>
QFuture<Result<T>> FakeDisplayServer::answer(std::function<Result<T>()> make)
{
    const auto promise = std::make_shared<QPromise<Result<T>>>();
    promise->start();
    m_heldAnswers.append([promise, make = std::move(make)] {
        promise->addResult(make());
        promise->finish();
    });
    if (!m_holdsAnswers)
        answerAll();
    return promise->future();
}

void FakeDisplayServer::answerAll()
{
    m_holdsAnswers = false;
    for (const auto& answer : std::exchange(m_heldAnswers, {}))
        answer();
}

QFuture<Result<ShareableContent>> FakeDisplayServer::shareableContent(ListedWindows windows)
{
    contentRequests.append(windows);
    return answer<ShareableContent>([this, windows] { return content(windows); });
}

QFuture<Result<QImage>> FakeDisplayServer::captureImage(
    const ContentFilter& filter, const CaptureConfiguration& configuration)
{
    captures.append({.filter = filter, .configuration = configuration});
    return answer<QImage>([this, capture = captures.last()] { return picture(capture); });
}

void FakeDisplayServer::setScreens(const QList<Screen>& screens)
{
    if (screens == m_screens)
        return;
    m_screens = screens;
    emit screensChanged();
}

void FakeDisplayServer::setHasCompositor(bool hasCompositor)
{
    if (hasCompositor == m_hasCompositor)
        return;
    m_hasCompositor = hasCompositor;
    emit compositorChanged();
}

void FakeDisplayServer::addWindow(const SharedWindow& window, const QColor& color)
{
    m_windows.append({.window = window, .color = color});
}

void FakeDisplayServer::closeWindow(quint32 id)
{
    m_windows.removeIf([id](const PaintedWindow& painted) { return painted.window.id == id; });
}

Result<ShareableContent> FakeDisplayServer::content(ListedWindows listed) const
{
    if (contentError)
        return tl::make_unexpected(*contentError);
    if (!isGranted)
        return error(Error::Kind::permissionDenied, u"not granted"_qs);
    ShareableContent content;
    for (const auto& screen : m_screens)
        content.displays.append(screen.displayNumber);
    if (listed == ListedWindows::none)
        return content;
    for (const auto& painted : m_windows)
        if (painted.window.layer >= 0 || listed == ListedWindows::all)
            content.windows.append(painted.window);
    return content;
}

Result<QImage> FakeDisplayServer::picture(const Capture& capture) const
{
    if (captureError)
        return tl::make_unexpected(*captureError);
    if (!isGranted)
        return error(Error::Kind::permissionDenied, u"not granted"_qs);
    if (const auto* const window = std::get_if<WindowFilter>(&capture.filter))
        return windowPicture(*window, capture.configuration);
    return displayPicture(std::get<DisplayFilter>(capture.filter), capture.configuration);
}

Result<QImage> FakeDisplayServer::displayPicture(
    const DisplayFilter& filter, const CaptureConfiguration& how) const
{
    const auto screen = std::ranges::find(m_screens, filter.displayNumber, &Screen::displayNumber);
    if (screen == m_screens.end())
        return error(Error::Kind::failed, u"no such display"_qs);

    const double reference = m_screens.first().frame.bottom(); // The greatest y: these are y up.
    const QPointF displayOrigin(screen->frame.x(), reference - screen->frame.bottom());
    auto image = blankImage(how, QImage::Format_RGB32, desktopColor);
    QPainter painter(&image);
    painter.scale(screen->backingScaleFactor, screen->backingScaleFactor);
    painter.translate(-displayOrigin - how.sourceRect.topLeft());
    const QList<PaintedWindow> backToFront(m_windows.crbegin(), m_windows.crend());
    for (const auto& [window, color] : backToFront)
        if (window.isOnScreen && !window.isOwn)
            painter.fillRect(window.frame, color);
    return image;
}

Result<QImage> FakeDisplayServer::windowPicture(
    const WindowFilter& filter, const CaptureConfiguration& how) const
{
    const auto painted = std::ranges::find_if(
        m_windows, [&](const auto& each) { return each.window.id == filter.windowID; });
    if (painted == m_windows.end() || !painted->window.isOnScreen)
        return error(Error::Kind::windowGone, u"no such window"_qs);
    return blankImage(how, QImage::Format_ARGB32_Premultiplied, painted->color);
}

} // namespace Fakes
