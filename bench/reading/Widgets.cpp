#include "Widgets.h"

#include <QPainterPath>

#include <algorithm>
#include <cmath>

namespace Lumenote::Bench::Widgets {

namespace {
constexpr double rowFactor = 2.1;
constexpr double buttonPadding = 1.2;
constexpr int iconKinds = 8;

QPen thinPen(const QColor& colour)
{
    return {colour, 1};
}

/// The middle of the pixels that @p rect covers, where a thin pen draws sharp lines.
QRectF onPixels(const QRectF& rect)
{
    return QRectF(rect.toRect()).adjusted(0.5, 0.5, -0.5, -0.5);
}
} // namespace

double rowHeight(const Page& page)
{
    return std::round(page.unit() * rowFactor);
}

double buttonWidth(const Page& page, const QString& text)
{
    return std::ceil(
        Canvas::width(text, page.look.ui(1, QFont::Medium)) + 2 * buttonPadding * page.unit());
}

void line(Page& page, QPointF from, QPointF to)
{
    QPainter& painter = page.canvas.painter();
    painter.setPen(thinPen(page.look.theme.line));
    const QPointF half(0.5, 0.5);
    painter.drawLine(from.toPoint() + half, to.toPoint() + half);
}

void box(Page& page, const QRectF& rect, const QColor& fill, double radius)
{
    QPainter& painter = page.canvas.painter();
    painter.setPen(Qt::NoPen);
    painter.setBrush(fill);
    painter.drawRoundedRect(QRectF(rect.toRect()), radius, radius);
}

void frame(Page& page, const QRectF& rect, const QColor& fill, double radius)
{
    QPainter& painter = page.canvas.painter();
    painter.setPen(thinPen(page.look.theme.line));
    painter.setBrush(fill);
    painter.drawRoundedRect(onPixels(rect), radius, radius);
}

void button(Page& page, const QRectF& rect, const QString& text, ButtonStyle style)
{
    const Theme& theme = page.look.theme;
    const double radius = page.unit() * 0.4;
    if (style == ButtonStyle::accent)
        box(page, rect, theme.accent, radius);
    else if (style == ButtonStyle::plain)
        frame(page, rect, theme.surface, radius);
    page.canvas.writeIn(rect, Qt::AlignHCenter, text, page.look.ui(1, QFont::Medium),
        style == ButtonStyle::accent ? theme.onAccent : theme.text);
}

void buttonRow(Page& page, double right, double top, const QStringList& texts)
{
    for (qsizetype i = texts.size() - 1; i >= 0; --i) {
        const double width = buttonWidth(page, texts[i]);
        right -= width;
        button(page, {right, top, width, rowHeight(page)}, texts[i],
            i == texts.size() - 1 ? ButtonStyle::accent : ButtonStyle::plain);
        right -= page.unit() * 0.7;
    }
}

void checkBox(Page& page, QPointF centre, bool isChecked)
{
    const double half = std::round(page.unit() * 0.5);
    const QRectF rect(centre - QPointF(half, half), QSizeF(2 * half, 2 * half));
    const Theme& theme = page.look.theme;
    frame(page, rect, isChecked ? theme.accent : theme.surface, 2);
    if (!isChecked)
        return;
    QPainter& painter = page.canvas.painter();
    painter.setPen(QPen(theme.onAccent, std::max(1.5, half / 4), Qt::SolidLine, Qt::RoundCap));
    painter.drawPolyline(QPolygonF{centre + QPointF(-0.5, 0) * half,
        centre + QPointF(-0.1, 0.4) * half, centre + QPointF(0.6, -0.5) * half});
}

void radioButton(Page& page, QPointF centre, bool isChosen)
{
    const double radius = std::round(page.unit() * 0.5) - 0.5;
    const Theme& theme = page.look.theme;
    QPainter& painter = page.canvas.painter();
    painter.setPen(thinPen(isChosen ? theme.accent : theme.line));
    painter.setBrush(theme.surface);
    painter.drawEllipse(centre, radius, radius);
    if (!isChosen)
        return;
    painter.setPen(Qt::NoPen);
    painter.setBrush(theme.accent);
    painter.drawEllipse(centre, radius / 2, radius / 2);
}

void toggle(Page& page, QPointF centre, bool isOn)
{
    const Theme& theme = page.look.theme;
    const double height = std::round(page.unit() * 1.2);
    const QRectF rect(centre.x() - height, centre.y() - height / 2, 2 * height, height);
    box(page, rect, isOn ? theme.accent : theme.line, height / 2);
    QPainter& painter = page.canvas.painter();
    painter.setBrush(Qt::white);
    const double x = isOn ? rect.right() - height / 2 : rect.left() + height / 2;
    painter.drawEllipse(QPointF(x, centre.y()), height * 0.4, height * 0.4);
}

void field(Page& page, const QRectF& rect, const QString& text)
{
    frame(page, rect, page.look.theme.surface, page.unit() * 0.25);
    page.canvas.writeIn(rect.adjusted(page.unit() * 0.6, 0, 0, 0), Qt::AlignLeft, text,
        page.look.ui(), page.look.theme.text);
}

void progressBar(Page& page, const QRectF& rect, double part)
{
    const double radius = rect.height() / 2;
    box(page, rect, page.look.theme.line, radius);
    box(page, {rect.topLeft(), QSizeF(rect.width() * part, rect.height())}, page.look.theme.accent,
        radius);
}

void scrollBar(Page& page, const QRectF& rect, double part)
{
    box(page, rect, page.look.theme.window);
    box(page,
        {rect.left() + 2, rect.top() + rect.height() * 0.1, rect.width() - 4, rect.height() * part},
        page.look.theme.disabled, rect.width() / 2);
}

void icon(Page& page, const QRectF& rect, int kind, const QColor& colour)
{
    QPainter& painter = page.canvas.painter();
    const QRectF r = onPixels(rect);
    const QPointF c = r.center();
    const double w = r.width();
    painter.setPen(QPen(colour, std::max(1.0, w / 10)));
    painter.setBrush(Qt::NoBrush);
    switch (kind % iconKinds) {
    case 0: // A folder.
        painter.setBrush(colour);
        painter.drawRect(QRectF(r.left(), r.top() + w * 0.25, w, w * 0.6));
        painter.drawRect(QRectF(r.left(), r.top() + w * 0.1, w * 0.4, w * 0.2));
        break;
    case 1: // A page with a bent corner.
        painter.drawPolygon(QPolygonF{r.topLeft() + QPointF(w * 0.15, 0),
            r.topLeft() + QPointF(w * 0.6, 0), r.topLeft() + QPointF(w * 0.85, w * 0.25),
            r.bottomRight() - QPointF(w * 0.15, 0), r.bottomLeft() + QPointF(w * 0.15, 0)});
        break;
    case 2: // A gear.
        painter.drawEllipse(c, w * 0.2, w * 0.2);
        painter.drawEllipse(c, w * 0.42, w * 0.42);
        break;
    case 3: // A picture of two hills.
        painter.drawRect(r);
        painter.setBrush(colour);
        painter.drawPolygon(QPolygonF{r.bottomLeft(), r.bottomLeft() + QPointF(w * 0.35, -w * 0.6),
            r.bottomLeft() + QPointF(w * 0.7, 0)});
        break;
    case 4: // A bell.
        painter.setBrush(colour);
        painter.drawChord(r.adjusted(w * 0.15, w * 0.1, -w * 0.15, w * 0.3), 0, 180 * 16);
        painter.drawEllipse(QPointF(c.x(), r.bottom() - w * 0.12), w * 0.1, w * 0.1);
        break;
    case 5: // A heart of two circles and a wedge.
        painter.setPen(Qt::NoPen);
        painter.setBrush(colour);
        painter.drawEllipse(c + QPointF(-w * 0.2, -w * 0.1), w * 0.23, w * 0.23);
        painter.drawEllipse(c + QPointF(w * 0.2, -w * 0.1), w * 0.23, w * 0.23);
        painter.drawPolygon(QPolygonF{
            c + QPointF(-w * 0.41, 0), c + QPointF(w * 0.41, 0), c + QPointF(0, w * 0.45)});
        break;
    case 6: // An arrow down onto a tray.
        painter.drawLine(QPointF(c.x(), r.top()), QPointF(c.x(), c.y() + w * 0.2));
        painter.drawPolyline(QPolygonF{
            c + QPointF(-w * 0.25, 0), c + QPointF(0, w * 0.25), c + QPointF(w * 0.25, 0)});
        painter.drawLine(r.bottomLeft(), r.bottomRight());
        break;
    default: // A lens.
        painter.drawEllipse(c - QPointF(w * 0.1, w * 0.1), w * 0.3, w * 0.3);
        painter.drawLine(c + QPointF(w * 0.14, w * 0.14), r.bottomRight());
        break;
    }
}

void avatar(Page& page, QPointF centre, double radius)
{
    QPainter& painter = page.canvas.painter();
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor::fromHsv(page.random.below(360), 120, 190));
    painter.drawEllipse(centre, radius, radius);
    painter.setBrush(QColor(255, 255, 255, 180));
    painter.drawEllipse(centre - QPointF(0, radius * 0.25), radius * 0.35, radius * 0.35);
    painter.drawChord(
        QRectF(centre.x() - radius * 0.6, centre.y() + radius * 0.2, radius * 1.2, radius * 1.2),
        30 * 16, 120 * 16);
}

double titleBar(Page& page, const QString& title)
{
    const double height = rowHeight(page) + 4;
    const Theme& theme = page.look.theme;
    const double right = page.canvas.area().right();
    box(page, {0, 0, right, height}, theme.isDark() ? theme.window.lighter(130) : theme.line);
    page.canvas.writeIn(
        {0, 0, right, height}, Qt::AlignHCenter, title, page.look.ui(1, QFont::Bold), theme.text);
    QPainter& painter = page.canvas.painter();
    painter.setPen(QPen(theme.text, 1.2));
    const double arm = page.unit() * 0.28;
    const double y = height / 2;
    double x = right - height * 0.6;
    painter.drawLine(QPointF(x - arm, y - arm), QPointF(x + arm, y + arm));
    painter.drawLine(QPointF(x - arm, y + arm), QPointF(x + arm, y - arm));
    x -= page.unit() * 1.8;
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(QRectF(x - arm, y - arm, 2 * arm, 2 * arm));
    x -= page.unit() * 1.8;
    painter.drawLine(QPointF(x - arm, y + arm), QPointF(x + arm, y + arm));
    return height;
}

double paragraph(Page& page, QPointF baseline, double width, const QString& text, const QFont& font,
    const QColor& colour, double lineFactor)
{
    for (const QString& each : wrapped(text, font, width)) {
        page.canvas.write(baseline, each, font, colour);
        baseline.ry() += std::round(font.pixelSize() * lineFactor);
    }
    return baseline.y();
}

QPointF gridCell(int index, int columns)
{
    return {double(index % columns), std::floor(double(index) / columns)};
}

double widest(const QStringList& texts, const QFont& font)
{
    double width = 0;
    for (const QString& text : texts)
        width = std::max(width, Canvas::width(text, font));
    return std::ceil(width);
}

} // namespace Lumenote::Bench::Widgets
