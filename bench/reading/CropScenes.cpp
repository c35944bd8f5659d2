#include "Scenes.h"
#include "Widgets.h"

namespace Lumenote::Bench::Scenes {

using namespace Qt::StringLiterals;
using namespace Widgets;

namespace {
/// As little space around the text as people leave who drag a selection.
constexpr double tightMargin = 4;

/// A picture of nothing but @p lines.
void cropped(Page& page, const QStringList& lines, const QFont& font)
{
    const double row = std::round(font.pixelSize() * 1.4);
    page.canvas.begin(
        {widest(lines, font) + 2 * tightMargin, double(lines.size()) * row + tightMargin},
        page.look.theme.surface);
    for (int i = 0; i < int(lines.size()); ++i) {
        const QRectF rect(tightMargin, tightMargin / 2 + i * row, 1, row);
        page.canvas.write({tightMargin, Canvas::centredBaseline(rect, font)}, lines[i], font,
            page.look.theme.text);
    }
}

/// Keys as `Ctrl` `Shift` `S`, each drawn as a cap.
double keyCaps(Page& page, double left, const QRectF& row, const QStringList& keys)
{
    const QFont font = page.look.ui(0.9, QFont::Medium);
    for (const QString& key : keys) {
        const double width = std::max(row.height() * 0.75, Canvas::width(key, font) + page.unit());
        const QRectF cap(std::round(left), row.top() + 3, std::round(width), row.height() - 6);
        frame(page, cap, page.look.theme.window, 3);
        page.canvas.writeIn(cap, Qt::AlignHCenter, key, font, page.look.theme.text);
        left = cap.right() + 0.5 * page.unit();
    }
    return left;
}
} // namespace

void tightLine(Page& page)
{
    cropped(page, {page.texts.one("sentences")}, page.look.ui());
}

void tightWord(Page& page)
{
    cropped(page, {page.texts.one("states")}, page.look.ui(1.2, QFont::Medium));
}

void tightNumber(Page& page)
{
    cropped(page, {page.texts.integer(0, 9)}, page.look.ui(1.6));
}

void tightParagraph(Page& page)
{
    const QFont font = page.look.ui();
    cropped(page, wrapped(page.texts.one("paragraphs"), font, 32 * page.unit()), font);
}

void keyList(Page& page)
{
    const double u = page.unit();
    constexpr int count = 6;
    QList<TextPair> items;
    QStringList labels;
    for (int i = 0; i < count; ++i) {
        items.append(page.texts.pair("menu"));
        labels.append(items.last().first);
    }
    const double labelWidth = widest(labels, page.look.ui());
    const double row = std::round(2.6 * u);
    page.canvas.begin({labelWidth + 18 * u, count * row + u}, page.look.theme.surface);
    for (int i = 0; i < count; ++i) {
        const QRectF rect(u, 0.5 * u + i * row, labelWidth + 1, row);
        page.canvas.writeIn(
            rect, Qt::AlignLeft, items[i].first, page.look.ui(), page.look.theme.text);
        keyCaps(page, rect.right() + 2 * u, rect, items[i].second.split(u'+', Qt::SkipEmptyParts));
    }
}

void steps(Page& page)
{
    const double u = page.unit();
    const Theme& theme = page.look.theme;
    page.canvas.begin({48 * u, 9 * u}, theme.surface);
    for (int i = 0; i < 4; ++i) {
        const QPointF centre((6 + 12 * i) * u, 3 * u);
        if (i < 3)
            line(page, centre + QPointF(1.8 * u, 0), centre + QPointF(10.2 * u, 0));
        const QRectF circle(centre - QPointF(1.3 * u, 1.3 * u), QSizeF(2.6 * u, 2.6 * u));
        box(page, circle, i < 2 ? theme.accent : theme.line, 1.3 * u);
        page.canvas.writeIn(circle, Qt::AlignHCenter, QString::number(i + 1),
            page.look.ui(1, QFont::Bold), i < 2 ? theme.onAccent : theme.text);
        page.canvas.writeIn({centre.x() - 6 * u, 5.4 * u, 12 * u, 2 * u}, Qt::AlignHCenter,
            page.texts.one("tabs"), page.look.ui(), i < 2 ? theme.text : theme.secondary);
    }
}

void selectedText(Page& page)
{
    const double u = page.unit();
    const Theme& theme = page.look.theme;
    const QFont font = page.look.ui(1.1);
    const QStringList lines = wrapped(page.texts.one("paragraphs"), font, 34 * u);
    const double row = std::round(1.6 * u);
    page.canvas.begin({37 * u, double(lines.size()) * row + 2 * u}, theme.surface);
    for (int i = 0; i < int(lines.size()); ++i) {
        const QRectF rect(u, u + i * row, 35 * u, row);
        const double baseline = Canvas::centredBaseline(rect, font);
        const bool isSelected = i == 1 || i == 2;
        // The selection begins within the second line and ends within the third.
        const QString& text = lines[i];
        const qsizetype cut = text.indexOf(u' ', text.size() / 3);
        const QString head = text.left(cut);
        const double headWidth = Canvas::width(head, font);
        if (i == 1)
            box(page, {u + headWidth, rect.top(), 35 * u - headWidth, row}, theme.accent);
        if (i == 2)
            box(page, {u, rect.top(), headWidth, row}, theme.accent);
        const QColor headColour = i == 2 ? theme.onAccent : theme.text;
        const QColor tailColour = i == 1 ? theme.onAccent : theme.text;
        if (isSelected)
            page.canvas.writeRuns(
                {u, baseline}, {{head, headColour}, {text.mid(cut), tailColour}}, font);
        else
            page.canvas.write({u, baseline}, text, font, theme.text);
    }
}

} // namespace Lumenote::Bench::Scenes
