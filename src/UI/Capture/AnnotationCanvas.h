#pragma once

#include "Model/WorkbenchModel.h"
#include "UI/Capture/CaptureGeometry.h"

#include <QObject>
#include <QRectF>

#include <optional>

class QPainter;

namespace Lumenote {

/// The annotations of a capture as its view shows them, and the drawing of new ones. Points and
/// areas are those of the view; it is told of gestures only while a drawing tool is in the hand.
class AnnotationCanvas : public QObject {
    Q_OBJECT

public:
    explicit AnnotationCanvas(WorkbenchModel& model, QObject* parent);

    void setFit(const CaptureGeometry::Fit& fit) { m_fit = fit; }

    /// What the painter's clip bounds of annotations, the selection, and what is being drawn.
    void paint(QPainter& painter) const;

    bool isDrawing() const { return m_dragStart.has_value(); }
    void press(QPointF point);
    void move(QPointF point);
    /// Adds what was drawn or, where that is too small to be one, picks up what lies there.
    void release(QPointF point);
    void cancel(); ///< Leaves nothing behind.

    /// The width of an outline on screen, which never falls below a visible one.
    static double lineWidth(double imageWidth, double scale);

    /// So far from the pointer, in points, an annotation or a handle can be grabbed.
    static constexpr double grabDistance = 9;

signals:
    void areaChanged(const QRectF& area);

private:
    void noteAnnotations();
    void noteSelection();
    std::optional<Annotation> drawn() const;
    QPointF toImage(QPointF point) const;
    void switchToPointer(QPointF imagePoint);
    QRectF extent(const Annotation& annotation) const;
    const Annotation* selected() const;

    WorkbenchModel& m_model;
    CaptureGeometry::Fit m_fit;
    QList<Annotation> m_shown; ///< As last announced.
    QRectF m_shownSelection;
    std::optional<QPointF> m_dragStart;
    QPointF m_dragCurrent;
};

} // namespace Lumenote
