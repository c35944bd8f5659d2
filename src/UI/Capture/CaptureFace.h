#pragma once

#include "UI/Capture/AnnotationCanvas.h"
#include "UI/Capture/AnnotationEditLayer.h"
#include "UI/Capture/FittedImage.h"
#include "UI/Capture/LiveTextLayer.h"
#include "UI/Shared/Backdrop.h"

#include <QWidget>

#include <functional>

namespace Lumenote {

/// The face of the card that shows the capture: its picture, the annotations and the lines of its
/// text. A press that none of these takes goes on to the parent, which moves the window by it.
class CaptureFace : public QWidget {
    Q_OBJECT

public:
    CaptureFace(WorkbenchModel& model, QWidget* parent);

    WorkbenchModel& model() { return m_model; }
    LiveTextLayer& liveText() { return m_liveText; }
    static QString lineTip(); ///< What a click on a line does.
    const CaptureGeometry::Fit& fit() const { return m_fit; }

    /// Whether the image may be dragged out from here while Alt is down, and what does it.
    std::function<void()> onExportDrag;

    bool isInGesture() const { return m_canvas.isDrawing() || m_editLayer.isEditing(); }
    void cancelGesture();

    /// Scales the picture for this size ahead of the first paint.
    void prepare(const QSize& size, double devicePixelRatio);

    /// Paints the picture and what lies behind it, in the face's coordinates.
    void paintPicture(QPainter& painter);

signals:
    void pictureSharpened();
    void hoveringChanged(bool isHovering); ///< The pointer came, or left.

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;
    bool event(QEvent* event) override;

private:
    void layOut();
    void showTip();
    void updateArea(const QRectF& area);
    void updatePointer(QPointF point);
    bool isDrawingToolActive() const;
    static Qt::CursorShape cursorFor(const AnnotationEditLayer::Session& session);
    bool isOnDragSurface(QPointF point) const;

    WorkbenchModel& m_model;
    CaptureGeometry::Fit m_fit;
    Backdrop m_backdrop;
    FittedImage m_image;
    AnnotationCanvas m_canvas;
    AnnotationEditLayer m_editLayer;
    LiveTextLayer m_liveText;
    std::optional<qsizetype> m_pressedLine;
    std::optional<QPointF> m_exportPress;
};

} // namespace Lumenote
