#include "UI/Text/TextRangeRects.h"

#include <QGlyphRun>
#include <QTextLayout>

#include <algorithm>
#include <utility>

namespace Lumenote {

namespace {

constexpr double touching = 0.5; ///< What is closer together is one piece.

/// By the glyphs: where writing changes its direction, a cursor could stand at two places.
QList<QRectF> piecesOf(const QTextLine& line, int from, int to)
{
    const auto lineRect = line.naturalTextRect();
    QList<QRectF> glyphs;
    for (const auto& run : line.glyphRuns(from, to - from))
        glyphs.append({run.boundingRect().left(), lineRect.top(), run.boundingRect().width(),
            lineRect.height()});
    std::ranges::sort(glyphs, {}, &QRectF::left);

    QList<QRectF> pieces;
    for (const auto& rect : std::as_const(glyphs)) {
        if (!pieces.isEmpty() && rect.left() <= pieces.constLast().right() + touching)
            pieces.last() |= rect;
        else
            pieces.append(rect);
    }
    return pieces;
}

} // namespace

QList<QRectF> rectsOf(const TextSearch::Range& range, const QTextLayout& layout)
{
    QList<QRectF> rects;
    for (int index = 0; index < layout.lineCount(); ++index) {
        const auto line = layout.lineAt(index);
        const int lineEnd = line.textStart() + line.textLength();
        const int from = std::max(static_cast<int>(range.position), line.textStart());
        const int to = std::min(static_cast<int>(range.position + range.length), lineEnd);
        if (from == line.textStart() && to == lineEnd && to > from)
            rects.append(line.naturalTextRect());
        else if (to > from)
            rects.append(piecesOf(line, from, to));
    }
    return rects;
}

} // namespace Lumenote
