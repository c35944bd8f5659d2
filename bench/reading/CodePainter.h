#pragma once

#include "Scene.h"

/// Lines of source code and of terminals, in the colours that editors give them.
namespace Lumenote::Bench::CodePainter {

/// Indentation in columns, and the line itself.
struct CodeLine {
    int indentation = 0;
    QString text;
};

/// @p count lines that look like a program; @p section names the language in `code.txt`.
QList<CodeLine> program(Page& page, const char* section, int count);

/// Cuts @p line into words, signs, strings and comments with their colours.
QList<Run> highlighted(const QString& line, const Theme& theme);

/// Writes @p lines from the row at @p top on, with line numbers from @p firstNumber when that
/// isn't negative; lines too long for @p width are cut at a word.
void write(Page& page, QPointF top, double width, double rowHeight, const QList<CodeLine>& lines,
    int firstNumber, const QFont& font);

/// @p text without the words that reach beyond @p width.
QString cut(const QString& text, const QFont& font, double width);

/// One line of a terminal's output, of any kind.
QString terminalLine(Page& page);

/// One row of a detailed listing of a folder.
QString listingLine(Page& page);

} // namespace Lumenote::Bench::CodePainter
