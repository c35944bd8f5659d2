#include "Platform/X11/X11DisplayServer.h"

#include "Platform/Freedesktop/ApplicationNames.h"
#include "Platform/Geometry.h"
#include "Platform/X11/DisplayLayout.h"
#include "Platform/X11/RegionCapture.h"
#include "Platform/X11/Session.h"
#include "Platform/X11/WindowCapture.h"
#include "Platform/X11/WindowList.h"

#include <QCursor>
#include <QEvent>
#include <QGuiApplication>
#include <QScreen>
#include <QWindow>
#include <QtGui/qguiapplication_platform.h>

#include <algorithm>
#include <cmath>

namespace Platform {

using namespace X11;

namespace {

constexpr auto settlingTime = std::chrono::milliseconds(200);

/// For how long a compositor may still show a window that was hidden: they fade them out in a third
/// of a second at most as they come, but wait for frames of a busy machine.
constexpr auto afterglow = std::chrono::seconds(2);

QPoint originOf(const QList<QScreen*>& screens)
{
    return screens.isEmpty() ? QPoint() : screens.first()->geometry().topLeft();
}

/// Qt keeps the corner of a display in pixels, and rounds its size in points: where the monitor is
/// known, its pixels tell the size better.
QRect pixelsOf(const QScreen& screen, const QList<Monitor>& monitors)
{
    const auto scale = screen.devicePixelRatio();
    const auto geometry = screen.geometry();
    const QRect pixels(geometry.topLeft(), (QSizeF(geometry.size()) * scale).toSize());
    const auto monitor = std::ranges::find(monitors, screen.name(), &Monitor::name);
    const bool isKnown = monitor != monitors.end()
        && std::abs(monitor->pixels.width() - pixels.width()) <= scale
        && std::abs(monitor->pixels.height() - pixels.height()) <= scale;
    return isKnown ? QRect(pixels.topLeft(), monitor->pixels.size()) : pixels;
}

QRectF flipped(const QRectF& rect, double reference)
{
    return {rect.x(), reference - rect.bottom(), rect.width(), rect.height()};
}

/// Which windows Qt's own connection makes. Those of this program are made there.
ClientIDs qtWindowIDs()
{
    auto* const x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    if (x11 == nullptr || x11->connection() == nullptr)
        return {};
    const auto* const setup = xcb_get_setup(x11->connection());
    return {.base = setup->resource_id_base, .mask = setup->resource_id_mask};
}

Error noSuchDisplay(quint32 number)
{
    return {.message = QStringLiteral("there is no display %1").arg(number)};
}

SharedWindow shared(const ClientWindow& window, const QList<DisplayPlace>& displays,
    const ClientIDs& own, ApplicationNames& names)
{
    const auto& display = placeOf(window.content, displays);
    const auto frame = toPoints(window.content, display);
    return {.id = window.id,
        .frame = frame,
        .title = window.title,
        .application = names.name(window.instanceName, window.className),
        .processID = window.processID,
        .isOwn = own.hasMade(window.id),
        .layer = window.layer,
        .isOnScreen = true,
        .pointPixelScale = display.scale,
        .contentRect = frame};
}

Result<ShareableContent> listContent(Server& server, ListedWindows listed,
    const QList<DisplayPlace>& known, const ClientIDs& own, ApplicationNames& names)
{
    auto& connection = server.connection();
    const auto monitors = readMonitors(connection);
    if (monitors.isEmpty() && !connection.finish())
        return tl::make_unexpected(connection.failure(QStringLiteral("listing displays")));
    const auto displays = presentDisplays(known, monitors);
    ShareableContent content;
    for (const auto& display : displays)
        content.displays.append(display.number);
    if (listed == ListedWindows::none || displays.isEmpty()) // No measure for windows, then.
        return content;
    const auto windows = clientWindows(connection);
    if (!windows)
        return tl::make_unexpected(windows.error());
    for (const auto& window : *windows)
        if (window.layer >= 0 || listed == ListedWindows::all)
            content.windows.append(shared(window, displays, own, names));
    return content;
}

/// The pixels of the root that @p how asks for.
QRect sourceOf(const CaptureConfiguration& how, const DisplayPlace& display)
{
    const QSizeF points = how.sourceRect.size() * display.scale;
    const QSize available(
        static_cast<int>(std::ceil(points.width())), static_cast<int>(std::ceil(points.height())));
    return toPixels(how.sourceRect.topLeft(), how.pixelSize.boundedTo(available), display);
}

/// The image with the colours that it was asked for.
Result<QImage> tagged(Result<QImage> image, const QColorSpace& colorSpace)
{
    if (image && colorSpace.isValid())
        image->setColorSpace(colorSpace);
    return image;
}

} // namespace

X11DisplayServer::X11DisplayServer(std::unique_ptr<Session> session)
    : m_session(std::move(session))
    , m_names(std::make_shared<ApplicationNames>())
    , m_ownFrames(std::make_shared<OwnFrames>())
{
    m_settling.setSingleShot(true);
    m_settling.setInterval(settlingTime);
    connect(&m_settling, &QTimer::timeout, this, &X11DisplayServer::announceChanges);
    const auto settle = [this] { m_settling.start(); };
    connect(qGuiApp, &QGuiApplication::screenAdded, this, &X11DisplayServer::watchScreen);
    connect(qGuiApp, &QGuiApplication::screenAdded, this, settle);
    connect(qGuiApp, &QGuiApplication::screenRemoved, this, settle);
    connect(qGuiApp, &QGuiApplication::primaryScreenChanged, this, settle);
    for (auto* const screen : QGuiApplication::screens())
        watchScreen(screen);
    qGuiApp->installEventFilter(this);

    m_announcedScreens = screens();
    m_announcedCompositor = hasCompositor();
    m_session->setOnChange([this] {
        QMetaObject::invokeMethod(this, &X11DisplayServer::takeFacts, Qt::QueuedConnection);
    });
    takeFacts(); // What has changed before there was somebody to tell.
}

X11DisplayServer::~X11DisplayServer() = default;

void X11DisplayServer::watchScreen(QScreen* screen)
{
    if (!m_numbers.contains(screen->name()))
        m_numbers.insert(screen->name(), static_cast<quint32>(m_numbers.size() + 1));
    const auto settle = [this] { m_settling.start(); };
    connect(screen, &QScreen::geometryChanged, this, settle);
    connect(screen, &QScreen::availableGeometryChanged, this, settle);
    connect(screen, &QScreen::logicalDotsPerInchChanged, this, settle);
}

void X11DisplayServer::takeFacts()
{
    if (std::exchange(m_announcedCompositor, hasCompositor()) != m_announcedCompositor)
        emit compositorChanged();
    m_settling.start();
}

void X11DisplayServer::announceChanges()
{
    const auto now = screens();
    if (std::exchange(m_announcedScreens, now) != now)
        emit screensChanged();
}

QList<Screen> X11DisplayServer::screens() const
{
    const auto displays = places();
    const auto monitors = m_session->facts().monitors;
    const auto qtScreens = QGuiApplication::screens();
    QList<Screen> screens;
    for (qsizetype i = 0; i < displays.size(); ++i) {
        const auto& display = displays.at(i);
        const auto reference = displays.first().points.height();
        const QRectF available =
            qtScreens.at(i)->availableGeometry().translated(-originOf(qtScreens));
        const auto monitor = std::ranges::find(monitors, display.name, &Monitor::name);
        screens.append({.displayNumber = display.number,
            .frame = flipped(display.points, reference),
            .visibleFrame = flipped(
                intersection(available, display.points).value_or(display.points), reference),
            .backingScaleFactor = display.scale,
            .colorSpace = monitor == monitors.end() ? QColorSpace() : monitor->colorSpace});
    }
    return screens;
}

QList<DisplayPlace> X11DisplayServer::places() const
{
    const auto qtScreens = QGuiApplication::screens();
    const auto origin = originOf(qtScreens);
    const auto monitors = m_session->facts().monitors;
    QList<DisplayPlace> places;
    for (const auto* const screen : qtScreens) {
        const auto pixels = pixelsOf(*screen, monitors);
        const auto scale = screen->devicePixelRatio();
        places.append({.number = m_numbers.value(screen->name()),
            .name = screen->name(),
            .points = {screen->geometry().topLeft() - origin, QSizeF(pixels.size()) / scale},
            .pixels = pixels,
            .scale = scale});
    }
    return places;
}

QPointF X11DisplayServer::pointerPosition() const
{
    const auto screens = QGuiApplication::screens();
    const QPointF position = QCursor::pos() - originOf(screens);
    const auto displays = places();
    const auto reference = displays.isEmpty() ? 0 : displays.first().points.height();
    return {position.x(), reference - position.y()};
}

bool X11DisplayServer::hasCompositor() const
{
    return m_session->facts().hasCompositor;
}

bool X11DisplayServer::isRecordingGranted() const
{
    return m_session->isGranted();
}

QFuture<Result<ShareableContent>> X11DisplayServer::shareableContent(ListedWindows windows)
{
    return m_session->run<ShareableContent>(
        [windows, known = places(), own = qtWindowIDs(), names = m_names](
            Server& server) { return listContent(server, windows, known, own, *names); });
}

QFuture<Result<QImage>> X11DisplayServer::captureImage(
    const ContentFilter& filter, const CaptureConfiguration& configuration)
{
    const bool isComposited = hasCompositor();
    if (const auto* const window = std::get_if<WindowFilter>(&filter))
        return m_session->run<QImage>(
            [id = window->windowID, configuration, isComposited](Server& server) {
                return tagged(captureWindow(server, id, configuration.pixelSize, isComposited),
                    configuration.colorSpace);
            });
    return captureDisplay(std::get<DisplayFilter>(filter), configuration);
}

QFuture<Result<QImage>> X11DisplayServer::captureDisplay(
    const DisplayFilter& filter, const CaptureConfiguration& configuration)
{
    const auto displays = presentDisplays(places(), m_session->facts().monitors);
    const auto display = std::ranges::find(displays, filter.displayNumber, &DisplayPlace::number);
    if (display == displays.end())
        return QtFuture::makeReadyFuture<Result<QImage>>(
            tl::make_unexpected(noSuchDisplay(filter.displayNumber)));
    return m_session->run<QImage>(
        [source = sourceOf(configuration, *display), configuration, isComposited = hasCompositor(),
            own = ownWindows()](Server& server) {
            return tagged(captureRegion(server, source, configuration.pixelSize, own, isComposited),
                configuration.colorSpace);
        });
}

OwnWindows X11DisplayServer::ownWindows() const
{
    OwnWindows own{
        .ids = qtWindowIDs(), .frames = m_ownFrames, .newlyShown = {}, .recentlyHidden = {}};
    if (own.ids.base == 0)
        return own;
    for (auto* const window : QGuiApplication::topLevelWindows())
        if (window->isVisible() && window->handle() != nullptr && !m_framed.contains(window))
            own.newlyShown.push_back(static_cast<xcb_window_t>(window->winId()));
    const auto now = std::chrono::steady_clock::now();
    for (const auto& hidden : m_hiddenWindows)
        if (hasCompositor() && hidden.when + afterglow > now)
            own.recentlyHidden.append(hidden.pixels);
    return own;
}

bool X11DisplayServer::eventFilter(QObject* watched, QEvent* event)
{
    const bool isAboutShowing = event->type() == QEvent::Expose || event->type() == QEvent::Hide;
    if (isAboutShowing && watched->isWindowType()) {
        auto* const window = static_cast<QWindow*>(watched);
        if (window->isTopLevel() && event->type() == QEvent::Hide)
            noteHidden(*window);
        else if (window->isTopLevel() && window->isExposed())
            noteShown(*window);
    }
    return DisplayServer::eventFilter(watched, event);
}

void X11DisplayServer::noteShown(QWindow& window)
{
    if (qtWindowIDs().base == 0 || m_framed.contains(&window))
        return;
    m_framed.insert(&window);
    const auto id = static_cast<xcb_window_t>(window.winId());
    m_session->run<bool>([id, frames = m_ownFrames](Server& server) {
        frames->learn(server.connection(), {id});
        return true;
    });
}

void X11DisplayServer::noteHidden(const QWindow& window)
{
    m_framed.remove(&window);
    const auto* const screen = window.screen();
    if (screen == nullptr)
        return;
    const auto now = std::chrono::steady_clock::now();
    m_hiddenWindows.removeIf(
        [now](const HiddenWindow& hidden) { return hidden.when + afterglow <= now; });
    const auto corner = screen->geometry().topLeft();
    const QRectF frame = window.frameGeometry().translated(-corner);
    const auto scale = screen->devicePixelRatio();
    const QRectF pixels(frame.topLeft() * scale + corner, frame.size() * scale);
    m_hiddenWindows.append({.pixels = pixels.toAlignedRect(), .when = now});
}

} // namespace Platform
