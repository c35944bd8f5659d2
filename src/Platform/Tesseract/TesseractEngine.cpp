#include "Platform/Tesseract/TesseractEngine.h"

#include <tesseract/baseapi.h>
#include <tesseract/resultiterator.h>

#include <algorithm>
#include <cstdlib>
#include <mutex>

// Three quarters of an engine's start go into sorting a list of look-alike letters that only
// Tesseract's old recogniser asks for, and no setting spares it. A function of the program comes
// before one of the same name in a shared library, so this one takes the place of Tesseract's.
// Everywhere else Tesseract just starts as slowly as it is made to: a version without a function of
// this very name never calls it, nor does one that binds its own calls, and a library that is
// linked statically puts its own in the place of a weak one.
// NOLINTBEGIN(readability-*): the library's own names.
namespace tesseract {
class UNICHARSET;
class UnicharAmbigs {
public:
    void LoadUniversal(const UNICHARSET& encoder, UNICHARSET* characters);
};
__attribute__((weak)) void UnicharAmbigs::LoadUniversal(
    const UNICHARSET& /*encoder*/, UNICHARSET* /*characters*/)
{
}
} // namespace tesseract
// NOLINTEND(readability-*)

namespace Platform {

namespace {

/// Keeps Tesseract's own diagnostics off standard error. The variable is one for all engines, and
/// not guarded: it is set before the first of them runs, and never again.
void silence(tesseract::TessBaseAPI& api)
{
    static std::once_flag isSet;
    std::call_once(isSet, [&api] { api.SetVariable("debug_file", "/dev/null"); });
}

} // namespace

TesseractEngine::TesseractEngine()
    : m_api(std::make_unique<tesseract::TessBaseAPI>())
{
}

TesseractEngine::~TesseractEngine() = default;

QStringList TesseractEngine::installedLanguages()
{
    tesseract::TessBaseAPI api;
    silence(api);
    // Only a start finds the data folder. One without a language finds it and loads nothing; where
    // there is no folder it fails, and the list is empty.
    (void)api.Init(nullptr, "", tesseract::OEM_LSTM_ONLY);
    std::vector<std::string> codes;
    api.GetAvailableLanguagesAsVector(&codes);

    QStringList languages;
    for (const std::string& code : codes) {
        const bool readsText = code != "osd" && code != "equ";
        if (readsText)
            languages.append(QString::fromStdString(code));
    }
    languages.sort();
    return languages;
}

Result<std::unique_ptr<TesseractEngine>> TesseractEngine::start(const QString& language)
{
    std::unique_ptr<TesseractEngine> engine(new TesseractEngine);
    tesseract::TessBaseAPI& api = *engine->m_api;
    silence(api);
    if (api.Init(nullptr, language.toUtf8().constData(), tesseract::OEM_LSTM_ONLY) != 0)
        return tl::make_unexpected(Error{
            Error::Kind::failed, QStringLiteral("no recogniser for language %1").arg(language)});
    api.SetVariable("tessedit_do_invert", "0");
    // What a page has and a single line hasn't: columns of equal letters, and paragraphs.
    api.SetVariable("textord_disable_pitch_test", "1");
    api.SetVariable("paragraph_text_based", "0");
    return engine;
}

LineReading TesseractEngine::readLine(const QImage& line, Framing framing)
{
    m_api->SetPageSegMode(
        framing == Framing::engine ? tesseract::PSM_SINGLE_LINE : tesseract::PSM_RAW_LINE);
    m_api->SetImage(line.constBits(), line.width(), line.height(), 1, int(line.bytesPerLine()));
    m_api->SetSourceResolution(150);
    LineReading reading;
    if (m_api->Recognize(nullptr) != 0)
        return reading;
    const std::unique_ptr<tesseract::ResultIterator> symbols(m_api->GetIterator());
    if (!symbols || symbols->Empty(tesseract::RIL_SYMBOL))
        return reading;
    double sum = 0;
    do {
        const std::unique_ptr<char[]> text(symbols->GetUTF8Text(tesseract::RIL_SYMBOL));
        if (!text || text[0] == '\0')
            continue;
        const bool startsWord = symbols->IsAtBeginningOf(tesseract::RIL_WORD);
        int left = 0;
        int top = 0;
        int right = 0;
        int bottom = 0;
        symbols->BoundingBox(tesseract::RIL_SYMBOL, &left, &top, &right, &bottom);
        const double confidence = symbols->Confidence(tesseract::RIL_WORD);
        reading.symbols.push_back({QString::fromUtf8(text.get()), (left + right) / 2.0, startsWord,
            confidence, symbols->WordIsFromDictionary()});
        sum += confidence;
    } while (symbols->Next(tesseract::RIL_SYMBOL));
    reading.confidence = sum / double(std::max<std::size_t>(1, reading.symbols.size()));
    return reading;
}

} // namespace Platform
