#pragma once

#include <QPoint>
#include <QRect>

#include <optional>

class QWidget;

namespace Lumenote {

/// Moves a frameless window by a drag, or resizes it by its edges: the window manager does where
/// there is one, since it knows of other windows and displays. All points are global.
class WindowDrag {
public:
    explicit WindowDrag(QWidget& window);

    /// @p edges are those that the press takes hold of; none moves the window.
    void press(QPoint point, Qt::Edges edges);
    void move(QPoint point);
    void release() { m_press.reset(); }

    /// The edges of @p card that @p point is on, both in one space.
    static Qt::Edges edgesAt(const QRect& card, QPoint point);
    static Qt::CursorShape cursor(Qt::Edges edges);

    /// @p frame with its @p edges moved by @p offset, no smaller than @p least.
    static QRect resized(QRect frame, Qt::Edges edges, QPoint offset, const QSize& least);

private:
    struct Press {
        QPoint point;
        Qt::Edges edges;
        QRect geometry; ///< Of the window then.
        bool hasBegun = false;
    };

    QWidget& m_window;
    std::optional<Press> m_press;
};

} // namespace Lumenote
