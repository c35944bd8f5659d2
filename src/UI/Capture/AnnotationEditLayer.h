#pragma once

#include "Model/WorkbenchModel.h"
#include "UI/Capture/CaptureGeometry.h"

#include <QObject>

#include <optional>

namespace Lumenote {

/// Moves and reshapes the annotations of a capture with the pointer. It answers only where one of
/// them, or a handle, really lies; every other point belongs to what is below. Points are those of
/// the view.
class AnnotationEditLayer : public QObject {
    Q_OBJECT

public:
    /// An edit in progress, in pixels of the image.
    struct Session {
        Annotation original; ///< As it was at the grab.
        std::optional<AnnotationHandle> handle; ///< None where the whole annotation is moved.
        QPointF grab;
    };

    explicit AnnotationEditLayer(WorkbenchModel& model, QObject* parent);

    void setGeometry(const CaptureGeometry::Fit& fit, const QSizeF& view);

    /// What would be grabbed at @p point; nothing where this layer doesn't answer.
    std::optional<Session> hitTest(QPointF point) const;

    bool isEditing() const { return m_session.has_value(); }
    void press(QPointF point); ///< Where hitTest() answers.
    void move(QPointF point);
    void release();
    void cancel(); ///< Puts back what was grabbed.

private:
    bool isEnabled() const; ///< While no drawing tool is in the hand.
    std::optional<Session> grab(QPointF imagePoint) const;

    WorkbenchModel& m_model;
    CaptureGeometry::Fit m_fit;
    QSizeF m_view;
    std::optional<Session> m_session;
};

} // namespace Lumenote
