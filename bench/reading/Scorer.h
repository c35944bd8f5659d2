#pragma once

#include "Picture.h"

namespace Lumenote::Bench {

/// How one piece was read.
struct PieceReading {
    QString expected;
    QString nearest; ///< The part of the text read that is most like it.
    int errors = 0; ///< Characters to change, to add or to take away; all of them when lost.
    bool isLost = false;
};

/// How one or more pictures were read.
struct Score {
    qint64 characters = 0; ///< Expected.
    qint64 errors = 0;
    qint64 extra = 0; ///< Characters that belong to no piece, blanks aside.
    int pieces = 0;
    int lost = 0;

    double errorPercent() const;
    double lostPercent() const;
    double extraPercent() const;
    Score& operator+=(const Score& other);
};

namespace Scorer {

/// Runs of blanks and line ends as one blank, and signs that differ by nothing but their looks
/// as one sign: straight and curly quotes, hyphen and en dash.
QString normalised(const QString& text);

/// Finds each of @p pieces in @p read, wherever it stands, and takes the text found away, so
/// that a piece that comes twice must be read twice. The text that suits a piece best goes to
/// it: pieces are served by how many characters they have right, less those they have wrong.
/// A piece of which more than half is wrong is lost, and takes nothing away; one of a
/// character or two must stand alone to be found.
Score score(
    const QList<Piece>& pieces, const QString& read, QList<PieceReading>* readings = nullptr);

} // namespace Scorer

} // namespace Lumenote::Bench
