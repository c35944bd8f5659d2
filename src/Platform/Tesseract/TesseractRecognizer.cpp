#include "Platform/Tesseract/TesseractRecognizer.h"

#include "Platform/Tesseract/GlyphRepair.h"
#include "Platform/Tesseract/LanguagePass.h"
#include "Platform/Tesseract/LineReader.h"
#include "Platform/Tesseract/PageSpacing.h"
#include "Platform/Tesseract/TextFilter.h"
#include "Platform/Tesseract/TextRepair.h"
#include "Platform/TextLayout/Backdrop.h"
#include "Platform/TextLayout/PageLayout.h"

#include <algorithm>
#include <thread>

namespace Platform {

namespace {

/// A picture that is smaller, in pixels, is given a margin.
constexpr int smallestSide = 48;

Error cancelled()
{
    return {Error::Kind::cancelled, {}};
}

TextObservation observationOf(const QRect& box, const QRect& image, const LineReading& reading)
{
    return {{{textOf(reading.symbols), reading.confidence / 100}}, QRectF(box & image)};
}

/// Sets right what the page itself tells better than an engine that sees one line at a time.
void settleByLooks(const PageLayout& page, std::vector<LineReading>& readings)
{
    for (std::size_t level = 0; level < page.levels.size(); ++level) {
        std::vector<LineGlyphs> lines = lineGlyphsOf(page, level, readings);
        repairByGlyphs(lines);
        respacePage(lines);
        for (const LineGlyphs& line : lines)
            repair(line.reading->symbols);
    }
}

} // namespace

TesseractRecognizer::TesseractRecognizer()
    : m_engines(std::max(1, int(std::thread::hardware_concurrency())))
{
}

Result<QList<TextObservation>> TesseractRecognizer::recognize(
    const QImage& image, std::stop_token stop)
{
    const QStringList languages = TesseractEngine::installedLanguages();
    if (languages.isEmpty())
        return tl::make_unexpected(Error{Error::Kind::missingLanguageData,
            QStringLiteral(
                "no language data is installed — install the package tesseract-ocr-eng")});
    if (image.isNull())
        return QList<TextObservation>();

    const QImage opaque = opaqueImageOf(image);
    const int margin = std::min(image.width(), image.height()) < smallestSide ? smallestSide : 0;
    const PageLayout page = layoutOf(margin > 0 ? framedImageOf(opaque, margin) : opaque, stop);
    LineReader reader(page, m_engines);
    Result<std::vector<LineReading>> readings = readInBestLanguages(page, reader, languages, stop);
    if (stop.stop_requested())
        return tl::make_unexpected(cancelled());
    if (!readings)
        return tl::make_unexpected(readings.error());
    settleByLooks(page, *readings);
    settleLoneLetters(page, *readings);

    QList<TextObservation> observations;
    for (const int line : linesWithText(page, *readings))
        observations.append(
            observationOf(page.lines[std::size_t(line)].box.translated(-margin, -margin),
                image.rect(), (*readings)[std::size_t(line)]));
    return observations;
}

} // namespace Platform
