#include "Scenes.h"
#include "Widgets.h"

#include <QLocale>

#include <cmath>

namespace Lumenote::Bench::Scenes {

using namespace Qt::StringLiterals;
using namespace Widgets;

void article(Page& page)
{
    const double u = page.unit();
    const Theme& theme = page.look.theme;
    const double width = 46 * u;
    const QString heading = page.texts.one("headings");
    QFont large = page.look.serif(1, QFont::Bold);
    const double widestFactor = (width - 4 * u) / Canvas::width(heading, large);
    large.setPixelSize(
        int(std::min<double>(page.random.between(40, 64), large.pixelSize() * widestFactor)));
    const QFont body = page.look.serif(1.15);
    const QString first = page.texts.one("paragraphs");
    const QString second = page.texts.one("paragraphs");
    const auto lines =
        wrapped(first, body, width - 4 * u).size() + wrapped(second, body, width - 4 * u).size();
    const double top = large.pixelSize() + 3 * u;
    page.canvas.begin({width, top + double(lines) * 1.7 * u + 4 * u}, theme.surface);
    page.canvas.write({2 * u, 1.0 * u + large.pixelSize()}, heading, large, theme.text);
    QFont italic = page.look.ui(0.95);
    italic.setItalic(true);
    page.canvas.write({2 * u, top + 0.6 * u},
        page.texts.one("people") + u", "_s + page.texts.longDate(), italic, theme.secondary);
    const double y =
        paragraph(page, {2 * u, top + 3.2 * u}, width - 4 * u, first, body, theme.text, 1.45);
    paragraph(page, {2 * u, y + 0.8 * u}, width - 4 * u, second, body, theme.text, 1.45);
}

void searchResults(Page& page)
{
    const double u = page.unit();
    const Theme& theme = page.look.theme;
    const double width = 44 * u;
    page.canvas.begin({width, 30 * u}, theme.surface);
    const QRectF search(1.5 * u, u, 30 * u, 2.6 * u);
    frame(page, search, theme.window, search.height() / 2);
    icon(page, {search.right() - 2.4 * u, search.top() + 0.7 * u, 1.2 * u, 1.2 * u}, 7,
        theme.secondary);
    page.canvas.writeIn(search.adjusted(1.4 * u, 0, 0, 0), Qt::AlignLeft,
        page.texts.one("headings").toLower(), page.look.ui(1.1), theme.text);
    const QColor link = theme.isDark() ? QColor(0x8a, 0xb4, 0xf8) : QColor(0x1a, 0x0d, 0xab);
    double y = 6.4 * u;
    for (int i = 0; i < 3; ++i) {
        page.canvas.write({1.5 * u, y}, page.texts.webAddress(), page.look.ui(0.9),
            theme.isDark() ? QColor(0x9a, 0xd0, 0xa0) : QColor(0x00, 0x66, 0x21));
        QFont title = page.look.ui(1.4);
        title.setUnderline(i == 1);
        page.canvas.write({1.5 * u, y + 2 * u}, page.texts.one("headings"), title, link);
        y = paragraph(page, {1.5 * u, y + 3.8 * u}, width - 4 * u,
            page.texts.date() + u" - "_s + page.texts.one("sentences"), page.look.ui(),
            theme.secondary);
        y += 1.4 * u;
    }
}

void chat(Page& page)
{
    const double u = page.unit();
    const Theme& theme = page.look.theme;
    const QFont font = page.look.ui();
    const double width = 36 * u;
    page.canvas.begin({width, 31 * u}, theme.window);
    double y = u;
    for (int i = 0; i < 6; ++i) {
        const bool isOwn = i % 3 == 1;
        const QStringList lines = wrapped(page.texts.one("messages"), font, 18 * u);
        const double bubbleWidth = widest(lines, font) + 5.5 * u;
        const double height = std::round(double(lines.size()) * 1.4 * u + 1.4 * u);
        const QRectF bubble(isOwn ? width - bubbleWidth - u : 4 * u, y, bubbleWidth, height);
        if (!isOwn) {
            avatar(page, {2.2 * u, y + 1.4 * u}, 1.2 * u);
            page.canvas.write({4.4 * u, y + 0.8 * u}, page.texts.one("people"),
                page.look.ui(0.85, QFont::DemiBold), theme.secondary);
            y += 1.4 * u;
        }
        const QRectF shifted = bubble.translated(0, y - bubble.top());
        box(page, shifted, isOwn ? theme.accent : theme.surface, 0.8 * u);
        double baseline = shifted.top() + 1.7 * u;
        for (const QString& each : lines) {
            page.canvas.write({shifted.left() + 0.9 * u, std::round(baseline)}, each, font,
                isOwn ? theme.onAccent : theme.text);
            baseline += 1.4 * u;
        }
        const QString time = page.texts.time();
        page.canvas.write({shifted.right() - Canvas::width(time, page.look.ui(0.8)) - 0.5 * u,
                              shifted.bottom() - 0.5 * u},
            time, page.look.ui(0.8), isOwn ? theme.onAccent : theme.secondary);
        y += height + 0.8 * u;
        if (y > 26 * u)
            break;
    }
}

void mailList(Page& page)
{
    const double u = page.unit();
    const Theme& theme = page.look.theme;
    const double row = std::round(4.6 * u);
    const double width = 40 * u;
    page.canvas.begin({width, 6 * row}, theme.surface);
    for (int i = 0; i < 6; ++i) {
        const QRectF rect(0, i * row, width, row);
        const bool isSelected = i == 2;
        if (isSelected)
            box(page, rect, theme.accent);
        const QColor strong = isSelected ? theme.onAccent : theme.text;
        const QColor weak = isSelected ? theme.onAccent : theme.secondary;
        avatar(page, {2.4 * u, rect.center().y()}, 1.4 * u);
        const QFont sender = page.look.ui(1, i % 2 == 0 ? QFont::Bold : QFont::Normal);
        page.canvas.write({5 * u, rect.top() + 1.9 * u}, page.texts.one("people"), sender, strong);
        const QString time = i < 3 ? page.texts.time() : page.texts.date();
        page.canvas.write(
            {width - u - Canvas::width(time, page.look.ui(0.9)), rect.top() + 1.9 * u}, time,
            page.look.ui(0.9), weak);
        const QString subject = wrapped(page.texts.one("sentences"), page.look.ui(), 33 * u)[0];
        page.canvas.write({5 * u, rect.top() + 3.7 * u}, subject, page.look.ui(), weak);
        line(page, rect.bottomLeft(), rect.bottomRight());
    }
}

void shop(Page& page)
{
    const double u = page.unit();
    const Theme& theme = page.look.theme;
    const double cardWidth = std::round(16 * u);
    page.canvas.begin({3 * cardWidth + 4 * u, 22 * u}, theme.window);
    const QString label = page.texts.one("buttons");
    for (int i = 0; i < 3; ++i) {
        const QRectF card(u + i * (cardWidth + u), u, cardWidth, 20 * u);
        frame(page, card, theme.surface, 0.5 * u);
        box(page, card.adjusted(1, 1, -1, -card.height() * 0.6),
            QColor::fromHsv(page.random.below(360), 60, theme.isDark() ? 90 : 225));
        icon(page, {card.center().x() - 2 * u, card.top() + 2 * u, 4 * u, 4 * u}, i + 3,
            theme.secondary);
        double y = paragraph(page, {card.left() + u, card.top() + 10 * u}, cardWidth - 2 * u,
            page.texts.one("products"), page.look.ui(), theme.text);
        page.canvas.write({card.left() + u, y + 0.8 * u}, page.texts.price(),
            page.look.ui(1.4, QFont::Bold), theme.text);
        button(page, {card.left() + u, card.bottom() - 3.2 * u, cardWidth - 2 * u, 2.3 * u},
            i == 1 ? page.texts.one("states") : label,
            i == 1 ? ButtonStyle::plain : ButtonStyle::accent);
    }
}

void dashboard(Page& page)
{
    const double u = page.unit();
    const Theme& theme = page.look.theme;
    QList<TextPair> cards;
    QStringList bodies;
    for (int i = 0; i < 4; ++i) {
        cards.append(page.texts.pair("cards"));
        bodies.append(cards.last().second);
    }
    const double cardWidth = widest(bodies, page.look.ui(0.9)) + 3 * u;
    page.canvas.begin({2 * cardWidth + 3 * u, 21 * u}, theme.window);
    for (int i = 0; i < 4; ++i) {
        const QPointF cell = gridCell(i, 2);
        const QRectF card(u + cell.x() * (cardWidth + u), u + cell.y() * 10 * u, cardWidth, 9 * u);
        frame(page, card, theme.surface, 6);
        page.canvas.write({card.left() + u, card.top() + 1.9 * u}, cards[i].first,
            page.look.ui(1, QFont::DemiBold), theme.secondary);
        page.canvas.write({card.left() + u, card.top() + 5.2 * u},
            i % 2 == 0 ? page.texts.integer(10, 99999) : page.texts.percent(),
            page.look.ui(2.6, QFont::Bold), i == 3 ? theme.accent : theme.text);
        page.canvas.write({card.left() + u, card.top() + 7.4 * u}, cards[i].second,
            page.look.ui(0.9), theme.secondary);
        progressBar(page, {card.left() + u, card.bottom() - 0.9 * u, cardWidth - 2 * u, 0.4 * u},
            page.random.unit());
    }
}

void chart(Page& page)
{
    const double u = page.unit();
    const Theme& theme = page.look.theme;
    constexpr int bars = 7;
    page.canvas.begin({42 * u, 24 * u}, theme.surface);
    page.canvas.writeIn({0, 0.5 * u, 42 * u, 2 * u}, Qt::AlignHCenter, page.texts.one("headings"),
        page.look.ui(1.2, QFont::Bold), theme.text);
    const QRectF plot(5 * u, 4 * u, 35 * u, 15 * u);
    const int step = page.random.between(1, 9) * 25;
    for (int i = 0; i <= 4; ++i) {
        const double y = plot.bottom() - i * plot.height() / 4;
        line(page, {plot.left(), y}, {plot.right(), y});
        page.canvas.writeIn({0, y - u, 4.4 * u, 2 * u}, Qt::AlignRight, QString::number(i * step),
            page.look.ui(0.85), theme.secondary);
    }
    const double slot = plot.width() / bars;
    const QLocale english(QLocale::English);
    for (int i = 0; i < bars; ++i) {
        const double height = plot.height() * (0.1 + 0.75 * page.random.unit());
        const double x = plot.left() + i * slot;
        box(page, {x + slot * 0.2, plot.bottom() - height, slot * 0.6, height}, theme.accent);
        page.canvas.writeIn({x, plot.bottom() + 0.3 * u, slot, 2 * u}, Qt::AlignHCenter,
            english.monthName((i + page.look.pixelSize) % 12 + 1, QLocale::ShortFormat),
            page.look.ui(0.85), theme.secondary);
        page.canvas.writeIn({x, plot.bottom() - height - 1.7 * u, slot, 1.6 * u}, Qt::AlignHCenter,
            page.texts.integer(10, 900), page.look.ui(0.85), theme.text);
    }
    const QColor other = theme.secondary;
    box(page, {plot.left(), 22 * u, u, u}, theme.accent);
    const double x = plot.left() + 1.6 * u;
    const double width =
        page.canvas.write({x, 22.9 * u}, page.texts.one("states"), page.look.ui(0.9), theme.text);
    box(page, {x + width + 2 * u, 22 * u, u, u}, other);
    page.canvas.write(
        {x + width + 3.6 * u, 22.9 * u}, page.texts.one("states"), page.look.ui(0.9), theme.text);
}

void comments(Page& page)
{
    const double u = page.unit();
    const Theme& theme = page.look.theme;
    const double width = 42 * u;
    page.canvas.begin({width, 28 * u}, theme.surface);
    double y = 2 * u;
    for (int i = 0; i < 3; ++i) {
        const double left = (i == 1 ? 6 : 3.8) * u;
        avatar(page, {left - 2 * u, y}, 1.3 * u);
        const double name = page.canvas.write(
            {left, y}, page.texts.one("people"), page.look.ui(1, QFont::Bold), theme.text);
        page.canvas.write(
            {left + name + u, y}, page.texts.longDate(), page.look.ui(0.9), theme.secondary);
        y = paragraph(page, {left, y + 1.7 * u}, width - left - 2 * u,
            page.texts.one("sentences") + u' ' + page.texts.one("sentences"), page.look.ui(),
            theme.text);
        const double first = page.canvas.write({left, y + 0.2 * u}, page.texts.one("actions"),
            page.look.ui(0.9, QFont::Medium), theme.accent);
        page.canvas.write({left + first + 2 * u, y + 0.2 * u}, page.texts.one("actions"),
            page.look.ui(0.9, QFont::Medium), theme.accent);
        y += 2.8 * u;
    }
}

void breadcrumbs(Page& page)
{
    const double u = page.unit();
    const Theme& theme = page.look.theme;
    const QFont font = page.look.ui();
    const QStringList folders = page.texts.several("folders", 4);
    const double width = widest({folders.join(u' ')}, font) + 18 * u;
    page.canvas.begin({std::max(width, 40 * u), 9 * u}, theme.window);
    double x = 1.5 * u;
    QPainter& painter = page.canvas.painter();
    for (const QString& folder : folders) {
        x += page.canvas.write(
            {x, 2.2 * u}, folder, font, folder == folders.last() ? theme.text : theme.secondary);
        if (folder == folders.last())
            break;
        painter.setPen(QPen(theme.secondary, 1.3));
        painter.setBrush(Qt::NoBrush);
        painter.drawPolyline(QPolygonF{QPointF(x + 1.2 * u, 1.3 * u), QPointF(x + 1.7 * u, 1.8 * u),
            QPointF(x + 1.2 * u, 2.3 * u)});
        x += 3 * u;
    }
    const QRectF bar(u, 3.6 * u, page.canvas.area().width() - 2 * u, rowHeight(page) + 2);
    field(page, bar, page.texts.webAddress());
    page.canvas.write({1.5 * u, 8.2 * u},
        u"/home/%1/%2/%3"_s.arg(page.texts.code("commands").section(u' ', 0, 0).toLower(),
            folders[1].section(u' ', 0, 0), page.texts.one("files").section(u' ', 0, 0)),
        page.look.monospace(0.95), theme.text);
}

void hero(Page& page)
{
    const double u = page.unit();
    const Theme& theme = page.look.theme;
    const QString heading = page.texts.one("headings");
    QFont large = page.look.ui(1, QFont::Bold);
    large.setPixelSize(page.random.between(44, 72));
    const QString body = page.texts.one("sentences");
    const double width =
        std::max(Canvas::width(heading, large), Canvas::width(body, page.look.ui())) + 6 * u;
    const double top = large.pixelSize() + 2 * u;
    page.canvas.begin({width, top + 9 * u}, theme.surface);
    page.canvas.write({2 * u, double(large.pixelSize()) + u}, heading, large, theme.text);
    page.canvas.write({2 * u, top + 2.4 * u}, body, page.look.ui(), theme.secondary);
    double x = 2 * u;
    for (int i = 0; i < 2; ++i) {
        const QString text = page.texts.one("buttons");
        const double each = buttonWidth(page, text);
        button(page, {x, top + 4.6 * u, each, rowHeight(page)}, text,
            i == 0 ? ButtonStyle::accent : ButtonStyle::plain);
        x += each + u;
    }
}

} // namespace Lumenote::Bench::Scenes
