#pragma once

#include "Model/WorkbenchModel.h"
#include "UI/Capture/CaptureGeometry.h"
#include "UI/Shared/Motion.h"

#include <QObject>
#include <QRectF>
#include <QTimer>

#include <optional>

class QPainter;

namespace Lumenote {

/// Makes each recognised line of a capture a target of its own, which lights up below the pointer,
/// and shows all of them in a wave when there is new text. Points and rectangles are those of the
/// view; lines are told by their index in the model.
class LiveTextLayer : public QObject {
    Q_OBJECT

public:
    explicit LiveTextLayer(WorkbenchModel& model, QObject* parent);

    void setGeometry(const CaptureGeometry::Fit& fit, const QSizeF& view);

    /// Whether lines answer: not while they are being read, nor with a drawing tool in the hand.
    bool isActive() const;

    /// Of a line; nothing where it has no place in the view.
    std::optional<QRectF> rect(qsizetype line) const;
    std::optional<qsizetype> lineAt(QPointF point) const;

    const std::optional<qsizetype>& hovered() const { return m_hovered; }
    void setHovered(const std::optional<qsizetype>& line);

    void copy(qsizetype line);

    void paint(QPainter& painter) const;

    /// How much of a line of @p count shows, @p risen milliseconds after the wave began.
    static double revealLevel(qsizetype line, qsizetype count, double risen);

signals:
    void areaChanged(const QRectF& area);
    void hoveredChanged();
    void linesChanged(); ///< Which there are, or where.

private:
    struct Look {
        double fill = 0;
        double stroke = 0;
    };

    void place();
    void follow();
    void revealIfPending();
    void endReveal();
    void updateAll();
    static void paintLine(QPainter& painter, const QRectF& rect, const Look& look);
    Look look(qsizetype line) const;
    double waveLevel(qsizetype line) const;

    WorkbenchModel& m_model;
    CaptureGeometry::Fit m_fit;
    QSizeF m_view;
    QList<QRectF> m_rects; ///< One for each line; null where it has no place.
    QRectF m_bounds; ///< Around all of them.
    bool m_wasActive = false;

    std::optional<qsizetype> m_hovered;
    std::optional<qsizetype> m_left; ///< The line the pointer was over before.
    double m_hoverProgress = 1;
    Motion::Run m_hover;

    bool m_isRevealed = false;
    double m_riseProgress = 1;
    double m_fallProgress = 1;
    Motion::Run m_rise;
    Motion::Run m_fall;
    QTimer m_hold;
};

} // namespace Lumenote
