#pragma once

#include "Platform/Tesseract/EnginePool.h"
#include "Platform/TextRecognizer.h"

namespace Platform {

/// Reads text with Tesseract, line by line: the lines are found and prepared here, since Tesseract
/// was made for scanned pages and loses much of a screen's text by itself.
class TesseractRecognizer final : public TextRecognizer {
public:
    TesseractRecognizer();

    Result<QList<TextObservation>> recognize(const QImage& image, std::stop_token stop) override;

private:
    EnginePool m_engines;
};

} // namespace Platform
