#include "CodePainter.h"
#include "Scenes.h"
#include "Widgets.h"

namespace Lumenote::Bench::Scenes {

using namespace Qt::StringLiterals;
using namespace Widgets;

namespace {
constexpr double codeRowFactor = 1.45;

double codeRow(const Page& page)
{
    return std::round(page.unit() * codeRowFactor);
}

/// A terminal that shows @p lines, with a cursor after the last.
void terminal(Page& page, const QStringList& lines, const QList<QColor>& colours)
{
    const QFont font = page.look.monospace();
    const double row = codeRow(page);
    const double u = page.unit();
    const double width = widest(lines, font) + 3 * u;
    page.canvas.begin({width, double(lines.size()) * row + 1.5 * u}, page.look.theme.window);
    double baseline = 0;
    for (int i = 0; i < int(lines.size()); ++i) {
        baseline = Canvas::centredBaseline({0, 0.5 * u + i * row, width, row}, font);
        page.canvas.write({0.8 * u, baseline}, lines[i], font, colours[i % colours.size()]);
    }
    box(page, {1.2 * u + Canvas::width(lines.last(), font), baseline - 0.8 * u, 0.6 * u, u},
        page.look.theme.text);
}
} // namespace

void editor(Page& page)
{
    constexpr int rows = 14;
    const double u = page.unit();
    const QFont font = page.look.monospace();
    const double row = codeRow(page);
    const double width = 78 * Canvas::width(u"m"_s, font);
    const double tab = rowHeight(page) + 4;
    const QString file = page.texts.one("files");
    page.canvas.begin({width, tab + rows * row + u}, page.look.theme.surface);
    box(page, {0, 0, width, tab}, page.look.theme.window);
    const QRectF current(0, 0, Canvas::width(file, page.look.ui()) + 3 * u, tab);
    box(page, current, page.look.theme.surface);
    page.canvas.writeIn(current, Qt::AlignHCenter, file, page.look.ui(), page.look.theme.text);
    page.canvas.writeIn(current.translated(current.width() + u, 0).adjusted(0, 0, 12 * u, 0),
        Qt::AlignLeft, page.texts.one("files"), page.look.ui(), page.look.theme.secondary);
    const int marked = page.random.below(rows);
    box(page, {0, tab + 0.5 * u + marked * row, width, row},
        page.look.theme.isDark() ? page.look.theme.surface.lighter(125)
                                 : page.look.theme.surface.darker(104));
    CodePainter::write(page, {0, tab + 0.5 * u}, width - u, row,
        CodePainter::program(page, page.look.pixelSize % 2 == 0 ? "python" : "cpp", rows),
        page.random.between(1, 600), font);
}

void terminalListing(Page& page)
{
    QStringList lines{u"$ ls -l"_s, u"total "_s + page.texts.integer(40, 4000)};
    for (int i = 0; i < 10; ++i)
        lines.append(CodePainter::listingLine(page));
    terminal(page, lines, {page.look.theme.text});
}

void versionLog(Page& page)
{
    QStringList lines;
    for (int i = 0; i < 3; ++i) {
        lines.append({u"commit "_s + page.texts.hexadecimal(40),
            u"Author: "_s + page.texts.one("people") + u" <"_s + page.texts.mailAddress() + u'>',
            u"Date:   "_s + page.texts.longDate() + u' ' + page.texts.time(),
            u"    "_s + page.texts.code("commits")});
    }
    const QColor yellow =
        page.look.theme.isDark() ? QColor(0xd7, 0xba, 0x4d) : QColor(0x8a, 0x6d, 0x00);
    terminal(
        page, lines, {yellow, page.look.theme.text, page.look.theme.text, page.look.theme.text});
}

void compilerOutput(Page& page)
{
    QStringList lines;
    for (int i = 0; i < 9; ++i)
        lines.append(page.texts.code("compiler"));
    const bool isDark = page.look.theme.isDark();
    terminal(page, lines,
        {page.look.theme.text, isDark ? QColor(0xff, 0x6b, 0x68) : QColor(0xb0, 0x10, 0x10),
            page.look.theme.text, isDark ? QColor(0x6a, 0xab, 0x73) : QColor(0x1b, 0x5e, 0x20)});
}

void prompt(Page& page)
{
    QStringList lines;
    for (int i = 0; i < 8; ++i)
        lines.append(CodePainter::terminalLine(page));
    terminal(page, lines, {page.look.theme.text});
}

} // namespace Lumenote::Bench::Scenes
