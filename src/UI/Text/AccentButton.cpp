#include "UI/Text/AccentButton.h"

#include "UI/Shared/FocusRing.h"
#include "UI/Shared/Glyphs.h"
#include "UI/Shared/Theme.h"

#include <QPainter>

#include <utility>

namespace Lumenote {

namespace {

namespace Metrics {
constexpr int height = 24;
constexpr double fontSize = 12;
constexpr double glyphBox = 27; ///< Of which the drawing takes the middle half.
constexpr int glyphAdvance = 18; ///< From the drawing's left edge to that of the label.
constexpr double hoverOpacity = 0.12;
constexpr double pressedOpacity = 0.22;
constexpr double disabledOpacity = 0.5;
} // namespace Metrics

} // namespace

AccentButton::AccentButton(
    const QString& name, QString glyph, const QString& label, int padding, QWidget* parent)
    : QAbstractButton(parent)
    , m_glyph(std::move(glyph))
    , m_padding(padding)
{
    setObjectName(name);
    setText(label);
    setFont(Theme::font(Metrics::fontSize, QFont::Medium));
    setFocusPolicy(Qt::TabFocus);
    setAttribute(Qt::WA_Hover);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QSize AccentButton::sizeHint() const
{
    const auto glyph = m_glyph.isEmpty() ? 0 : Metrics::glyphAdvance;
    return {2 * m_padding + glyph + fontMetrics().horizontalAdvance(text()), Metrics::height};
}

void AccentButton::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setOpacity(isEnabled() ? 1 : Metrics::disabledOpacity);
    painter.setPen(Qt::NoPen);
    const auto radius = height() / 2.0;
    const auto fill = [&](const QColor& color) {
        painter.setBrush(color);
        painter.drawRoundedRect(rect(), radius, radius);
    };
    fill(Theme::accent());
    if (isEnabled() && (isDown() || underMouse()))
        fill(Theme::white(isDown() ? Metrics::pressedOpacity : Metrics::hoverOpacity));

    QRectF label = rect().adjusted(m_padding, 0, -m_padding, 0);
    if (!m_glyph.isEmpty()) {
        QRectF box(0, 0, Metrics::glyphBox, Metrics::glyphBox);
        box.moveCenter({label.left() + Metrics::glyphBox / 4, label.center().y()});
        Glyphs::paint(painter, m_glyph, box, Qt::white);
        label.setLeft(label.left() + Metrics::glyphAdvance);
    }
    painter.setPen(Qt::white);
    painter.drawText(label, Qt::AlignCenter, text());
    if (hasFocus())
        FocusRing::paint(painter, rect(), radius);
}

bool AccentButton::event(QEvent* event)
{
    if (FocusRing::takesSpace(event))
        return true;
    return QAbstractButton::event(event);
}

} // namespace Lumenote
