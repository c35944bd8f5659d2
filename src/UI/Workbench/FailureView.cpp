#include "UI/Workbench/FailureView.h"

#include "UI/Shared/RoundedRegion.h"
#include "UI/Shared/Theme.h"
#include "UI/Workbench/CardShadow.h"

#include <QPainter>

namespace Lumenote {

namespace {

namespace Metrics {
constexpr int padding = 40;
constexpr double fontSize = 13;
constexpr QColor surface(28, 28, 31);
} // namespace Metrics

} // namespace

FailureView::FailureView(QWidget* window)
    : FloatingContent(window)
{
    setObjectName(QStringLiteral("failure"));
    setAccessibleName(tr("Couldn't read that image."));
    setMouseTracking(true);
}

QRect FailureView::cardRect() const
{
    return rect().marginsRemoved(shadowMargins());
}

QRegion FailureView::visibleRegion() const
{
    return roundedRegion(cardRect(), Theme::cardRadius);
}

void FailureView::setBlended(bool isBlended)
{
    m_isBlended = isBlended;
    update();
}

void FailureView::resizeEvent(QResizeEvent* event)
{
    FloatingContent::resizeEvent(event);
    emit shapeChanged();
}

void FailureView::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    if (m_isBlended)
        cardShadow().paint(painter, cardRect(), Theme::cardRadius);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(Metrics::surface);
    painter.drawRoundedRect(cardRect(), Theme::cardRadius, Theme::cardRadius);
    painter.setPen(Qt::white);
    painter.setFont(Theme::font(Metrics::fontSize));
    const auto padding = Metrics::padding;
    painter.drawText(cardRect().adjusted(padding, padding, -padding, -padding),
        Qt::AlignCenter | Qt::TextWordWrap, accessibleName());
}

} // namespace Lumenote
