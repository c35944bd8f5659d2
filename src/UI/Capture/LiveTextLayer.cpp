#include "UI/Capture/LiveTextLayer.h"

#include "Platform/Geometry.h"
#include "UI/Shared/Theme.h"

#include <QPainter>

#include <algorithm>
#include <chrono>

namespace Lumenote {

namespace {

namespace Metrics {
constexpr double growth = 2;
constexpr double smallest = 1;
constexpr double cornerRadius = 3;
constexpr int hoverDuration = 120;
// Of the wave, in milliseconds: until the last line begins, each line's own rise, and all together
// with the time that it is held, and the fall.
constexpr double waveDelay = 350;
constexpr double riseDuration = 220;
constexpr std::chrono::milliseconds revealDuration(870);
constexpr int fallDuration = 300;
} // namespace Metrics

constexpr double hoveredFill = 0.32;
constexpr double hoveredStroke = 0.9;
constexpr double revealedFill = 0.18;
constexpr double revealedStroke = 0.55;

Motion::Timing wave()
{
    return {.curve = QEasingCurve::Linear,
        .duration = static_cast<int>(Metrics::waveDelay + Metrics::riseDuration)};
}

double easedOut(double progress)
{
    return 1 - (1 - progress) * (1 - progress);
}

} // namespace

LiveTextLayer::LiveTextLayer(WorkbenchModel& model, QObject* parent)
    : QObject(parent)
    , m_model(model)
    , m_hover(
          Motion::easeOut(Metrics::hoverDuration),
          [this](double progress) {
              m_hoverProgress = progress;
              for (const auto& line : {m_hovered, m_left})
                  if (const auto area = line ? rect(*line) : std::nullopt)
                      emit areaChanged(*area);
          },
          this)
    , m_rise(
          wave(),
          [this](double progress) {
              m_riseProgress = progress;
              updateAll();
          },
          this)
    , m_fall(
          Motion::easeIn(Metrics::fallDuration),
          [this](double progress) {
              m_fallProgress = progress;
              updateAll();
          },
          this)
{
    m_hold.setSingleShot(true);
    m_hold.setInterval(Metrics::revealDuration);
    connect(&m_hold, &QTimer::timeout, this, &LiveTextLayer::endReveal);
    connect(&model, &WorkbenchModel::textChanged, this, &LiveTextLayer::place);
    for (const auto change : {&WorkbenchModel::textChanged, &WorkbenchModel::recognitionChanged,
             &WorkbenchModel::activeToolChanged, &WorkbenchModel::pendingTextRevealChanged})
        connect(&model, change, this, &LiveTextLayer::follow);
}

void LiveTextLayer::setGeometry(const CaptureGeometry::Fit& fit, const QSizeF& view)
{
    m_fit = fit;
    m_view = view;
    place();
    follow();
}

bool LiveTextLayer::isActive() const
{
    const auto& tool = m_model.activeTool();
    return (!tool || tool->isSelect()) && !m_model.isRecognizing() && !m_model.lines().isEmpty()
        && !m_fit.isEmpty();
}

/// The boxes of the lines in the view, without the frame along its edges.
void LiveTextLayer::place()
{
    setHovered(std::nullopt);
    m_rects.clear();
    m_bounds = {};
    const auto inside =
        Platform::inset(QRectF(QPointF(), m_view), Theme::edgeFrame, Theme::edgeFrame)
            .value_or(QRectF());
    const auto growth = Metrics::growth;
    for (const auto& line : m_model.lines()) {
        const auto box = m_fit.toView(line.boundingBox).adjusted(-growth, -growth, growth, growth);
        auto visible = Platform::intersection(box, inside).value_or(QRectF());
        if (visible.width() <= Metrics::smallest || visible.height() <= Metrics::smallest)
            visible = {};
        m_rects.append(visible);
        m_bounds |= visible;
    }
    emit linesChanged();
}

/// What is shown follows whether lines answer.
void LiveTextLayer::follow()
{
    const bool isNowActive = isActive();
    if (!isNowActive)
        setHovered(std::nullopt);
    if (isNowActive != m_wasActive) {
        m_wasActive = isNowActive;
        updateAll();
        emit linesChanged();
    }
    revealIfPending();
}

std::optional<QRectF> LiveTextLayer::rect(qsizetype line) const
{
    if (!isActive() || line >= m_rects.size() || m_rects.at(line).isEmpty())
        return std::nullopt;
    return m_rects.at(line);
}

std::optional<qsizetype> LiveTextLayer::lineAt(QPointF point) const
{
    if (!isActive() || !Platform::contains(m_bounds, point))
        return std::nullopt;
    // The last one lies on top.
    for (auto line = m_rects.size() - 1; line >= 0; --line)
        if (Platform::contains(m_rects.at(line), point))
            return line;
    return std::nullopt;
}

void LiveTextLayer::setHovered(const std::optional<qsizetype>& line)
{
    if (line == m_hovered)
        return;
    const auto area = m_left ? rect(*m_left) : std::nullopt;
    m_left = std::exchange(m_hovered, line);
    if (area)
        emit areaChanged(*area);
    m_hover.restart();
    emit hoveredChanged();
}

void LiveTextLayer::copy(qsizetype line)
{
    if (line < m_model.lines().size())
        m_model.copyText(QStringList{m_model.lines().at(line).text});
}

void LiveTextLayer::revealIfPending()
{
    if (!isActive() || !m_model.pendingTextReveal())
        return;
    m_model.setPendingTextReveal(false);
    m_hold.start();
    if (m_isRevealed) // It goes on, and ends later.
        return;
    m_isRevealed = true;
    m_fall.stop();
    m_fallProgress = 0;
    m_rise.restart();
}

void LiveTextLayer::endReveal()
{
    m_isRevealed = false;
    m_fall.restart();
}

void LiveTextLayer::updateAll()
{
    if (!m_bounds.isEmpty())
        emit areaChanged(m_bounds);
}

double LiveTextLayer::revealLevel(qsizetype line, qsizetype count, double risen)
{
    const auto delay = count < 2
        ? 0
        : static_cast<double>(line) / static_cast<double>(count - 1) * Metrics::waveDelay;
    return easedOut(std::clamp((risen - delay) / Metrics::riseDuration, 0.0, 1.0));
}

double LiveTextLayer::waveLevel(qsizetype line) const
{
    if (m_fallProgress >= 1)
        return 0;
    const auto risen = m_riseProgress * (Metrics::waveDelay + Metrics::riseDuration);
    return revealLevel(line, m_rects.size(), risen) * (1 - m_fallProgress);
}

LiveTextLayer::Look LiveTextLayer::look(qsizetype line) const
{
    const auto wave = waveLevel(line);
    auto hover = 0.0;
    if (line == m_hovered)
        hover = m_hoverProgress;
    else if (line == m_left)
        hover = 1 - m_hoverProgress;
    return {.fill = std::max(hover * hoveredFill, wave * revealedFill),
        .stroke = std::max(hover * hoveredStroke, wave * revealedStroke)};
}

/// On whole pixels of the device: a wave over a page of antialiased outlines costs fifty times as
/// much. Corners are round by what is left out of them.
void LiveTextLayer::paintLine(QPainter& painter, const QRectF& rect, const Look& look)
{
    const auto ratio = painter.device()->devicePixelRatioF();
    const auto snapped = [ratio](double value) { return qRound(value * ratio) / ratio; };
    const auto left = snapped(rect.left());
    const auto top = snapped(rect.top());
    const auto width = snapped(rect.right()) - left;
    const auto height = snapped(rect.bottom()) - top;
    const auto line = std::max(qRound(ratio), 1) / ratio;
    const auto corner = std::min({snapped(Metrics::cornerRadius), width / 2, height / 2});
    const auto fill = Theme::accent(look.fill);
    const auto stroke = Theme::accent(look.stroke);
    const auto inner = QRectF(left, top, width, height).adjusted(line, line, -line, -line);
    painter.fillRect(inner, fill);
    const auto across = width - 2 * corner;
    const auto down = height - 2 * corner;
    painter.fillRect(QRectF(left + corner, top, across, line), stroke);
    painter.fillRect(QRectF(left + corner, top + height - line, across, line), stroke);
    painter.fillRect(QRectF(left, top + corner, line, down), stroke);
    painter.fillRect(QRectF(left + width - line, top + corner, line, down), stroke);
}

void LiveTextLayer::paint(QPainter& painter) const
{
    if (!isActive())
        return;
    const auto wanted = painter.clipBoundingRect();
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing, false);
    for (qsizetype line = 0; line < m_rects.size(); ++line) {
        const auto& rect = m_rects.at(line);
        if (rect.isEmpty() || !wanted.intersects(rect))
            continue;
        const auto shown = look(line);
        if (shown.stroke > 0)
            paintLine(painter, rect, shown);
    }
    painter.restore();
}

} // namespace Lumenote
