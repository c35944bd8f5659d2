#include "Scenes.h"
#include "Widgets.h"

namespace Lumenote::Bench::Scenes {

using namespace Qt::StringLiterals;
using namespace Widgets;

namespace {
/// Titles side by side, the first one with its menu open.
void menuBar(Page& page, double left, double height, const QStringList& titles)
{
    const double u = page.unit();
    const QFont font = page.look.ui();
    const Theme& theme = page.look.theme;
    double x = left;
    for (const QString& title : titles) {
        const double width = Canvas::width(title, font);
        const bool isOpen = x == left;
        if (isOpen)
            box(page, {x - 0.6 * u, 2, width + 1.2 * u, height - 2}, theme.accent, 3);
        page.canvas.writeIn({x, 0, width + 1, height}, Qt::AlignLeft, title, font,
            isOpen ? theme.onAccent : theme.text);
        x += width + 1.4 * u;
    }
}

void menuItem(Page& page, const QRectF& rect, const TextPair& item, int index, bool isSelected)
{
    const double u = page.unit();
    const QFont font = page.look.ui();
    const Theme& theme = page.look.theme;
    QColor colour = theme.text;
    QColor shortcutColour = theme.secondary;
    if (isSelected) {
        box(page, rect.adjusted(2, 0, -2, 0), theme.accent, 3);
        colour = shortcutColour = theme.onAccent;
    } else if (index % 5 == 4) {
        colour = shortcutColour = theme.disabled;
    }
    if (index % 4 == 3)
        line(page, rect.topLeft() + QPointF(u, 0), rect.topRight() - QPointF(u, 0));
    if (index % 3 == 0)
        icon(page, {rect.left() + 0.6 * u, rect.center().y() - 0.5 * u, u, u}, index, colour);
    page.canvas.writeIn(rect.adjusted(2.4 * u, 0, 0, 0), Qt::AlignLeft, item.first, font, colour);
    page.canvas.writeIn(
        rect.adjusted(0, 0, -1.2 * u, 0), Qt::AlignRight, item.second, font, shortcutColour);
}
} // namespace

void dialog(Page& page)
{
    const double u = page.unit();
    const QFont bold = page.look.ui(1.25, QFont::Bold);
    const QFont plain = page.look.ui();
    const QString title = page.texts.one("headings");
    const QString body = page.texts.one("sentences") + u' ' + page.texts.one("sentences");
    const QStringList buttons = page.texts.several("buttons", 3);
    double buttonsWidth = 3 * u;
    for (const QString& button : buttons)
        buttonsWidth += buttonWidth(page, button) + u;
    const double width = std::max(34 * u, buttonsWidth);
    const double textLeft = 6 * u;
    const auto lines = wrapped(body, plain, width - textLeft - 2 * u).size();
    const double height = std::round(11 * u + double(lines) * 1.45 * u);

    page.canvas.begin({width, height}, page.look.theme.window);
    const double top = titleBar(page, title);
    icon(page, {1.7 * u, top + 1.6 * u, 2.8 * u, 2.8 * u}, page.random.below(8),
        page.look.theme.accent);
    page.canvas.write(
        {textLeft, top + 2.6 * u}, page.texts.one("actions"), bold, page.look.theme.text);
    paragraph(page, {textLeft, top + 4.8 * u}, width - textLeft - 2 * u, body, plain,
        page.look.theme.text);
    buttonRow(page, width - 1.2 * u, height - rowHeight(page) - u, buttons);
}

void menu(Page& page)
{
    const double u = page.unit();
    const QFont font = page.look.ui();
    const Theme& theme = page.look.theme;
    const int count = page.random.between(7, 11);
    QList<TextPair> items;
    QStringList labels;
    for (int i = 0; i < count; ++i) {
        items.append(page.texts.pair("menu"));
        labels.append(items.last().first + items.last().second);
    }
    const double row = rowHeight(page);
    const double width = widest(labels, font) + 9 * u;
    const double barHeight = row + 2;
    const double left = 1.5 * u;
    const QStringList bar = page.texts.several("menus", 5);
    const double barWidth = widest({bar.join(u' ')}, font) + 9 * u;

    page.canvas.begin(
        {std::max(width + 4 * u, barWidth), barHeight + count * row + 3 * u}, theme.window);
    menuBar(page, left, barHeight, bar);
    frame(page, {left - 0.6 * u, barHeight, width, count * row + u}, theme.surface, 3);
    const int selected = page.random.below(count);
    for (int i = 0; i < count; ++i)
        menuItem(page, {left - 0.6 * u, barHeight + 0.5 * u + i * row, width, row}, items[i], i,
            i == selected);
}

void toolBar(Page& page)
{
    const double u = page.unit();
    const QFont font = page.look.ui(0.92);
    const QStringList labels = page.texts.several("actions", 8);
    const QStringList tabs = page.texts.several("tabs", 4);
    double width = 2 * u;
    for (const QString& label : labels)
        width += std::max(3 * u, Canvas::width(label, font)) + 1.6 * u;
    const double barHeight = std::round(4.4 * u);
    const double row = rowHeight(page) + 4;
    width = std::max(width, widest({tabs.join(u' ')}, page.look.ui()) + 16 * u);

    page.canvas.begin({width, barHeight + row + 3 * u}, page.look.theme.window);
    const Theme& theme = page.look.theme;
    double x = u;
    for (qsizetype i = 0; i < labels.size(); ++i) {
        const double slot = std::max(3 * u, Canvas::width(labels[i], font)) + 0.4 * u;
        icon(page, {std::round(x + slot / 2 - 0.8 * u), 0.6 * u, 1.6 * u, 1.6 * u}, int(i),
            i == 2 ? theme.disabled : theme.accent);
        page.canvas.writeIn({x, 2.5 * u, slot, 1.5 * u}, Qt::AlignHCenter, labels[i], font,
            i == 2 ? theme.disabled : theme.text);
        x += slot + 1.2 * u;
        if (i % 3 == 2)
            line(page, {x - 0.6 * u, 0.6 * u}, {x - 0.6 * u, barHeight - 0.6 * u});
    }
    line(page, {0, barHeight}, {width, barHeight});
    x = u;
    for (const QString& tab : tabs) {
        const double tabWidth = Canvas::width(tab, page.look.ui()) + 2.6 * u;
        const QRectF rect(x, barHeight + 0.4 * u, tabWidth, row);
        const bool isCurrent = tab == tabs[1];
        if (isCurrent)
            frame(page, rect, theme.surface, 4);
        page.canvas.writeIn(
            rect, Qt::AlignHCenter, tab, page.look.ui(), isCurrent ? theme.text : theme.secondary);
        x += tabWidth + 4;
    }
    frame(page, {0, barHeight + 0.4 * u + row, width, 3 * u}, theme.surface);
}

void settings(Page& page)
{
    const double u = page.unit();
    const QFont font = page.look.ui();
    const Theme& theme = page.look.theme;
    const QStringList tabs = page.texts.several("tabs", 4);
    const QStringList options = page.texts.several("options", 6);
    const double width =
        std::max(widest(options, font) + 8 * u, widest({tabs.join(u' ')}, font) + 12 * u);
    const double row = rowHeight(page);
    const double top = std::round(3.2 * u);

    page.canvas.begin({width, top + 6 * row + 5 * u}, theme.window);
    double x = 1.2 * u;
    for (const QString& tab : tabs) {
        const double tabWidth = Canvas::width(tab, font);
        page.canvas.writeIn({x, 0, tabWidth + 1, top}, Qt::AlignLeft, tab, font,
            tab == tabs[0] ? theme.accent : theme.text);
        if (tab == tabs[0])
            box(page, {x, top - 3, tabWidth, 3}, theme.accent);
        x += tabWidth + 2 * u;
    }
    line(page, {0, top}, {width, top});
    page.canvas.write({1.2 * u, top + 2.1 * u}, page.texts.one("headings"),
        page.look.ui(1.15, QFont::Bold), theme.text);
    for (int i = 0; i < 6; ++i) {
        const QRectF rect(1.2 * u, top + 3.2 * u + i * row, width - 1.6 * u, row);
        const bool isDisabled = i == 4;
        if (page.look.pixelSize % 2 == 0)
            checkBox(page, {rect.left() + 0.6 * u, rect.center().y()}, i % 2 == 0);
        else
            toggle(page, {rect.left() + u, rect.center().y()}, i % 3 != 1);
        page.canvas.writeIn(rect.adjusted(3 * u, 0, 0, 0), Qt::AlignLeft, options[i], font,
            isDisabled ? theme.disabled : theme.text);
    }
}

void radioList(Page& page)
{
    const double u = page.unit();
    const QFont font = page.look.ui();
    const QStringList options = page.texts.several("options", 4);
    const QStringList tabs = page.texts.several("tabs", 3);
    const double row = rowHeight(page);
    const double width = widest(options, font) + 7 * u;
    page.canvas.begin({width, 4 * row + 3 * row + 4 * u}, page.look.theme.surface);
    const Theme& theme = page.look.theme;
    page.canvas.write(
        {u, 1.8 * u}, page.texts.one("headings"), page.look.ui(1, QFont::Bold), theme.text);
    double y = 2.6 * u;
    for (int i = 0; i < 4; ++i, y += row) {
        radioButton(page, {1.9 * u, y + row / 2}, i == 1);
        page.canvas.writeIn(
            {3.4 * u, y, width - 3.5 * u, row}, Qt::AlignLeft, options[i], font, theme.text);
    }
    line(page, {u, y + 0.3 * u}, {width - u, y + 0.3 * u});
    y += 0.6 * u;
    for (int i = 0; i < 3; ++i, y += row) {
        page.canvas.writeIn({1.4 * u, y, width, row}, Qt::AlignLeft, tabs[i], font, theme.text);
        page.canvas.writeIn({1.4 * u, y, width - 2.8 * u, row}, Qt::AlignRight,
            page.texts.percent(), font, theme.secondary);
    }
}

void form(Page& page)
{
    const double u = page.unit();
    const QFont font = page.look.ui();
    QList<TextPair> fields;
    QStringList labels;
    QStringList values;
    for (int i = 0; i < 6; ++i) {
        fields.append(page.texts.pair("fields"));
        labels.append(fields.last().first + u':');
        values.append(fields.last().second);
    }
    const double labelWidth = widest(labels, font);
    const double fieldWidth = std::max(16 * u, widest(values, font) + 3 * u);
    const double row = rowHeight(page) + 0.7 * u;
    const QStringList buttons = page.texts.several("buttons", 2);
    const double width = std::max(labelWidth + fieldWidth + 4 * u,
        buttonWidth(page, buttons[0]) + buttonWidth(page, buttons[1]) + 4 * u);

    page.canvas.begin({width, 6 * row + 5 * u + rowHeight(page)}, page.look.theme.window);
    double y = 1.5 * u;
    for (int i = 0; i < 6; ++i, y += row) {
        page.canvas.writeIn({1.2 * u, y, labelWidth + 1, rowHeight(page)}, Qt::AlignRight,
            labels[i], font, page.look.theme.text);
        field(page, {labelWidth + 2.2 * u, y, fieldWidth, rowHeight(page)}, values[i]);
    }
    line(page, {u, y + 0.4 * u}, {width - u, y + 0.4 * u});
    buttonRow(page, width - 1.5 * u, y + 1.2 * u, buttons);
}

void colouredButtons(Page& page)
{
    const double u = page.unit();
    const QList<QRgb> colours{
        0xd9534f, 0x2e7d32, 0xf0ad4e, 0x0078d4, 0x6f42c1, 0x343a40, 0x00897b, 0xc2185b, 0xffd54f};
    page.canvas.begin({32 * u, 13 * u}, page.look.theme.window);
    double y = 1.2 * u;
    double x = 1.2 * u;
    for (int i = 0; i < 8; ++i) {
        const QColor colour = QColor::fromRgb(colours[(page.look.pixelSize + i) % colours.size()]);
        const QString text = page.texts.one("buttons");
        const QFont font = page.look.ui(i % 3 == 0 ? 1.2 : 1, QFont::DemiBold);
        const double width = std::ceil(Canvas::width(text, font) + 2.6 * u);
        if (x + width > 31 * u) {
            x = 1.2 * u;
            y += 3.4 * u;
        }
        if (y + 2.6 * u > 13 * u)
            return;
        const QRectF rect(x, y, width, 2.6 * u);
        box(page, rect, colour, i % 2 == 0 ? 1.3 * u : 4);
        page.canvas.writeIn(rect, Qt::AlignHCenter, text, font,
            qGray(colour.rgb()) > 150 ? QColor(0x21, 0x25, 0x29) : QColor(Qt::white));
        x += width + u;
    }
}

void badges(Page& page)
{
    const double u = page.unit();
    const Theme& theme = page.look.theme;
    page.canvas.begin({30 * u, 14 * u}, theme.surface);
    const QList<QRgb> colours{0xe53935, 0x1e88e5, 0x43a047, 0x5e35b1};
    for (int i = 0; i < 4; ++i) {
        const double y = std::round(1 * u + i * 3.1 * u);
        icon(page, {1.2 * u, y + 0.5 * u, 1.6 * u, 1.6 * u}, i + page.random.below(8),
            theme.secondary);
        page.canvas.writeIn({4 * u, y, 18 * u, 2.6 * u}, Qt::AlignLeft, page.texts.one("tabs"),
            page.look.ui(1.1), theme.text);
        const QString count = page.texts.integer(i == 0 ? 1 : 3, i == 2 ? 99 : 9);
        const QFont font = page.look.ui(0.92, QFont::Bold);
        const double width = std::max(1.9 * u, Canvas::width(count, font) + u);
        const QRectF badge(26 * u - width / 2, y + 0.4 * u, width, 1.9 * u);
        box(page, badge, QColor::fromRgb(colours[i]), badge.height() / 2);
        page.canvas.writeIn(badge, Qt::AlignHCenter, count, font, Qt::white);
    }
}

void notifications(Page& page)
{
    const double u = page.unit();
    const Theme& theme = page.look.theme;
    QList<TextPair> notices;
    QStringList bodies;
    for (int i = 0; i < 3; ++i) {
        notices.append(page.texts.pair("notices"));
        bodies.append(notices.last().second);
    }
    const double width = std::max(24 * u, widest(bodies, page.look.ui(0.95)) + 8 * u);
    page.canvas.begin({width + 2 * u, 18 * u}, theme.window);
    for (int i = 0; i < 3; ++i) {
        const QRectF card(u, std::round(u + i * 5.6 * u), width, 4.8 * u);
        frame(page, card, theme.surface, 0.6 * u);
        icon(page, {card.left() + u, card.top() + u, 2.6 * u, 2.6 * u}, 4 + i, theme.accent);
        const double x = card.left() + 5 * u;
        page.canvas.write(
            {x, card.top() + 2 * u}, notices[i].first, page.look.ui(1.05, QFont::Bold), theme.text);
        page.canvas.write(
            {x, card.top() + 3.8 * u}, notices[i].second, page.look.ui(0.95), theme.secondary);
    }
}

void tooltip(Page& page)
{
    const double u = page.unit();
    const Theme& theme = page.look.theme;
    page.canvas.begin({28 * u, 9 * u}, theme.surface);
    for (int i = 0; i < 5; ++i)
        icon(page, {(1.5 + 3.2 * i) * u, 1.2 * u, 1.6 * u, 1.6 * u}, i, theme.secondary);
    const QString tip = page.texts.one("tooltips");
    const QFont font = page.look.ui(0.95);
    const QRectF rect(3 * u, 3.4 * u, Canvas::width(tip, font) + 1.4 * u, 2 * u);
    box(page, rect, theme.isDark() ? QColor(0xf5, 0xf5, 0xdc) : QColor(0x33, 0x33, 0x33), 4);
    page.canvas.writeIn(rect, Qt::AlignHCenter, tip, font, theme.isDark() ? Qt::black : Qt::white);
    const QString other = page.texts.one("tooltips");
    const QRectF yellow(u, 6.2 * u, Canvas::width(other, font) + 1.2 * u, 1.9 * u);
    frame(page, yellow, QColor(0xff, 0xff, 0xdc));
    page.canvas.writeIn(yellow, Qt::AlignHCenter, other, font, Qt::black);
}

void login(Page& page)
{
    const double u = page.unit();
    const Theme& theme = page.look.theme;
    const double width = 26 * u;
    const QString heading = page.texts.one("headings");
    page.canvas.begin({width, 25 * u}, theme.surface);
    avatar(page, {width / 2, 3.2 * u}, 2 * u);
    page.canvas.writeIn({0, 5.8 * u, width, 3 * u}, Qt::AlignHCenter, heading,
        page.look.ui(1.5, QFont::Light), theme.text);
    const QRectF name(3 * u, 9.4 * u, width - 6 * u, rowHeight(page) + 4);
    field(page, name, page.texts.mailAddress());
    const QRectF password = name.translated(0, 3.6 * u);
    frame(page, password, theme.surface, 3);
    QPainter& painter = page.canvas.painter();
    painter.setPen(Qt::NoPen);
    painter.setBrush(theme.text);
    for (int i = 0; i < 9; ++i)
        painter.drawEllipse(QPointF(password.left() + (1 + 0.7 * i) * u, password.center().y()),
            0.22 * u, 0.22 * u);
    button(page, name.translated(0, 7.2 * u), page.texts.one("buttons"), ButtonStyle::accent);
    QFont link = page.look.ui(0.95);
    link.setUnderline(true);
    page.canvas.writeIn(
        {0, 20 * u, width, 2 * u}, Qt::AlignHCenter, page.texts.one("links"), link, theme.accent);
    page.canvas.writeIn({0, 22.4 * u, width, 2 * u}, Qt::AlignHCenter, page.texts.version(),
        page.look.ui(0.9), theme.disabled);
}

void statusBar(Page& page)
{
    const double u = page.unit();
    const Theme& theme = page.look.theme;
    const QFont font = page.look.ui();
    const QStringList right{
        u"Ln %1, Col %2"_s.arg(page.random.between(1, 900)).arg(page.random.between(1, 99)),
        u"UTF-8"_s, u"LF"_s, page.texts.percent()};
    const QString status = page.texts.one("statuses");
    const double width = widest({status + right.join(QString())}, font) + 16 * u;
    const double height = std::round(2 * u);
    page.canvas.begin({width, 9 * u}, theme.surface);
    const QString body = page.texts.one("sentences");
    paragraph(page, {1.2 * u, 2 * u}, width - 3 * u, body, page.look.serif(1.1), theme.text);
    const QRectF bar(0, 9 * u - height, width, height);
    box(page, bar, page.look.pixelSize % 2 == 0 ? theme.accent : theme.window);
    const QColor colour = page.look.pixelSize % 2 == 0 ? theme.onAccent : theme.text;
    page.canvas.writeIn(bar.adjusted(u, 0, 0, 0), Qt::AlignLeft, status, font, colour);
    double x = width - u;
    for (qsizetype i = right.size() - 1; i >= 0; --i) {
        const double textWidth = Canvas::width(right[i], font);
        page.canvas.writeIn(
            {x - textWidth, bar.top(), textWidth, height}, Qt::AlignLeft, right[i], font, colour);
        x -= textWidth + 2 * u;
    }
}

} // namespace Lumenote::Bench::Scenes
