#pragma once

#include <QList>
#include <QRectF>
#include <QSizeF>
#include <QString>

namespace Lumenote {

/// One recognised line.
struct OCRLine {
    QString text; ///< The best candidate, exactly as the recogniser gave it.
    QRectF boundingBox; ///< Pixels of the image, origin at its upper left corner, y down.

    bool operator==(const OCRLine&) const = default;
};

/// The outcome of one recognition.
struct OCRResult {
    QList<OCRLine> lines; ///< In the recogniser's order.
    QSizeF imageSize; ///< Pixels.
    bool interrupted = false; ///< Recognition did not finish; there are no lines then.

    /// All lines, joined with one line feed; none at the end.
    QString text() const;

    bool operator==(const OCRResult&) const = default;
};

} // namespace Lumenote
