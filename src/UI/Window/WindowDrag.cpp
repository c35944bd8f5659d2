#include "UI/Window/WindowDrag.h"

#include "UI/Shared/Theme.h"

#include <QGuiApplication>
#include <QStyleHints>
#include <QWidget>
#include <QWindow>

#include <algorithm>

namespace Lumenote {

namespace {

constexpr int edgeFrame = static_cast<int>(Theme::edgeFrame);
constexpr int cornerReach = 20; ///< So far along an edge, its neighbour is taken hold of, too.

} // namespace

WindowDrag::WindowDrag(QWidget& window)
    : m_window(window)
{
}

Qt::Edges WindowDrag::edgesAt(const QRect& card, QPoint point)
{
    const auto inside = card.adjusted(edgeFrame, edgeFrame, -edgeFrame, -edgeFrame);
    if (!card.contains(point) || inside.contains(point))
        return {};
    Qt::Edges edges;
    edges.setFlag(Qt::LeftEdge, point.x() < card.left() + cornerReach);
    edges.setFlag(Qt::RightEdge, point.x() > card.right() - cornerReach);
    edges.setFlag(Qt::TopEdge, point.y() < card.top() + cornerReach);
    edges.setFlag(Qt::BottomEdge, point.y() > card.bottom() - cornerReach);
    return edges;
}

Qt::CursorShape WindowDrag::cursor(Qt::Edges edges)
{
    if (edges == (Qt::LeftEdge | Qt::TopEdge) || edges == (Qt::RightEdge | Qt::BottomEdge))
        return Qt::SizeFDiagCursor;
    if (edges == (Qt::RightEdge | Qt::TopEdge) || edges == (Qt::LeftEdge | Qt::BottomEdge))
        return Qt::SizeBDiagCursor;
    if (edges & (Qt::LeftEdge | Qt::RightEdge))
        return Qt::SizeHorCursor;
    if (edges & (Qt::TopEdge | Qt::BottomEdge))
        return Qt::SizeVerCursor;
    return Qt::ArrowCursor;
}

QRect WindowDrag::resized(QRect frame, Qt::Edges edges, QPoint offset, const QSize& least)
{
    if (edges.testFlag(Qt::LeftEdge))
        frame.setLeft(std::min(frame.left() + offset.x(), frame.right() + 1 - least.width()));
    if (edges.testFlag(Qt::RightEdge))
        frame.setRight(std::max(frame.right() + offset.x(), frame.left() - 1 + least.width()));
    if (edges.testFlag(Qt::TopEdge))
        frame.setTop(std::min(frame.top() + offset.y(), frame.bottom() + 1 - least.height()));
    if (edges.testFlag(Qt::BottomEdge))
        frame.setBottom(std::max(frame.bottom() + offset.y(), frame.top() - 1 + least.height()));
    return frame;
}

void WindowDrag::press(QPoint point, Qt::Edges edges)
{
    m_press = Press{.point = point, .edges = edges, .geometry = m_window.geometry()};
}

/// Not with the press already: the window manager would take the pointer, and with it quick clicks.
void WindowDrag::move(QPoint point)
{
    if (!m_press)
        return;
    const auto offset = point - m_press->point;
    if (!m_press->hasBegun) {
        if (offset.manhattanLength() < QGuiApplication::styleHints()->startDragDistance())
            return;
        m_press->hasBegun = true;
        auto& handle = *m_window.windowHandle();
        const bool isTaken =
            m_press->edges ? handle.startSystemResize(m_press->edges) : handle.startSystemMove();
        if (isTaken) {
            m_press.reset();
            return;
        }
    }
    m_window.setGeometry(m_press->edges
            ? resized(m_press->geometry, m_press->edges, offset, m_window.minimumSize())
            : m_press->geometry.translated(offset));
}

} // namespace Lumenote
