#include "UI/Shared/GlyphButton.h"

#include "UI/Shared/FocusRing.h"
#include "UI/Shared/Glyphs.h"
#include "UI/Shared/Theme.h"

#include <QEvent>
#include <QPainter>

#include <utility>

namespace Lumenote {

namespace {

namespace Metrics {
constexpr double outlineWidth = 0.5;
constexpr double disabledOpacity = 0.5;
constexpr double hoverOpacity = 0.12;
constexpr double pressedOpacity = 0.22;
} // namespace Metrics

} // namespace

GlyphButton::GlyphButton(const QString& name, QString glyph, QWidget* parent)
    : QAbstractButton(parent)
    , m_glyph(std::move(glyph))
{
    setObjectName(name);
    setFocusPolicy(Qt::TabFocus);
    setAttribute(Qt::WA_Hover);
    resize(side, side);
}

void GlyphButton::setGlyph(const QString& glyph)
{
    if (glyph == m_glyph)
        return;
    m_glyph = glyph;
    update();
}

void GlyphButton::setActive(bool isActive)
{
    if (isActive == m_isActive)
        return;
    m_isActive = isActive;
    update();
}

void GlyphButton::setOpacity(double opacity)
{
    m_opacity = opacity;
    update();
}

void GlyphButton::setGlyphSide(double side)
{
    m_glyphSide = side;
    update();
}

void GlyphButton::setSurface(const QColor& fill, const QColor& outline)
{
    m_fill = fill;
    m_outline = outline;
    update();
}

void GlyphButton::paintDisc(QPainter& painter, const QColor& fill, const QColor& outline) const
{
    const auto inset = Metrics::outlineWidth / 2;
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(outline, Metrics::outlineWidth));
    painter.setBrush(fill);
    painter.drawEllipse(QRectF(rect()).adjusted(inset, inset, -inset, -inset));
}

void GlyphButton::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    painter.setOpacity(m_opacity * (isEnabled() ? 1 : Metrics::disabledOpacity));
    paintDisc(painter, m_isActive ? Theme::accent() : m_fill, m_outline);
    if (isEnabled() && (isDown() || underMouse()))
        paintDisc(painter, Theme::white(isDown() ? Metrics::pressedOpacity : Metrics::hoverOpacity),
            Qt::transparent);
    const auto glyphSide = m_glyphSide > 0 ? m_glyphSide : width();
    QRectF box(0, 0, glyphSide, glyphSide);
    box.moveCenter(QRectF(rect()).center());
    if (!m_glyph.isEmpty())
        Glyphs::paint(painter, m_glyph, box, Qt::white);
    if (hasFocus())
        FocusRing::paint(painter, rect(), width() / 2.0);
}

bool GlyphButton::hitButton(const QPoint& position) const
{
    const auto fromCentre = QPointF(position) - QRectF(rect()).center();
    const auto radius = width() / 2.0;
    return QPointF::dotProduct(fromCentre, fromCentre) <= radius * radius;
}

/// Space presses the button rather than doing what it stands for elsewhere in the window.
bool GlyphButton::event(QEvent* event)
{
    if (FocusRing::takesSpace(event))
        return true;
    if (event->type() == QEvent::FocusIn || event->type() == QEvent::FocusOut)
        emit focusChanged();
    return QAbstractButton::event(event);
}

} // namespace Lumenote
