#include "Scenes.h"
#include "Widgets.h"

#include <QDate>
#include <QLocale>

namespace Lumenote::Bench::Scenes {

using namespace Qt::StringLiterals;
using namespace Widgets;

namespace {
struct Column {
    QString title;
    QStringList cells;
    Qt::Alignment alignment = Qt::AlignLeft;
};

double columnWidth(const Page& page, const Column& column)
{
    return std::max(widest({column.title}, page.look.ui(1, QFont::DemiBold)),
               widest(column.cells, page.look.ui()))
        + 2 * page.unit();
}

enum class Rules { none, rows, grid };

QSizeF tableSize(const Page& page, const QList<Column>& columns)
{
    double width = 0;
    for (const Column& column : columns)
        width += columnWidth(page, column);
    return {width, double(columns[0].cells.size() + 1) * rowHeight(page)};
}

/// Draws a table with a header; @p selected is a row in the accent's colour, or -1.
void table(Page& page, QPointF topLeft, const QList<Column>& columns, Rules rules, int selected)
{
    const Theme& theme = page.look.theme;
    const double row = rowHeight(page);
    const QRectF all(topLeft, tableSize(page, columns));
    box(page, {all.left(), all.top(), all.width(), row}, theme.window);
    if (selected >= 0)
        box(page, {all.left(), all.top() + (selected + 1) * row, all.width(), row}, theme.accent);
    double x = all.left();
    for (const Column& column : columns) {
        const double width = columnWidth(page, column);
        const QRectF cell(x + page.unit(), all.top(), width - 1.6 * page.unit(), row);
        page.canvas.writeIn(
            cell, column.alignment, column.title, page.look.ui(1, QFont::DemiBold), theme.text);
        for (int i = 0; i < int(column.cells.size()); ++i) {
            page.canvas.writeIn(cell.translated(0, (i + 1) * row), column.alignment,
                column.cells[i], page.look.ui(),
                i == selected ? theme.onAccent : (x == all.left() ? theme.text : theme.secondary));
        }
        x += width;
        if (rules == Rules::grid)
            line(page, {x, all.top()}, {x, all.bottom()});
    }
    if (rules == Rules::none)
        return;
    for (qsizetype i = 1; i <= columns[0].cells.size() + 1; ++i) {
        const double y = all.top() + double(i) * row;
        line(page, {all.left(), y}, {all.right(), y});
    }
}

QStringList made(int count, const std::function<QString()>& make)
{
    QStringList texts;
    for (int i = 0; i < count; ++i)
        texts.append(make());
    return texts;
}
} // namespace

void fileList(Page& page)
{
    const double u = page.unit();
    Texts& texts = page.texts;
    constexpr int rows = 9;
    const QList<Column> columns{
        {texts.one("columns"), texts.several("files", rows)},
        {texts.one("columns"), made(rows, [&] { return texts.fileSize(); }), Qt::AlignRight},
        {texts.one("columns"), made(rows, [&] { return texts.date() + u' ' + texts.time(); })},
    };
    const QSizeF size = tableSize(page, columns);
    page.canvas.begin(
        {size.width() + 5 * u, size.height() + rowHeight(page) + 2 * u}, page.look.theme.surface);
    table(page, {3 * u, u}, columns, Rules::none, page.random.below(rows));
    for (int i = 0; i < rows; ++i) {
        const double y = u + (i + 1.5) * rowHeight(page);
        icon(page, {1.4 * u, y - 0.6 * u, 1.2 * u, 1.2 * u}, i % 2, page.look.theme.accent);
    }
    scrollBar(page, {size.width() + 4.2 * u, 0, 0.8 * u, size.height()}, 0.4);
    page.canvas.writeIn({u, size.height() + 1.4 * u, size.width(), rowHeight(page)}, Qt::AlignLeft,
        texts.one("statuses"), page.look.ui(0.95), page.look.theme.secondary);
}

void propertyTable(Page& page)
{
    const double u = page.unit();
    constexpr int rows = 8;
    QStringList names;
    QStringList values;
    for (int i = 0; i < rows; ++i) {
        const TextPair pair = page.texts.pair("fields");
        names.append(pair.first);
        values.append(pair.second);
    }
    const double nameWidth = widest(names, page.look.ui());
    const double valueWidth = widest(values, page.look.ui(1, QFont::Medium));
    const double row = std::round(1.8 * u);
    page.canvas.begin(
        {nameWidth + valueWidth + 6 * u, rows * row + 4.5 * u}, page.look.theme.surface);
    page.canvas.write({1.2 * u, 2.2 * u}, page.texts.one("headings"),
        page.look.ui(1.3, QFont::Bold), page.look.theme.text);
    for (int i = 0; i < rows; ++i) {
        const QRectF rect(1.2 * u, 3.4 * u + i * row, nameWidth + valueWidth + 4 * u, row);
        page.canvas.writeIn(
            rect, Qt::AlignLeft, names[i], page.look.ui(), page.look.theme.secondary);
        page.canvas.writeIn(rect.adjusted(nameWidth + 2 * u, 0, 0, 0), Qt::AlignLeft, values[i],
            page.look.ui(1, QFont::Medium), page.look.theme.text);
    }
}

void ruledTable(Page& page)
{
    const double u = page.unit();
    Texts& texts = page.texts;
    constexpr int rows = 7;
    const QList<Column> columns{
        {texts.one("columns"), made(rows, [&] { return u'#' + texts.integer(100, 9999); }),
            Qt::AlignRight},
        {texts.one("columns"), texts.several("products", rows)},
        {texts.one("columns"), texts.several("states", rows)},
        {texts.one("columns"), made(rows, [&] { return texts.integer(1, 40); }), Qt::AlignRight},
        {texts.one("columns"), made(rows, [&] { return texts.price(); }), Qt::AlignRight},
    };
    const QSizeF size = tableSize(page, columns);
    page.canvas.begin({size.width() + 2 * u, size.height() + 2 * u}, page.look.theme.surface);
    frame(page, {{u, u}, size}, page.look.theme.surface);
    table(page, {u, u}, columns, page.random.isLuckyIn(2) ? Rules::grid : Rules::rows, -1);
}

void spreadsheet(Page& page)
{
    const double u = page.unit();
    const Theme& theme = page.look.theme;
    constexpr int rows = 10;
    constexpr int columns = 5;
    const QFont font = page.look.ui();
    const double row = std::round(1.7 * u);
    const QStringList names = page.texts.several("products", rows - 1);
    const double first = widest(names, font) + 1.6 * u;
    const double cell = std::round(6 * u);
    const double head = std::round(2.4 * u);
    page.canvas.begin({head + first + columns * cell, row * (rows + 1)}, theme.surface);
    box(page, {0, 0, page.canvas.area().width(), row}, theme.window);
    box(page, {0, 0, head, page.canvas.area().height()}, theme.window);
    const auto left = [&](int column) {
        return column == 0 ? head : head + first + (column - 1) * cell;
    };
    for (int c = 0; c <= columns; ++c) {
        const double width = c == 0 ? first : cell;
        page.canvas.writeIn({left(c), 0, width, row}, Qt::AlignHCenter, QString(QChar('A' + c)),
            font, theme.secondary);
        line(page, {left(c), 0}, {left(c), page.canvas.area().height()});
    }
    for (int r = 0; r < rows; ++r) {
        const double y = (r + 1) * row;
        line(page, {0, y}, {page.canvas.area().width(), y});
        page.canvas.writeIn(
            {0, y, head, row}, Qt::AlignHCenter, QString::number(r + 1), font, theme.secondary);
        const QRectF nameCell(left(0) + 0.4 * u, y, first, row);
        page.canvas.writeIn(nameCell, Qt::AlignLeft,
            r == 0 ? page.texts.one("columns") : names[r - 1],
            r == 0 ? page.look.ui(1, QFont::Bold) : font, theme.text);
        for (int c = 1; c <= columns; ++c) {
            const QRectF rect(left(c), y, cell - 0.4 * u, row);
            if (r == 0)
                page.canvas.writeIn(rect, Qt::AlignRight, u"Q%1 %2"_s.arg(c % 4 + 1).arg(2020 + c),
                    page.look.ui(1, QFont::Bold), theme.text);
            else if (page.random.below(8) != 0)
                page.canvas.writeIn(rect, Qt::AlignRight,
                    c == 3 ? page.texts.decimal(2) : page.texts.integer(0, 9999), font, theme.text);
        }
    }
    QPainter& painter = page.canvas.painter();
    painter.setPen(QPen(theme.accent, 2));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(QRectF(left(2), 4 * row, cell, row));
}

void calendar(Page& page)
{
    const double u = page.unit();
    const Theme& theme = page.look.theme;
    const double cell = std::round(2.8 * u);
    const QDate first(2023, page.random.between(1, 12), 1);
    page.canvas.begin({7 * cell + 2 * u, 8 * cell + u}, theme.surface);
    const QLocale english(QLocale::English);
    page.canvas.writeIn({u, 0.5 * u, 7 * cell, cell}, Qt::AlignHCenter,
        english.toString(first, u"MMMM yyyy"_s), page.look.ui(1.15, QFont::Bold), theme.text);
    for (int day = 1; day <= 7; ++day)
        page.canvas.writeIn({u + (day - 1) * cell, 0.5 * u + cell, cell, cell}, Qt::AlignHCenter,
            english.dayName(day, QLocale::ShortFormat).left(page.look.pixelSize % 2 + 2),
            page.look.ui(0.9), theme.secondary);
    const int offset = first.dayOfWeek() - 1;
    const int today = page.random.between(2, 27);
    for (int day = 1; day <= first.daysInMonth(); ++day) {
        const QPointF slot = gridCell(offset + day - 1, 7);
        const QRectF rect(u + slot.x() * cell, 0.5 * u + (slot.y() + 2) * cell, cell, cell);
        if (day == today)
            box(page, rect.adjusted(2, 2, -2, -2), theme.accent, cell / 2);
        page.canvas.writeIn(rect, Qt::AlignHCenter, QString::number(day), page.look.ui(),
            day == today ? theme.onAccent : theme.text);
    }
}

void sideBar(Page& page)
{
    const double u = page.unit();
    const Theme& theme = page.look.theme;
    const double row = rowHeight(page);
    const QStringList folders = page.texts.several("folders", 7);
    const double side = widest(folders, page.look.ui()) + 6 * u;
    const double width = side + 32 * u;
    page.canvas.begin({width, 9 * row + 4 * u}, theme.surface);
    box(page, {0, 0, side, page.canvas.area().height()}, theme.window);
    page.canvas.write({u, 1.6 * u}, page.texts.one("columns").toUpper(),
        page.look.ui(0.85, QFont::Bold), theme.secondary);
    for (int i = 0; i < 7; ++i) {
        const QRectF rect(0.4 * u, 2.4 * u + i * row, side - 0.8 * u, row);
        const bool isCurrent = i == 2;
        if (isCurrent)
            box(page, rect, theme.accent, 4);
        const QColor colour = isCurrent ? theme.onAccent : theme.text;
        icon(page, {rect.left() + 0.6 * u, rect.center().y() - 0.6 * u, 1.2 * u, 1.2 * u}, i,
            colour);
        page.canvas.writeIn(
            rect.adjusted(2.6 * u, 0, 0, 0), Qt::AlignLeft, folders[i], page.look.ui(), colour);
    }
    const double x = side + 2 * u;
    page.canvas.write(
        {x, 3 * u}, page.texts.one("headings"), page.look.ui(1.8, QFont::Bold), theme.text);
    double y = paragraph(
        page, {x, 5.4 * u}, 28 * u, page.texts.one("sentences"), page.look.ui(), theme.text);
    y = paragraph(
        page, {x, y + u}, 28 * u, page.texts.one("sentences"), page.look.ui(), theme.secondary);
    button(page, {x, y, buttonWidth(page, folders[0]), row}, folders[0], ButtonStyle::plain);
}

void iconGrid(Page& page)
{
    const double u = page.unit();
    const double cellWidth = std::round(13 * u);
    const double cellHeight = std::round(6.5 * u);
    page.canvas.begin({4 * cellWidth + u, 2 * cellHeight + u}, page.look.theme.surface);
    for (int i = 0; i < 8; ++i) {
        const QPointF slot = gridCell(i, 4);
        const QRectF cell(
            slot.x() * cellWidth, slot.y() * cellHeight + 0.6 * u, cellWidth, cellHeight);
        const double size = 3.2 * u;
        icon(page, {std::round(cell.center().x() - size / 2), cell.top() + 0.4 * u, size, size},
            i % 3 == 0 ? 0 : 1 + i % 3, page.look.theme.accent);
        const QRectF label(cell.left(), cell.top() + 4.1 * u, cell.width(), 1.7 * u);
        const QString name = page.texts.one(i % 3 == 0 ? "folders" : "files");
        if (i == 5)
            box(page, label.adjusted(0.3 * u, 0, -0.1 * u, 0), page.look.theme.accent, 3);
        page.canvas.writeIn(label, Qt::AlignHCenter, name, page.look.ui(0.93),
            i == 5 ? page.look.theme.onAccent : page.look.theme.text);
    }
}

void processTable(Page& page)
{
    const double u = page.unit();
    Texts& texts = page.texts;
    constexpr int rows = 8;
    const QList<Column> columns{
        {u"Process"_s, made(rows, [&] { return texts.code("commands").section(u' ', 0, 0); })},
        {u"PID"_s, made(rows, [&] { return texts.integer(101, 98000); }), Qt::AlignRight},
        {u"% CPU"_s, made(rows, [&] { return texts.decimal(1); }), Qt::AlignRight},
        {u"Memory"_s, made(rows, [&] { return texts.fileSize(); }), Qt::AlignRight},
        {u"Address"_s, made(rows, [&] { return texts.address(); })},
        {u"Version"_s, made(rows, [&] { return texts.version(); })},
    };
    const QSizeF size = tableSize(page, columns);
    page.canvas.begin({size.width() + u, size.height() + 1}, page.look.theme.surface);
    table(page, {0, 0}, columns, Rules::none, 3);
}

void hexTable(Page& page)
{
    const double u = page.unit();
    Texts& texts = page.texts;
    const QFont font = page.look.monospace();
    const QList<TextPair> rows{
        {u"UUID"_s, texts.uuid()},
        {u"SHA-1"_s, texts.hexadecimal(40)},
        {u"URL"_s, texts.webAddress()},
        {u"IPv4"_s, texts.address() + u":8080"_s},
        {u"Colour"_s, u'#' + texts.hexadecimal(6).toUpper()},
        {u"Mail"_s, texts.mailAddress()},
        {u"ID"_s, texts.uuid().left(18)},
    };
    double width = 0;
    for (const TextPair& row : rows)
        width = std::max(width, Canvas::width(row.second, font));
    const double row = rowHeight(page);
    page.canvas.begin({width + 9 * u, double(rows.size()) * row + u}, page.look.theme.surface);
    for (int i = 0; i < int(rows.size()); ++i) {
        const QRectF rect(u, 0.5 * u + i * row, width + 8 * u, row);
        page.canvas.writeIn(
            rect, Qt::AlignLeft, rows[i].first, page.look.ui(), page.look.theme.secondary);
        page.canvas.writeIn(rect.adjusted(6 * u, 0, 0, 0), Qt::AlignLeft, rows[i].second, font,
            page.look.theme.text);
    }
}

} // namespace Lumenote::Bench::Scenes
