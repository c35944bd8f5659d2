#pragma once

#include <QList>
#include <QRectF>
#include <QSize>
#include <QString>
#include <QStringList>

namespace Lumenote::Bench {

/// Readers are tuned on the one half of the pictures and judged by the other.
enum class Split { tuning, test };

/// One visual line, label or cell of a picture.
struct Piece {
    QString text;
    QRectF rect; ///< Of the ink, in pixels of the picture.

    bool operator==(const Piece&) const = default;
};

/// What is known of one drawn picture.
struct Picture {
    QString name;
    QString group; ///< The kind of picture, and the row of the table that it counts in.
    Split split = Split::tuning;
    bool isFlat = true; ///< Whether all text stands on plain colours.
    QStringList languages; ///< As the reader's language data are named: "eng", "deu".
    QString file; ///< Relative to the folder of the pictures.
    QSize size;
    QList<Piece> pieces;

    bool operator==(const Picture&) const = default;
};

} // namespace Lumenote::Bench
