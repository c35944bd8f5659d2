#pragma once

#include "Platform/Error.h"

#include <QImage>
#include <QList>
#include <QRectF>
#include <QString>

#include <stop_token>

namespace Platform {

/// One reading of a line.
struct TextCandidate {
    QString text;
    double confidence = 0; ///< 0 (none) to 1 (certain).
};

/// One line that a recogniser found.
struct TextObservation {
    QList<TextCandidate> candidates; ///< Best first; may be empty.
    QRectF boundingBox; ///< Pixels of the image given, origin at its upper left corner, y down.
};

/// Reads the text of a bitmap, on the device.
class TextRecognizer {
public:
    virtual ~TextRecognizer() = default;

    /// Reads @p image in whatever languages are installed and answers its lines in reading order;
    /// an image without text gives an empty list.
    ///
    /// Blocks the calling thread, which must not be the main one, and may be called from several
    /// threads at once. Comes back within 250 ms of a stop request with Error::Kind::cancelled.
    /// Fails with Error::Kind::missingLanguageData where no language is installed.
    virtual Result<QList<TextObservation>> recognize(const QImage& image, std::stop_token stop) = 0;
};

} // namespace Platform
