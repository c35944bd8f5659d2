#pragma once

#include "UI/Shared/Motion.h"

#include <QWidget>

namespace Lumenote {

class ToolTipController;

/// The bubble of a workbench's tool tips, above everything in the window and out of the pointer's
/// way. The controller's parent is the window's content, in which the bubble stays.
class ToolTipLayer : public QWidget {
    Q_OBJECT

public:
    explicit ToolTipLayer(ToolTipController& tips);

    static constexpr int height = 24;

    /// Where the upper left corner of a bubble @p width wide goes: below @p frame, or above it
    /// where there is no room in a content of the size @p bounds.
    static QPointF bubblePosition(const QRectF& frame, double width, const QSizeF& bounds);

signals:
    void bubbleChanged(); ///< It came, went or moved.

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void showTip();
    void move(double progress);

    ToolTipController& m_tips;
    QString m_text;
    QPointF m_from;
    QPointF m_to;
    double m_opacity = 0;
    double m_fromOpacity = 0;
    Motion::Run m_motion;
};

} // namespace Lumenote
