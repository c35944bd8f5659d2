#pragma once

#include "Capture/OverlayScene.h"

#include <QImage>
#include <QPointer>
#include <QWidget>

namespace Lumenote {

class SelectionSession;

/// The overlay of one display: above everything, without focus and without any state of the
/// selection. It shows its part of what the session holds, and tells the session what the mouse
/// does.
class SelectionWindow final : public QWidget {
    Q_OBJECT

public:
    /// Covers the display with @p globalFrame, in the space of selections, of @p scale pixels a
    /// point. Hidden at first.
    SelectionWindow(const QRectF& globalFrame, double scale, SelectionSession& session);

    /// A picture of the display to stand in for it where windows can't be translucent; null where
    /// they can.
    void setBackdrop(const QImage& backdrop);

    /// From now on events reach no session, and what is shown stays.
    void leaveSession();

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    void showState();
    QPointF globalPoint(const QMouseEvent& event) const;

    const QRectF m_globalFrame;
    const double m_scale;
    QPointer<SelectionSession> m_session;
    OverlayScene m_scene;
    QImage m_backdrop;
};

} // namespace Lumenote
