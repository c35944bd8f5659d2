#include "UI/Workbench/CornerButton.h"

#include "UI/Shared/Blur.h"
#include "UI/Shared/Glass.h"
#include "UI/Shared/Theme.h"

#include <QPainter>
#include <QPainterPath>

#include <algorithm>

namespace Lumenote {

namespace {

namespace Metrics {
constexpr int fadeDuration = 120;
constexpr int reduction = 4; ///< A blurred ground has no details that more pixels could show.
constexpr double blurRadius = 10;
/// Of the black over the ground. Over white, the glyphs need more of it.
constexpr double lightestTint = 0.3;
constexpr double darkestTint = 0.55;
constexpr double hairlineOpacity = 0.18;
constexpr double hairlineWidth = 0.5;
} // namespace Metrics

double luminance(const QImage& image)
{
    double sum = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            sum += qGray(image.pixel(x, y));
    return sum / (255.0 * std::max(image.width() * image.height(), 1));
}

} // namespace

CornerButton::CornerButton(const QString& name, const QString& glyph, QWidget* card)
    : Capsule(card)
    , m_button(new GlyphButton(name, glyph, this))
    , m_fade(
          Motion::easeOut(Metrics::fadeDuration),
          [this](double progress) {
              m_opacity = m_fromOpacity + ((m_isShown ? 1 : 0) - m_fromOpacity) * progress;
              m_button->setOpacity(m_opacity);
              update();
          },
          this)
{
    m_button->setOpacity(0);
    hide();
    connect(m_button, &GlyphButton::focusChanged, this, &CornerButton::refresh);
}

void CornerButton::setState(bool isAvailable, bool isNear)
{
    m_isAvailable = isAvailable;
    m_isNear = isNear;
    refresh();
}

void CornerButton::refresh()
{
    setVisible(m_isAvailable);
    const bool isShown = m_isAvailable && (m_isNear || m_button->hasFocus());
    if (isShown == m_isShown)
        return;
    m_isShown = isShown;
    m_fromOpacity = m_opacity;
    m_fade.restart();
}

void CornerButton::paintGlass(QPainter& painter) const
{
    const auto surface = innerRect();
    QImage ground((surface.size() / Metrics::reduction).expandedTo({1, 1}), QImage::Format_RGB32);
    ground.fill(Qt::black);
    if (paintGround) {
        QPainter groundPainter(&ground);
        groundPainter.scale(1.0 / Metrics::reduction, 1.0 / Metrics::reduction);
        groundPainter.translate(-mapToParent(surface.topLeft()));
        paintGround(groundPainter);
    }
    ground = blurred(ground, Metrics::blurRadius / 2 / Metrics::reduction);
    const auto tint =
        Metrics::lightestTint + (Metrics::darkestTint - Metrics::lightestTint) * luminance(ground);
    QPainterPath disc;
    disc.addEllipse(surface);
    QBrush brush(ground);
    brush.setTransform(QTransform::fromTranslate(surface.x(), surface.y())
                           .scale(static_cast<double>(surface.width()) / ground.width(),
                               static_cast<double>(surface.height()) / ground.height()));
    painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    painter.fillPath(disc, brush);
    painter.fillPath(disc, Theme::black(tint));
    painter.strokePath(disc, QPen(Theme::white(Metrics::hairlineOpacity), Metrics::hairlineWidth));
}

void CornerButton::paintEvent(QPaintEvent* /*event*/)
{
    if (m_opacity <= 0)
        return;
    QPainter painter(this);
    painter.setOpacity(m_opacity);
    Glass::shadow().paint(painter, innerRect(), side / 2.0);
    paintGlass(painter);
}

void CornerButton::placeContents()
{
    m_button->setGeometry(innerRect());
}

} // namespace Lumenote
