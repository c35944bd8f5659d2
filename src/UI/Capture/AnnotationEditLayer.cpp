#include "UI/Capture/AnnotationEditLayer.h"

#include "Platform/Geometry.h"
#include "UI/Capture/AnnotationCanvas.h"
#include "UI/Shared/Theme.h"

#include <algorithm>

namespace Lumenote {

AnnotationEditLayer::AnnotationEditLayer(WorkbenchModel& model, QObject* parent)
    : QObject(parent)
    , m_model(model)
{
}

void AnnotationEditLayer::setGeometry(const CaptureGeometry::Fit& fit, const QSizeF& view)
{
    m_fit = fit;
    m_view = view;
}

bool AnnotationEditLayer::isEnabled() const
{
    return !m_model.activeTool() || m_model.activeTool()->isSelect();
}

std::optional<AnnotationEditLayer::Session> AnnotationEditLayer::hitTest(QPointF point) const
{
    const auto inside =
        Platform::inset(QRectF(QPointF(), m_view), Theme::edgeFrame, Theme::edgeFrame);
    if (!isEnabled() || !inside || !Platform::contains(*inside, point)
        || !Platform::contains(m_fit.rect, point))
        return std::nullopt;
    return grab(m_fit.toImage(point));
}

/// The handles of what is selected win over any annotation that lies on top of it.
std::optional<AnnotationEditLayer::Session> AnnotationEditLayer::grab(QPointF imagePoint) const
{
    const auto tolerance = AnnotationCanvas::grabDistance / std::max(m_fit.scale, 0.0001);
    const auto& annotations = m_model.annotations();
    for (const auto& annotation : annotations)
        if (annotation.id == m_model.selectedAnnotationID())
            if (const auto handle = annotation.handleAt(imagePoint, tolerance))
                return Session{.original = annotation, .handle = handle, .grab = imagePoint};
    if (const auto hit = topmostHit(annotations, imagePoint, tolerance))
        return Session{.original = *hit, .handle = {}, .grab = imagePoint};
    return std::nullopt;
}

void AnnotationEditLayer::press(QPointF point)
{
    m_session = hitTest(point);
    if (!m_session)
        return;
    const auto session = *m_session;
    m_model.setActiveTool(CanvasTool::select());
    m_model.setSelectedAnnotationID(session.original.id);
    m_model.beginAnnotationEdit();
}

/// The pointer is held inside the image, though the annotation may reach beyond.
void AnnotationEditLayer::move(QPointF point)
{
    if (!m_session)
        return;
    const auto size = m_model.pixelSize();
    auto to = m_fit.toImage(point);
    to = {std::clamp(to.x(), 0.0, static_cast<double>(size.width())),
        std::clamp(to.y(), 0.0, static_cast<double>(size.height()))};
    m_model.updateAnnotation(m_session->handle
            ? m_session->original.reshaped(*m_session->handle, to)
            : m_session->original.moved(to - m_session->grab));
}

void AnnotationEditLayer::release()
{
    if (!m_session)
        return;
    m_session.reset();
    m_model.endAnnotationEdit();
}

void AnnotationEditLayer::cancel()
{
    if (m_session)
        m_model.updateAnnotation(m_session->original);
    release();
}

} // namespace Lumenote
