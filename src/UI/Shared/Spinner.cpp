#include "UI/Shared/Spinner.h"

#include "UI/Shared/Theme.h"

#include <QPainter>

#include <chrono>
#include <cmath>

namespace Lumenote {

namespace {

constexpr int spokes = 8;
constexpr std::chrono::milliseconds stepDuration(83); ///< A turn takes two thirds of a second.

} // namespace

Spinner::Spinner(double diameter, QWidget* parent)
    : QWidget(parent)
    , m_diameter(diameter)
{
    setObjectName(QStringLiteral("spinner"));
    setAccessibleName(tr("In progress"));
    setAttribute(Qt::WA_TransparentForMouseEvents);
    const auto side = static_cast<int>(std::ceil(diameter));
    setFixedSize(side, side);
    connect(&m_clock, &QTimer::timeout, this, [this] {
        m_step = (m_step + 1) % spokes;
        update();
    });
}

void Spinner::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(QRectF(rect()).center());
    const auto outer = m_diameter / 2 - 1;
    for (int spoke = 0; spoke < spokes; ++spoke) {
        const int age = (m_step - spoke + spokes) % spokes;
        const auto opacity = 1 - 0.8 * age / (spokes - 1);
        painter.setPen(QPen(Theme::white(opacity), m_diameter / 9, Qt::SolidLine, Qt::RoundCap));
        painter.save();
        painter.rotate(360.0 / spokes * spoke);
        painter.drawLine(QPointF(0, -outer), QPointF(0, -outer / 2));
        painter.restore();
    }
}

void Spinner::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    m_clock.start(stepDuration);
}

void Spinner::hideEvent(QHideEvent* event)
{
    QWidget::hideEvent(event);
    m_clock.stop();
}

} // namespace Lumenote
