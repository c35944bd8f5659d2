#include "UI/Shared/ToolTipLayer.h"

#include "UI/Shared/Theme.h"
#include "UI/Shared/ToolTipController.h"

#include <QFontMetricsF>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace Lumenote {

namespace {

namespace Metrics {
constexpr double margin = 8; ///< From the edges of the content.
constexpr double distance = 10; ///< From what the tip is about.
constexpr double padding = 10;
constexpr double radius = 4;
constexpr double fontSize = 11;
constexpr int duration = 180;
} // namespace Metrics

QFont bubbleFont()
{
    return Theme::font(Metrics::fontSize, QFont::Medium);
}

} // namespace

ToolTipLayer::ToolTipLayer(ToolTipController& tips)
    : QWidget(qobject_cast<QWidget*>(tips.parent()))
    , m_tips(tips)
    , m_motion(
          Motion::easeInOut(Metrics::duration), [this](double progress) { move(progress); }, this)
{
    setObjectName(QStringLiteral("toolTip"));
    setAttribute(Qt::WA_TransparentForMouseEvents);
    hide();
    connect(&tips, &ToolTipController::tipChanged, this, &ToolTipLayer::showTip);
}

QPointF ToolTipLayer::bubblePosition(const QRectF& frame, double width, const QSizeF& bounds)
{
    const auto rightmost = std::max(bounds.width() - width - Metrics::margin, Metrics::margin);
    const auto left = frame.center().x() - width / 2;
    const auto below = frame.bottom() + Metrics::distance;
    const bool fitsBelow = below + height + Metrics::margin <= bounds.height();
    return {std::min(std::max(left, Metrics::margin), rightmost),
        fitsBelow ? below : std::max(frame.top() - Metrics::distance - height, Metrics::margin)};
}

void ToolTipLayer::showTip()
{
    m_fromOpacity = m_opacity;
    m_from = pos();
    const auto& tip = m_tips.tip();
    if (tip) {
        m_text = tip->text;
        const auto width =
            std::ceil(QFontMetricsF(bubbleFont()).horizontalAdvance(m_text) + 2 * Metrics::padding);
        m_to = bubblePosition(tip->frame, width, parentWidget()->size());
        if (isHidden())
            m_from = m_to;
        resize(static_cast<int>(width), height);
        show();
        raise();
    } else {
        m_to = m_from;
    }
    m_motion.restart();
}

void ToolTipLayer::move(double progress)
{
    const double toOpacity = m_tips.tip() ? 1 : 0;
    m_opacity = m_fromOpacity + (toOpacity - m_fromOpacity) * progress;
    QWidget::move((m_from + (m_to - m_from) * progress).toPoint());
    setVisible(m_opacity > 0 || m_tips.tip().has_value());
    update();
    emit bubbleChanged();
}

void ToolTipLayer::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setOpacity(m_opacity);
    painter.setPen(Qt::NoPen);
    painter.setBrush(Qt::black);
    painter.drawRoundedRect(QRectF(rect()), Metrics::radius, Metrics::radius);
    painter.setPen(Qt::white);
    painter.setFont(bubbleFont());
    painter.drawText(rect(), Qt::AlignCenter, m_text);
}

} // namespace Lumenote
