#pragma once

#include "UI/Shared/GlyphButton.h"

#include <functional>

namespace Lumenote {

/// From here the image is dragged into another program; a click only tells so.
class DragOutButton : public GlyphButton {
    Q_OBJECT

public:
    explicit DragOutButton(QWidget* parent);

    /// Called once a press, with the first movement.
    std::function<void()> onDrag;

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;

private:
    QPoint m_press;
    bool m_hasDragged = false;
};

} // namespace Lumenote
