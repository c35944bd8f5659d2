#include "Photograph.h"
#include "Scenes.h"
#include "Widgets.h"

#include <cmath>

namespace Lumenote::Bench::Scenes {

using namespace Widgets;

void gradients(Page& page)
{
    page.canvas.begin({640, 360}, Qt::white);
    QPainter& painter = page.canvas.painter();
    for (int i = 0; i < 6; ++i) {
        const QPointF cell = gridCell(i, 3);
        const QRectF rect(cell.x() * 213, cell.y() * 180, 214, 180);
        QLinearGradient linear(rect.topLeft(), rect.bottomRight());
        QRadialGradient radial(rect.center(), 110);
        QGradient& gradient = i % 2 == 0 ? static_cast<QGradient&>(linear) : radial;
        gradient.setColorAt(0, QColor::fromHsv(page.random.below(360), 150, 240));
        gradient.setColorAt(1, QColor::fromHsv(page.random.below(360), 200, 120));
        painter.fillRect(rect, gradient);
    }
}

void photograph(Page& page)
{
    page.canvas.begin({900, 600}, Qt::black);
    page.canvas.painter().drawImage(
        0, 0, Bench::photograph({900, 600}, page.random, 0.5 + page.random.unit() / 2));
}

void bareSkyline(Page& page)
{
    page.canvas.begin({900, 500}, Qt::black);
    QImage city = Bench::photograph({900, 500}, page.random, 0.6);
    addSkyline(city, page.random);
    page.canvas.painter().drawImage(0, 0, city);
}

void iconBar(Page& page)
{
    const double u = page.unit();
    page.canvas.begin({40 * u, 7 * u}, page.look.theme.window);
    for (int i = 0; i < 24; ++i) {
        const QPointF cell = gridCell(i, 12);
        const QRectF rect((1 + cell.x() * 3.2) * u, (1 + cell.y() * 3) * u, 1.6 * u, 1.6 * u);
        if (i % 7 == 3)
            box(page, rect.adjusted(-4, -4, 4, 4), page.look.theme.accent, 4);
        icon(page, rect, i, i % 7 == 3 ? page.look.theme.onAccent : page.look.theme.text);
    }
}

void bareCharts(Page& page)
{
    const Theme& theme = page.look.theme;
    page.canvas.begin({720, 400}, theme.surface);
    for (int i = 0; i < 6; ++i)
        line(page, {30.0, 40.0 + i * 50}, {340.0, 40.0 + i * 50});
    for (int i = 0; i < 9; ++i) {
        const double height = 30 + 200 * page.random.unit();
        box(page, {40.0 + i * 33, 290 - height, 20, height}, theme.accent);
    }
    QPainter& painter = page.canvas.painter();
    QPolygonF curve;
    for (int x = 0; x < 320; x += 8)
        curve.append({380.0 + x, 130 - 60 * std::sin(x / 40.0) * page.random.unit()});
    painter.setPen(QPen(theme.accent, 2));
    painter.setBrush(Qt::NoBrush);
    painter.drawPolyline(curve);
    painter.setPen(Qt::NoPen);
    int start = 0;
    for (int i = 0; i < 5; ++i) {
        const int span = i == 4 ? 5760 - start : page.random.between(500, 1400);
        painter.setBrush(QColor::fromHsv(i * 70, 160, 200));
        painter.drawPie(QRectF(470, 220, 150, 150), start, span);
        start += span;
    }
}

void patterns(Page& page)
{
    page.canvas.begin({600, 450}, Qt::white);
    QPainter& painter = page.canvas.painter();
    painter.setPen(Qt::NoPen);
    painter.setRenderHint(QPainter::Antialiasing, false);
    const int step = page.random.between(3, 8);
    for (int y = 0; y < 150; y += step)
        for (int x = y / step % 2 * step; x < 300; x += 2 * step)
            painter.fillRect(x, y, step, step, page.look.theme.text);
    for (int x = 300; x < 600; x += 2 * step)
        painter.fillRect(x, 0, step, 150, page.look.theme.accent);
    for (int y = 150; y < 300; y += 2 * step)
        painter.fillRect(0, y, 300, step, page.look.theme.secondary);
    for (int y = 150; y < 300; ++y)
        for (int x = 300; x < 600; ++x)
            if (page.random.below(300) < x - 300)
                painter.fillRect(x, y, 1, 1, Qt::black);
    painter.setBrush(QBrush(page.look.theme.text, Qt::DiagCrossPattern));
    painter.drawRect(0, 300, 300, 150);
    for (int i = 0; i < 60; ++i)
        painter.fillRect(300 + i % 12 * 25, 302 + i / 12 * 30, 20, 24,
            QColor::fromHsv(page.random.below(360), page.random.below(255), 200));
}

void bars(Page& page)
{
    page.canvas.begin({520, 320}, page.look.theme.window);
    for (int i = 0; i < 6; ++i)
        progressBar(page, {30, 30.0 + i * 30, 380, 6.0 + i * 2}, page.random.unit());
    for (int i = 0; i < 5; ++i) {
        toggle(page, {60.0 + i * 60, 240}, i % 2 == 0);
        checkBox(page, {60.0 + i * 60, 275}, i % 3 == 0);
        radioButton(page, {60.0 + i * 60, 300}, i == 2);
    }
    scrollBar(page, {500, 0, 14, 320}, 0.3);
}

void avatars(Page& page)
{
    page.canvas.begin({640, 300}, page.look.theme.surface);
    for (int i = 0; i < 15; ++i) {
        const QPointF cell = gridCell(i, 5);
        avatar(page, {70 + cell.x() * 125, 55 + cell.y() * 95}, 22.0 + i % 4 * 6);
    }
}

void emptyWindow(Page& page)
{
    const Theme& theme = page.look.theme;
    page.canvas.begin({800, 500}, theme.window);
    frame(page, {20, 20, 760, 460}, theme.surface, 8);
    line(page, {20, 60}, {780, 60});
    line(page, {220, 60}, {220, 480});
    for (int i = 0; i < 8; ++i)
        box(page, {40, 80.0 + i * 34, 100.0 + page.random.below(60), 10}, theme.line, 5);
    for (int i = 0; i < 3; ++i)
        frame(page, {250.0 + i * 175, 90, 150, 110}, theme.window, 6);
    avatar(page, {750, 40}, 12);
}

} // namespace Lumenote::Bench::Scenes
