#include "UI/Capture/CaptureFace.h"

#include "Platform/DesktopWords.h"
#include "Platform/Geometry.h"
#include "UI/Capture/CaptureAccessibility.h"
#include "UI/Shared/Theme.h"
#include "UI/Shared/ToolTipController.h"

#include <QGuiApplication>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QStyleHints>

namespace Lumenote {

namespace {

constexpr double backdropBlur = 20;
constexpr double backdropDarkness = 0.45;

} // namespace

CaptureFace::CaptureFace(WorkbenchModel& model, QWidget* parent)
    : QWidget(parent)
    , m_model(model)
    , m_backdrop(backdropBlur, backdropDarkness)
    , m_image(this)
    , m_canvas(model, this)
    , m_editLayer(model, this)
    , m_liveText(model, this)
{
    setObjectName(QStringLiteral("captureFace"));
    setMouseTracking(true);
    CaptureAccessibility::install();
    const auto takePictures = [this] {
        m_image.setImage(m_model.displayImage());
        m_backdrop.setImage(m_model.backdropImage());
        update();
    };
    takePictures();
    connect(&model, &WorkbenchModel::displayChanged, this, takePictures);
    connect(&model, &WorkbenchModel::activeToolChanged, this,
        [this] { updatePointer(mapFromGlobal(QCursor::pos())); });
    connect(&m_image, &FittedImage::sharpened, this, [this] {
        update();
        emit pictureSharpened();
    });
    connect(&m_canvas, &AnnotationCanvas::areaChanged, this, &CaptureFace::updateArea);
    connect(&m_liveText, &LiveTextLayer::areaChanged, this, &CaptureFace::updateArea);
    connect(&m_liveText, &LiveTextLayer::hoveredChanged, this, &CaptureFace::showTip);
}

QString CaptureFace::lineTip()
{
    return Platform::inDesktopWords(tr("Click to copy this line"));
}

void CaptureFace::cancelGesture()
{
    m_canvas.cancel();
    m_editLayer.cancel();
}

void CaptureFace::prepare(const QSize& size, double devicePixelRatio)
{
    const auto fit =
        CaptureGeometry::fit(m_model.pixelSize(), m_model.pointSize(), size, devicePixelRatio);
    m_image.prepare((fit.rect.size() * devicePixelRatio).toSize());
}

void CaptureFace::layOut()
{
    m_fit =
        CaptureGeometry::fit(m_model.pixelSize(), m_model.pointSize(), size(), devicePixelRatioF());
    m_canvas.setFit(m_fit);
    m_editLayer.setGeometry(m_fit, size());
    m_liveText.setGeometry(m_fit, size());
}

void CaptureFace::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    layOut();
}

void CaptureFace::paintEvent(QPaintEvent* event)
{
    QPainter painter(this);
    const auto picture = m_fit.rect.toAlignedRect().adjusted(1, 1, -1, -1);
    if (!picture.contains(event->rect())) {
        painter.save();
        painter.setClipRegion(event->region().subtracted(QRegion(picture)));
        m_backdrop.paint(painter, size());
        painter.restore();
    }
    painter.setClipRegion(event->region());
    m_image.paint(painter, m_fit.rect);
    m_canvas.paint(painter);
    m_liveText.paint(painter);
}

void CaptureFace::paintPicture(QPainter& painter)
{
    m_backdrop.paint(painter, size());
    m_image.paintCoarsely(painter, m_fit.rect);
}

void CaptureFace::updateArea(const QRectF& area)
{
    update(area.toAlignedRect().adjusted(-1, -1, 1, 1));
}

void CaptureFace::showTip()
{
    auto* const tips = ToolTipController::of(*this);
    if (tips == nullptr)
        return;
    const auto& line = m_liveText.hovered();
    const auto rect = line ? m_liveText.rect(*line) : std::nullopt;
    if (!rect) {
        tips->exit(lineTip());
        return;
    }
    auto* const content = qobject_cast<QWidget*>(tips->parent());
    tips->enter(lineTip(), rect->translated(mapTo(content, QPoint())));
}

bool CaptureFace::isDrawingToolActive() const
{
    return m_model.activeTool() && !m_model.activeTool()->isSelect();
}

bool CaptureFace::isOnDragSurface(QPointF point) const
{
    const auto surface = Platform::inset(rect(), Theme::edgeFrame, Theme::edgeFrame);
    return surface && Platform::contains(*surface, point);
}

Qt::CursorShape CaptureFace::cursorFor(const AnnotationEditLayer::Session& session)
{
    if (!session.handle)
        return Qt::SizeAllCursor;
    if (session.original.tool == AnnotationTool::arrow)
        return Qt::CrossCursor;
    const auto fromCentre =
        session.original.point(*session.handle) - Platform::centre(session.original.rect());
    return fromCentre.x() * fromCentre.y() > 0 ? Qt::SizeFDiagCursor : Qt::SizeBDiagCursor;
}

void CaptureFace::updatePointer(QPointF point)
{
    if (isDrawingToolActive()) {
        m_liveText.setHovered(std::nullopt);
        setCursor(Qt::CrossCursor);
        return;
    }
    const auto grabbed = m_editLayer.hitTest(point);
    m_liveText.setHovered(grabbed ? std::nullopt : m_liveText.lineAt(point));
    if (grabbed)
        setCursor(cursorFor(*grabbed));
    else if (m_liveText.hovered())
        setCursor(Qt::IBeamCursor);
    else if (isOnDragSurface(point))
        setCursor(Qt::OpenHandCursor);
    else
        unsetCursor(); // The window's own, which resizes it here.
}

void CaptureFace::mousePressEvent(QMouseEvent* event)
{
    m_pressedLine.reset();
    m_exportPress.reset();
    if (event->button() != Qt::LeftButton || isInGesture()) {
        event->ignore();
        return;
    }
    const auto point = event->position();
    if (isDrawingToolActive()) {
        m_canvas.press(point);
        return;
    }
    if (m_editLayer.hitTest(point)) {
        m_editLayer.press(point);
        return;
    }
    m_pressedLine = m_liveText.lineAt(point);
    if (isOnDragSurface(point) && !m_pressedLine) {
        m_model.setSelectedAnnotationID(std::nullopt);
        if (event->modifiers().testFlag(Qt::AltModifier)) {
            m_exportPress = point;
            return;
        }
    }
    event->ignore(); // A drag from here moves the window.
}

void CaptureFace::mouseMoveEvent(QMouseEvent* event)
{
    const auto point = event->position();
    if (m_canvas.isDrawing())
        m_canvas.move(point);
    else if (m_editLayer.isEditing())
        m_editLayer.move(point);
    else if (m_exportPress) {
        const auto distance = (point - *m_exportPress).manhattanLength();
        if (distance < QGuiApplication::styleHints()->startDragDistance())
            return;
        m_exportPress.reset();
        if (onExportDrag)
            onExportDrag();
    } else {
        if (event->buttons() == Qt::NoButton)
            updatePointer(point);
        event->ignore();
    }
}

void CaptureFace::mouseReleaseEvent(QMouseEvent* event)
{
    const auto point = event->position();
    const auto line = std::exchange(m_pressedLine, std::nullopt);
    m_exportPress.reset();
    if (event->button() != Qt::LeftButton) {
        event->ignore();
        return;
    }
    if (m_canvas.isDrawing())
        m_canvas.release(point);
    else if (m_editLayer.isEditing())
        m_editLayer.release();
    else {
        if (line && m_liveText.lineAt(point) == line)
            m_liveText.copy(*line);
        event->ignore();
    }
    updatePointer(point);
}

void CaptureFace::enterEvent(QEnterEvent* event)
{
    QWidget::enterEvent(event);
    emit hoveringChanged(true);
}

void CaptureFace::leaveEvent(QEvent* event)
{
    QWidget::leaveEvent(event);
    m_liveText.setHovered(std::nullopt);
    emit hoveringChanged(false);
}

bool CaptureFace::event(QEvent* event)
{
    if (event->type() == QEvent::ScreenChangeInternal)
        layOut(); // The display may have another scale.
    return QWidget::event(event);
}

} // namespace Lumenote
