#include "Capture/SelectionWindow.h"

#include "Capture/OverlayDrawing.h"
#include "Capture/ScreenGeometry.h"
#include "Capture/SelectionSession.h"
#include "Platform/Geometry.h"

#include <QGuiApplication>
#include <QMouseEvent>
#include <QPainter>
#include <QScreen>

namespace Lumenote {

namespace {

/// The pointer never gets beyond the last pixel of a display, but the edges of what a drag picks
/// lie between pixels: there it means the far edge.
QPointF toFarEdges(QPointF point, const QScreen& screen)
{
    const QRectF frame = screen.geometry();
    const double reach = 1.5 / screen.devicePixelRatio();
    return {point.x() > frame.right() - reach ? frame.right() : point.x(),
        point.y() > frame.bottom() - reach ? frame.bottom() : point.y()};
}

} // namespace

SelectionWindow::SelectionWindow(const QRectF& globalFrame, double scale, SelectionSession& session)
    : m_globalFrame(globalFrame)
    , m_scale(scale)
    , m_session(&session)
{
    setObjectName(QStringLiteral("SelectionWindow"));
    setAccessibleName(tr("Screen selection"));
    setWindowFlags(Qt::Window | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint
        | Qt::X11BypassWindowManagerHint | Qt::NoDropShadowWindowHint);
    setAttribute(Qt::WA_TranslucentBackground);
    setAttribute(Qt::WA_ShowWithoutActivating);
    setMouseTracking(true);
    setCursor(Qt::CrossCursor);

    const auto geometry = globalFrame.translated(ScreenGeometry::globalOriginInQt()).toRect();
    if (auto* const screen = QGuiApplication::screenAt(geometry.center()))
        setScreen(screen);
    setGeometry(geometry);

    connect(&session, &SelectionSession::stateChanged, this, &SelectionWindow::showState);
    showState();
}

void SelectionWindow::setBackdrop(const QImage& backdrop)
{
    m_backdrop = backdrop;
    m_backdrop.setDevicePixelRatio(m_scale);
    update();
}

void SelectionWindow::leaveSession()
{
    if (m_session)
        m_session->disconnect(this);
    m_session.clear();
}

void SelectionWindow::showState()
{
    const auto accent = palette().color(QPalette::Active, QPalette::Highlight);
    const auto scene = overlayScene(m_session->state(), m_globalFrame, m_scale, accent);
    update(changedArea(m_scene, scene));
    m_scene = scene;
}

void SelectionWindow::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    drawOverlay(painter, rect(), m_scene, m_backdrop);
}

QPointF SelectionWindow::globalPoint(const QMouseEvent& event) const
{
    // The position on the screen is rounded to whole points, between which there are pixels. That
    // in the window isn't, but it means nothing beyond, where the scale may be another.
    const auto inWindow = event.scenePosition();
    auto point = Platform::contains(QRectF(rect()), inWindow) ? inWindow + geometry().topLeft()
                                                              : event.globalPosition();
    const auto* const screen = QGuiApplication::screenAt(point.toPoint());
    if (screen != nullptr && m_session->mode() == SelectionMode::region)
        point = toFarEdges(point, *screen);
    return point - ScreenGeometry::globalOriginInQt();
}

void SelectionWindow::mousePressEvent(QMouseEvent* event)
{
    if (!m_session || event->button() != Qt::LeftButton)
        return;
    if (m_session->mode() == SelectionMode::window)
        m_session->updateHover(globalPoint(*event));
    else
        m_session->beginDrag(globalPoint(*event));
}

void SelectionWindow::mouseMoveEvent(QMouseEvent* event)
{
    if (!m_session)
        return;
    if (event->buttons().testFlag(Qt::LeftButton))
        m_session->handleMouseDragged(globalPoint(*event));
    else
        m_session->updateHover(globalPoint(*event));
}

void SelectionWindow::mouseReleaseEvent(QMouseEvent* event)
{
    if (m_session && event->button() == Qt::LeftButton)
        m_session->handleMouseUp(globalPoint(*event));
}

} // namespace Lumenote
