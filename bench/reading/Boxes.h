#pragma once

#include "Picture.h"

namespace Lumenote::Bench {

/// A line that a reader found.
struct ReadLine {
    QRectF rect; ///< In pixels of the picture.
    QString text;
};

namespace Boxes {

/// Reads what `reading-boxes` prints.
QList<ReadLine> parse(const QByteArray& output);

/// Those of @p pieces that do not stand where a line with their text was found. A line of one piece
/// must cover it: the area that both have in common is 60 % of what they have together. Of a line
/// that joins several pieces of a row this can't be asked; the middle of the piece must lie
/// in it, and half of their common height must be shared.
QList<Piece> missed(const QList<Piece>& pieces, const QList<ReadLine>& lines);

} // namespace Boxes

} // namespace Lumenote::Bench
