#include "CodePainter.h"
#include "Scenes.h"
#include "Widgets.h"

namespace Lumenote::Bench::Scenes {

using namespace Qt::StringLiterals;
using namespace Widgets;

namespace {
constexpr QSizeF fullHd(1920, 1080);
constexpr QSizeF ultraHd(3840, 2160);

/// Fills @p area with paragraphs and headings.
void documentColumn(Page& page, const QRectF& area, const QFont& font)
{
    const double lineHeight = std::round(font.pixelSize() * 1.4);
    double y = area.top() + lineHeight;
    while (y < area.bottom() - 4 * lineHeight) {
        QFont heading = font;
        heading.setBold(true);
        page.canvas.write({area.left(), y},
            page.random.isLuckyIn(2) ? page.texts.one("headings") : page.texts.one("captions"),
            heading, page.look.theme.text);
        y += lineHeight * 1.2;
        QString text = page.texts.one("sentences");
        for (int i = page.random.between(3, 9); i > 0; --i)
            text += u' ' + (i % 3 == 0 ? page.texts.one("sentences") : page.texts.sentence());
        for (const QString& each : wrapped(text, font, area.width())) {
            if (y > area.bottom())
                return;
            page.canvas.write({area.left(), std::round(y)}, each, font, page.look.theme.text);
            y += lineHeight;
        }
        y = std::round(y + lineHeight * 0.8);
    }
}

/// A terminal's history that fills @p area.
void terminalPane(Page& page, const QRectF& area, const QFont& font)
{
    const double row = std::round(font.pixelSize() * 1.35);
    for (double y = area.top(); y + row <= area.bottom(); y += row) {
        const QString line =
            CodePainter::cut(CodePainter::terminalLine(page).simplified(), font, area.width());
        page.canvas.write({area.left(), Canvas::centredBaseline({0, y, 1, row}, font)}, line, font,
            page.random.isLuckyIn(5) ? page.look.theme.secondary : page.look.theme.text);
    }
}

void codePane(Page& page, const QRectF& area, const QFont& font, const char* section)
{
    const double row = std::round(font.pixelSize() * 1.35);
    const int rows = int(area.height() / row);
    CodePainter::write(page, area.topLeft(), area.width(), row,
        CodePainter::program(page, section, rows), page.random.between(1, 2000), font);
}

/// A tree of files with an icon before each name.
void filePane(Page& page, const QRectF& area, const QFont& font)
{
    const double row = std::round(font.pixelSize() * 1.6);
    const double u = font.pixelSize();
    int depth = 0;
    for (double y = area.top(); y + row <= area.bottom(); y += row) {
        depth = std::clamp(depth + page.random.between(-1, 1), 0, 3);
        const double x = area.left() + (1 + depth * 1.2) * u;
        const bool isFolder = page.random.isLuckyIn(3);
        icon(page, {x, std::round(y + row / 2 - u / 2), u, u}, isFolder ? 0 : 1,
            page.look.theme.secondary);
        const QString name = CodePainter::cut(
            page.texts.one(isFolder ? "folders" : "files"), font, area.right() - x - 2 * u);
        page.canvas.write({x + 1.6 * u, Canvas::centredBaseline({0, y, 1, row}, font)}, name, font,
            page.look.theme.text);
    }
}

void statusLine(Page& page, const QRectF& bar, const QFont& font)
{
    box(page, bar, page.look.theme.accent);
    page.canvas.writeIn(bar.adjusted(12, 0, 0, 0), Qt::AlignLeft, page.texts.one("statuses"), font,
        page.look.theme.onAccent);
    page.canvas.writeIn(bar.adjusted(0, 0, -12, 0), Qt::AlignRight,
        u"Ln %1, Col %2"_s.arg(page.random.between(1, 900)).arg(page.random.between(1, 80)), font,
        page.look.theme.onAccent);
}

void editorScreen(Page& page, QSizeF size, int pixelSize, int panes)
{
    page.look = darkened(page.look, page.random.below(6));
    page.canvas.begin(size, page.look.theme.surface);
    const QFont ui = page.look.font(page.look.family, pixelSize, QFont::Normal);
    const QFont code = page.look.font(page.look.monospaceFamily, pixelSize, QFont::Normal);
    constexpr double side = 250;
    constexpr double bar = 24;
    const double terminalHeight = std::round(size.height() * 0.25);
    box(page, {0, 0, side, size.height() - bar}, page.look.theme.window);
    filePane(page, {0, 12, side, size.height() - bar - 16}, ui);
    const double paneWidth = (size.width() - side) / panes;
    const double codeHeight = size.height() - terminalHeight - bar;
    for (int i = 0; i < panes; ++i) {
        const double left = side + i * paneWidth;
        line(page, {left, 0}, {left, codeHeight});
        codePane(page, {left + 8, 12, paneWidth - 28, codeHeight - 20}, code,
            i % 2 == 0 ? "cpp" : "python");
    }
    line(page, {side, codeHeight}, {size.width(), codeHeight});
    terminalPane(
        page, {side + 16, codeHeight + 8, size.width() - side - 32, terminalHeight - 12}, code);
    statusLine(page, {0, size.height() - bar, size.width(), bar}, ui);
}

void documentScreen(Page& page, QSizeF size, int pixelSize, int columns)
{
    page.look = lightened(page.look, page.random.below(7));
    page.canvas.begin(size, page.look.theme.surface);
    const Theme& theme = page.look.theme;
    const QFont ui = page.look.font(page.look.family, pixelSize, QFont::Normal);
    const QRectF bar(0, 0, size.width(), 36);
    box(page, bar, theme.window);
    double x = 24;
    for (const QString& each : page.texts.several("menus", 7)) {
        page.canvas.writeIn({x, 0, 200, 36}, Qt::AlignLeft, each, ui, theme.text);
        x += Canvas::width(each, ui) + 28;
    }
    QFont large = page.look.font(page.look.serifFamily, 44, QFont::Bold);
    page.canvas.write({40, 100}, page.texts.one("headings"), large, theme.text);
    const double columnWidth = (size.width() - 80) / columns;
    const QFont serif = page.look.font(page.look.serifFamily, pixelSize + 1, QFont::Normal);
    for (int i = 0; i < columns; ++i)
        documentColumn(page, {40 + i * columnWidth, 130, columnWidth - 36, size.height() - 160},
            i % 2 == 0 ? ui : serif);
}

/// A log of an administrator: a table of many columns over the whole width.
void tablePane(Page& page, const QRectF& area, const QFont& font)
{
    const double row = std::round(font.pixelSize() * 1.75);
    Texts& texts = page.texts;
    const std::array<std::function<QString()>, 9> cells{
        [&] { return texts.integer(1000, 99999); },
        [&] { return texts.date() + u' ' + texts.time(); },
        [&] { return texts.one("people"); },
        [&] { return texts.one("products"); },
        [&] { return texts.one("states"); },
        [&] { return texts.price(); },
        [&] { return texts.address(); },
        [&] { return texts.fileSize(); },
        [&] { return texts.hexadecimal(12); },
    };
    const double cell = area.width() / double(cells.size());
    for (double y = area.top(); y + row <= area.bottom(); y += row) {
        for (int i = 0; i < int(cells.size()); ++i) {
            page.canvas.writeIn({area.left() + i * cell, y, cell, row}, Qt::AlignLeft,
                CodePainter::cut(cells[i](), font, cell - 8), font, page.look.theme.text);
        }
        line(page, {area.left(), y + row}, {area.right(), y + row});
    }
}
} // namespace

void denseEditor(Page& page)
{
    editorScreen(page, fullHd, page.random.between(12, 14), 2);
}

void denseDocument(Page& page)
{
    documentScreen(page, fullHd, page.random.between(12, 13), page.random.between(2, 3));
}

void denseMixed(Page& page)
{
    const QSizeF size = fullHd;
    page.canvas.begin(size, page.look.theme.surface);
    const QFont ui = page.look.font(page.look.family, 12, QFont::Normal);
    const QFont code = page.look.font(page.look.monospaceFamily, 12, QFont::Normal);
    box(page, {0, 0, 220, size.height()}, page.look.theme.window);
    filePane(page, {0, 10, 220, size.height() - 20}, ui);
    tablePane(page, {240, 16, 1660, 560}, ui);
    terminalPane(page, {240, 600, 1000, 450}, code);
    line(page, {1260, 590}, {1260, 1060});
    documentColumn(page, {1280, 600, 610, 450}, ui);
}

void denseEditor4k(Page& page)
{
    editorScreen(page, ultraHd, page.random.between(12, 13), 4);
}

void denseDocument4k(Page& page)
{
    documentScreen(page, ultraHd, 13, 5);
}

void denseDocumentDoubled(Page& page)
{
    documentScreen(page, fullHd, 13, 3);
}

void growingLines(Page& page, int lines)
{
    constexpr double row = 16;
    page.canvas.begin({1280, 2640}, Qt::white);
    const QFont font = page.look.font(u"Noto Sans"_s, 12, QFont::Normal);
    for (int i = 0; i < lines; ++i) {
        const QString text =
            wrapped(page.texts.sentence() + u' ' + page.texts.sentence(), font, 700).first();
        page.canvas.write({20, 30 + i * row}, text, font, Qt::black);
    }
}

void growingPixels(Page& page, QSize pixels)
{
    page.canvas.begin(pixels, Qt::white);
    const QFont font = page.look.font(u"Noto Sans"_s, 14, QFont::Normal);
    for (int i = 0; i < 8; ++i)
        page.canvas.write({40, 60.0 + i * 30}, page.texts.one("sentences"), font, Qt::black);
}

} // namespace Lumenote::Bench::Scenes
