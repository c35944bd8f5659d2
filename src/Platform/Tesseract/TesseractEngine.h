#pragma once

#include "Platform/Error.h"
#include "Platform/Tesseract/LineReading.h"

#include <QImage>
#include <QString>
#include <QStringList>

#include <memory>
#include <vector>

namespace tesseract { // NOLINT(readability-identifier-naming): the library's own.
class TessBaseAPI;
}

namespace Platform {

/// One Tesseract engine with one language. Costs about 20 ms to start and up to 20 MB. Any
/// thread, one at a time.
class TesseractEngine {
public:
    /// Starts an engine for @p language, a code such as "eng".
    static Result<std::unique_ptr<TesseractEngine>> start(const QString& language);

    /// The codes of the installed languages, in alphabetical order, without the data that reads
    /// no text (orientation, equations).
    static QStringList installedLanguages();

    ~TesseractEngine();
    TesseractEngine(const TesseractEngine&) = delete;
    TesseractEngine& operator=(const TesseractEngine&) = delete;

    /// Who finds the letters' feet and tops in the picture of a line.
    enum class Framing {
        engine, ///< Tesseract does, which takes out what stands off the line; it fails on short
                ///< ones.
        picture, ///< The picture is cut from ascender to descender as it is.
    };

    /// Reads one line, dark on white, of QImage::Format_Grayscale8.
    LineReading readLine(const QImage& line, Framing framing);

private:
    TesseractEngine();

    std::unique_ptr<tesseract::TessBaseAPI> m_api;
};

} // namespace Platform
