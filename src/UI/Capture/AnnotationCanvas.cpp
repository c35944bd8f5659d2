#include "UI/Capture/AnnotationCanvas.h"

#include "Rendering/LumenoteRenderer.h"
#include "UI/Shared/Theme.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

namespace Lumenote {

namespace {

namespace Metrics {
constexpr double thinnestLine = 1.5;
constexpr double selectionMargin = 2;
constexpr double selectionOutline = 2.5;
constexpr double selectionLine = 1.5;
constexpr double dashOn = 4;
constexpr double dashOff = 3;
constexpr double handleRadius = 4.5;
constexpr double handleOutline = 1;
} // namespace Metrics

/// How far an arrow's head reaches beside its line, and more than any outline does.
constexpr double reachInLines = 1.75 * 4;

void drawFrame(QPainter& painter, const QRectF& frame)
{
    painter.setBrush(Qt::NoBrush);
    painter.setPen({Theme::black(0.7), Metrics::selectionOutline, Qt::SolidLine, Qt::SquareCap,
        Qt::MiterJoin});
    painter.drawRect(frame);
    QPen dashes(Qt::white, Metrics::selectionLine, Qt::CustomDashLine, Qt::FlatCap, Qt::MiterJoin);
    dashes.setDashPattern(
        {Metrics::dashOn / Metrics::selectionLine, Metrics::dashOff / Metrics::selectionLine});
    painter.setPen(dashes);
    painter.drawRect(frame);
}

void drawHandle(QPainter& painter, QPointF at)
{
    painter.setPen({Theme::black(0.7), Metrics::handleOutline});
    painter.setBrush(Qt::white);
    painter.drawEllipse(at, Metrics::handleRadius, Metrics::handleRadius);
}

void drawSelection(QPainter& painter, const Annotation& annotation, const CaptureGeometry::Fit& fit)
{
    const auto margin = Metrics::selectionMargin;
    drawFrame(painter, fit.toView(annotation.hitRect()).adjusted(-margin, -margin, margin, margin));
    for (const auto handle : annotation.handles())
        drawHandle(painter, fit.toView(annotation.point(handle)));
}

void draw(QPainter& painter, const Annotation& annotation, const CaptureGeometry::Fit& fit,
    double lineWidth)
{
    const auto color = LumenoteRenderer::color(annotation.tool);
    if (AnnotationTools::isCensor(annotation.tool)) {
        // Whole pixels of the image, which needn't be whole ones of the screen.
        painter.setRenderHint(QPainter::Antialiasing, false);
        painter.fillRect(fit.toView(annotation.hitRect()), color);
        painter.setRenderHint(QPainter::Antialiasing);
        return;
    }
    auto inView = annotation;
    inView.start = fit.toView(annotation.start);
    inView.end = fit.toView(annotation.end);
    LumenoteRenderer::draw(painter, inView, color, lineWidth, fit.rect);
}

} // namespace

AnnotationCanvas::AnnotationCanvas(WorkbenchModel& model, QObject* parent)
    : QObject(parent)
    , m_model(model)
    , m_shown(model.annotations())
{
    connect(&model, &WorkbenchModel::annotationsChanged, this, &AnnotationCanvas::noteAnnotations);
    connect(&model, &WorkbenchModel::selectedAnnotationIDChanged, this,
        &AnnotationCanvas::noteSelection);
    connect(&model, &WorkbenchModel::activeToolChanged, this, &AnnotationCanvas::cancel);
}

double AnnotationCanvas::lineWidth(double imageWidth, double scale)
{
    return std::max(scale * LumenoteRenderer::baseLineWidth(imageWidth), Metrics::thinnestLine);
}

void AnnotationCanvas::paint(QPainter& painter) const
{
    if (m_fit.isEmpty())
        return;
    const auto width = lineWidth(m_model.pixelSize().width(), m_fit.scale);
    const auto wanted = painter.clipBoundingRect();
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setClipRect(m_fit.rect, Qt::IntersectClip); // As the exported image ends there.
    for (const auto& annotation : m_model.annotations())
        if (wanted.intersects(extent(annotation)))
            draw(painter, annotation, m_fit, width);
    if (const auto preview = drawn())
        draw(painter, *preview, m_fit, width);
    painter.restore();
    if (const auto* const annotation = selected()) {
        painter.save();
        painter.setRenderHint(QPainter::Antialiasing);
        drawSelection(painter, *annotation, m_fit);
        painter.restore();
    }
}

void AnnotationCanvas::press(QPointF point)
{
    m_dragStart = point;
    m_dragCurrent = point;
}

void AnnotationCanvas::move(QPointF point)
{
    const auto before = drawn();
    m_dragCurrent = point;
    for (const auto& preview : {before, drawn()})
        if (preview)
            emit areaChanged(extent(*preview));
}

void AnnotationCanvas::release(QPointF point)
{
    move(point);
    const auto annotation = drawn();
    const auto start = m_dragStart;
    cancel();
    if (annotation && annotation->exceedsMinimumSize())
        m_model.addAnnotation(*annotation);
    else if (start && m_model.activeTool() && !m_model.activeTool()->isSelect())
        switchToPointer(toImage(point));
}

void AnnotationCanvas::cancel()
{
    const auto preview = drawn();
    m_dragStart.reset();
    if (preview)
        emit areaChanged(extent(*preview));
}

/// What the gesture would leave if it ended now.
std::optional<Annotation> AnnotationCanvas::drawn() const
{
    const auto& tool = m_model.activeTool();
    if (!m_dragStart || *m_dragStart == m_dragCurrent || !tool || tool->isSelect())
        return std::nullopt;
    return Annotation{
        .tool = *tool->drawn, .start = toImage(*m_dragStart), .end = toImage(m_dragCurrent)};
}

QPointF AnnotationCanvas::toImage(QPointF point) const
{
    const auto size = m_model.pixelSize();
    const auto inImage = m_fit.toImage(point);
    return {std::clamp(inImage.x(), 0.0, static_cast<double>(size.width())),
        std::clamp(inImage.y(), 0.0, static_cast<double>(size.height()))};
}

void AnnotationCanvas::switchToPointer(QPointF imagePoint)
{
    const auto tolerance = grabDistance / std::max(m_fit.scale, 0.0001);
    const auto hit = topmostHit(m_model.annotations(), imagePoint, tolerance);
    if (!hit)
        return;
    m_model.setActiveTool(CanvasTool::select());
    m_model.setSelectedAnnotationID(hit->id);
}

/// All that shows of @p annotation in the view, selected or not.
QRectF AnnotationCanvas::extent(const Annotation& annotation) const
{
    const auto line = lineWidth(m_model.pixelSize().width(), m_fit.scale);
    const auto around = annotation.tool == AnnotationTool::arrow ? reachInLines * line : line;
    const auto margin = std::max(around, Metrics::handleRadius + Metrics::handleOutline) + 2;
    return m_fit.toView(annotation.hitRect()).adjusted(-margin, -margin, margin, margin);
}

const Annotation* AnnotationCanvas::selected() const
{
    const auto& id = m_model.selectedAnnotationID();
    const auto& annotations = m_model.annotations();
    const auto found = std::find_if(annotations.cbegin(), annotations.cend(),
        [&id](const Annotation& annotation) { return annotation.id == id; });
    return found == annotations.cend() ? nullptr : &*found;
}

/// Announces what differs from what was shown before.
void AnnotationCanvas::noteAnnotations()
{
    const auto before = std::exchange(m_shown, m_model.annotations());
    const auto length = std::max(before.size(), m_shown.size());
    QRectF area;
    for (qsizetype i = 0; i < length; ++i) {
        const bool isSame =
            i < before.size() && i < m_shown.size() && before.at(i) == m_shown.at(i);
        if (isSame)
            continue;
        if (i < before.size())
            area |= extent(before.at(i));
        if (i < m_shown.size())
            area |= extent(m_shown.at(i));
    }
    if (!area.isEmpty())
        emit areaChanged(area);
    noteSelection();
}

void AnnotationCanvas::noteSelection()
{
    const auto* const annotation = selected();
    const auto before =
        std::exchange(m_shownSelection, annotation != nullptr ? extent(*annotation) : QRectF());
    for (const auto& area : {before, m_shownSelection})
        if (!area.isEmpty())
            emit areaChanged(area);
}

} // namespace Lumenote
