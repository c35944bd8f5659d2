#include "UI/Shared/SlimScrollBar.h"

namespace Lumenote {

namespace {

/// The handle is 4 points wide in a bar of 10.
const QString looks = QStringLiteral(R"(
    QScrollBar:vertical { background: transparent; border: none; width: 10px; margin: %1px 0; }
    QScrollBar::handle:vertical {
        background: rgba(255, 255, 255, 64); border-radius: 2px; margin: 0 3px; min-height: 32px; }
    QScrollBar::handle:vertical:hover, QScrollBar::handle:vertical:pressed {
        background: rgba(255, 255, 255, 140); }
    QScrollBar::add-line:vertical, QScrollBar::sub-line:vertical { height: 0; }
    QScrollBar::add-page:vertical, QScrollBar::sub-page:vertical { background: transparent; }
)");

} // namespace

SlimScrollBar::SlimScrollBar(int endMargin, QWidget* parent)
    : QScrollBar(Qt::Vertical, parent)
{
    setStyleSheet(looks.arg(endMargin));
}

void SlimScrollBar::paintEvent(QPaintEvent* event)
{
    if (maximum() > minimum())
        QScrollBar::paintEvent(event);
}

} // namespace Lumenote
