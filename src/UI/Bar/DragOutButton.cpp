#include "UI/Bar/DragOutButton.h"

#include <QGuiApplication>
#include <QMouseEvent>
#include <QStyleHints>

namespace Lumenote {

DragOutButton::DragOutButton(QWidget* parent)
    : GlyphButton(QStringLiteral("dragOut"), QStringLiteral("square.and.arrow.up"), parent)
{
    setCursor(Qt::OpenHandCursor);
}

void DragOutButton::mousePressEvent(QMouseEvent* event)
{
    m_press = event->pos();
    m_hasDragged = false;
    GlyphButton::mousePressEvent(event);
}

void DragOutButton::mouseMoveEvent(QMouseEvent* event)
{
    const auto distance = (event->pos() - m_press).manhattanLength();
    if (!event->buttons().testFlag(Qt::LeftButton) || m_hasDragged
        || distance < QGuiApplication::styleHints()->startDragDistance()) {
        GlyphButton::mouseMoveEvent(event);
        return;
    }
    m_hasDragged = true;
    setDown(false); // The release belongs to the drag: this is no click any more.
    if (onDrag)
        onDrag();
}

} // namespace Lumenote
