#include "Capture/OverlayText.h"

#include <QFontDatabase>
#include <QFontMetricsF>
#include <QPainter>

#include <algorithm>

namespace Lumenote::OverlayText {

namespace {

constexpr int plainSize = 12;
constexpr int readoutSize = 11;

QFont font(Style style)
{
    auto font = QFontDatabase::systemFont(QFontDatabase::GeneralFont);
    font.setPixelSize(style == Style::plain ? plainSize : readoutSize);
    font.setWeight(QFont::Medium);
    // Coloured fringes need an opaque ground, and an overlay has none.
    font.setStyleStrategy(QFont::NoSubpixelAntialias);
    return font;
}

double digitWidth(const QFontMetricsF& metrics)
{
    double width = 0;
    for (char16_t digit = u'0'; digit <= u'9'; ++digit)
        width = std::max(width, metrics.horizontalAdvance(QChar(digit)));
    return width;
}

/// Calls @p place with each letter, the left edge of its cell and the cell's width; answers the
/// width of all cells.
template <typename Place>
double forEachCell(const QFontMetricsF& metrics, const QString& text, Place place)
{
    const double digit = digitWidth(metrics);
    double x = 0;
    for (const auto letter : text) {
        const double width = letter.isDigit() ? digit : metrics.horizontalAdvance(letter);
        place(letter, x, width);
        x += width;
    }
    return x;
}

} // namespace

QSizeF size(Style style, const QString& text)
{
    const QFontMetricsF metrics(font(style));
    const double width = style == Style::plain
        ? metrics.horizontalAdvance(text)
        : forEachCell(metrics, text, [](QChar, double, double) {});
    return {width, metrics.height()};
}

void draw(QPainter& painter, Style style, const QString& text, QPointF topLeft, const QColor& ink)
{
    painter.setFont(font(style));
    painter.setPen(ink);
    const QFontMetricsF metrics(painter.font());
    const auto baseline = topLeft + QPointF(0, metrics.ascent());
    if (style == Style::plain) {
        painter.drawText(baseline, text);
        return;
    }
    forEachCell(metrics, text, [&](QChar letter, double x, double width) {
        const double margin = (width - metrics.horizontalAdvance(letter)) / 2;
        painter.drawText(baseline + QPointF(x + margin, 0), letter);
    });
}

} // namespace Lumenote::OverlayText
