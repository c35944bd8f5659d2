#include "CodePainter.h"

#include <QRegularExpression>

namespace Lumenote::Bench::CodePainter {

using namespace Qt::StringLiterals;

namespace {
constexpr int indentationStep = 4;
constexpr int deepestIndentation = 12;

QColor colourOf(const QRegularExpressionMatch& token, const Theme& theme)
{
    const bool isDark = theme.isDark();
    if (token.hasCaptured(u"comment"_s))
        return isDark ? QColor(0x7f, 0x9f, 0x7f) : QColor(0x3f, 0x7f, 0x5f);
    if (token.hasCaptured(u"string"_s))
        return isDark ? QColor(0xce, 0x91, 0x78) : QColor(0xa3, 0x15, 0x15);
    if (token.hasCaptured(u"keyword"_s))
        return isDark ? QColor(0x56, 0x9c, 0xd6) : QColor(0x00, 0x00, 0xc8);
    if (token.hasCaptured(u"number"_s))
        return isDark ? QColor(0xb5, 0xce, 0xa8) : QColor(0x09, 0x86, 0x58);
    if (token.hasCaptured(u"type"_s))
        return isDark ? QColor(0x4e, 0xc9, 0xb0) : QColor(0x26, 0x7f, 0x99);
    return theme.text;
}

bool opensBlock(const QString& text)
{
    return text.endsWith(u'{') || text.endsWith(u':');
}
} // namespace

QList<CodeLine> program(Page& page, const char* section, int count)
{
    QList<CodeLine> lines;
    int indentation = 0;
    for (int i = 0; i < count; ++i) {
        const QString text = page.texts.code(section).trimmed();
        lines.append({indentation, text});
        if (opensBlock(text))
            indentation = std::min(indentation + indentationStep, deepestIndentation);
        else if (page.random.isLuckyIn(3))
            indentation = std::max(0, indentation - indentationStep);
    }
    return lines;
}

QList<Run> highlighted(const QString& line, const Theme& theme)
{
    static const QRegularExpression tokens(
        u"(?<comment>//.*|#(?!include).*)|(?<string>\"[^\"]*\"|'[^']*')|"
        u"(?<keyword>\\b(?:const|auto|class|final|public|explicit|if|return|for|int|while|"
        u"template|typename|void|throw|namespace|static|constexpr|double|switch|case|break|"
        u"import|from|def|in|not|or|is|None|raise|with|open|as|try|elif|except|assert|lambda|"
        u"self|True)\\b|#include)|(?<type>\\b[A-Z]\\w+)|(?<number>\\b\\d[\\d.]*)|"
        u"\\s+|\\w+|[^\\w\\s]"_s);
    QList<Run> runs;
    auto found = tokens.globalMatch(line);
    while (found.hasNext()) {
        const QRegularExpressionMatch token = found.next();
        const QColor colour = colourOf(token, theme);
        if (!runs.isEmpty() && runs.last().colour == colour)
            runs.last().text += token.captured();
        else
            runs.append({token.captured(), colour});
    }
    return runs;
}

QString cut(const QString& text, const QFont& font, double width)
{
    return Canvas::width(text, font) <= width ? text : wrapped(text, font, width).first();
}

void write(Page& page, QPointF top, double width, double rowHeight, const QList<CodeLine>& lines,
    int firstNumber, const QFont& font)
{
    const double column = Canvas::width(u"m"_s, font);
    const double numbers = firstNumber < 0 ? 0 : 5 * column;
    const double gap = firstNumber < 0 ? 0 : 2 * column;
    for (int i = 0; i < int(lines.size()); ++i) {
        const QRectF row(top.x(), top.y() + i * rowHeight, width, rowHeight);
        const double baseline = Canvas::centredBaseline(row, font);
        if (firstNumber >= 0) {
            const QString number = QString::number(firstNumber + i);
            page.canvas.write({row.left() + numbers - Canvas::width(number, font), baseline},
                number, font, page.look.theme.secondary);
        }
        const double left = row.left() + numbers + gap + lines[i].indentation * column;
        const QString text = cut(lines[i].text, font, row.right() - left);
        page.canvas.writeRuns({left, baseline}, highlighted(text, page.look.theme), font);
    }
}

QString listingLine(Page& page)
{
    static const QStringList modes{u"-rw-r--r--"_s, u"-rwxr-xr-x"_s, u"-rw-------"_s};
    static const QStringList users{u"root root"_s, u"anna users"_s, u"www-data www-data"_s};
    static const QStringList months{u"Jan"_s, u"Mar"_s, u"May"_s, u"Aug"_s, u"Oct"_s, u"Dec"_s};
    return u"%1 %2 %3 %4 %5 %6 %7 %8"_s
        .arg(page.random.pick(modes), page.texts.integer(1, 4), page.random.pick(users))
        .arg(page.random.between(12, 9999999), 8)
        .arg(page.random.pick(months))
        .arg(page.random.between(1, 28), 2)
        .arg(page.texts.time(), page.texts.one("files"));
}

QString terminalLine(Page& page)
{
    switch (page.random.below(6)) {
    case 0:
        return listingLine(page);
    case 1:
        return page.texts.hexadecimal(7) + u' ' + page.texts.code("commits");
    case 2:
        return page.texts.code("compiler");
    case 3:
        return u"anna@build-07:~$ "_s + page.texts.code("commands");
    default:
        return page.texts.time()
            + u":%1.%2 "_s.arg(page.random.between(10, 59)).arg(page.random.between(100, 999))
            + page.texts.code("log");
    }
}

} // namespace Lumenote::Bench::CodePainter
