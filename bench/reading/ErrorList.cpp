#include "ErrorList.h"

#include "Reader.h"
#include "Scorer.h"

#include <QMap>
#include <QTextStream>

namespace Lumenote::Bench {

using namespace Qt::StringLiterals;

namespace {
QString told(const Score& score)
{
    return u"CER %1 %, lost %2 of %3, extra %4"_s.arg(score.errorPercent(), 0, 'f', 2)
        .arg(score.lost)
        .arg(score.pieces)
        .arg(score.extra);
}

QString told(const PieceReading& reading)
{
    return reading.isLost ? u"  lost     %1"_s.arg(reading.expected)
                          : u"  %1  %2\n       as  %3"_s.arg(reading.errors, 7)
                                .arg(reading.expected, reading.nearest);
}
/// Tells the pieces that were read, but not where they stand.
void tellMissedBoxes(QTextStream& out, const Picture& picture, const Options& options)
{
    for (const Piece& piece : Readers::missedBoxes(picture, options).value_or(QList<Piece>())) {
        out << u"  not at  %1,%2 %3x%4: "_s.arg(piece.rect.x())
                   .arg(piece.rect.y())
                   .arg(piece.rect.width())
                   .arg(piece.rect.height())
            << piece.text << Qt::endl;
    }
}
} // namespace

void printErrors(const QList<Picture>& pictures, const Options& options)
{
    QTextStream out(stdout);
    QMap<QString, Score> groups;
    Score total;
    for (const Picture& picture : pictures) {
        const CommandRun run = Readers::read(options.readers.first(), picture, options);
        QList<PieceReading> readings;
        const Score score = Scorer::score(picture.pieces, QString::fromUtf8(run.output), &readings);
        out << picture.name << ": " << told(score);
        if (run.exitCode != 0)
            out << ", exit code " << run.exitCode;
        out << Qt::endl;
        for (const PieceReading& reading : std::as_const(readings)) {
            if (reading.errors > 0)
                out << told(reading) << Qt::endl;
        }
        if (options.readers.first() == "lumenote"_L1)
            tellMissedBoxes(out, picture, options);
        groups[picture.group] += score;
        total += score;
    }
    out << Qt::endl;
    for (auto group = groups.cbegin(); group != groups.cend(); ++group)
        out << group.key() << ": " << told(group.value()) << Qt::endl;
    out << "all: " << told(total) << Qt::endl;
}

} // namespace Lumenote::Bench
