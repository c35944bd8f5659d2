#include "Platform/Tesseract/TextFilter.h"

#include "Platform/TextLayout/Quantiles.h"

#include <algorithm>

namespace Platform {

namespace {

/// How much a reading says: its length, weighed by how sure it is.
double weightOf(const LineReading& reading)
{
    constexpr double coinToss = 50;
    return double(reading.symbols.size()) * std::max(0.0, reading.confidence - coinToss);
}

/// The letter height in pixels of the picture.
double letterHeightOf(const PageLayout& page, std::size_t line)
{
    const PlacedLine& placed = page.lines[line];
    return placed.line.letterHeight * page.levels[std::size_t(placed.level)].reduction;
}

bool isWordSymbol(const ReadSymbol& symbol)
{
    return symbol.text.front().isLetterOrNumber();
}

bool isDigit(const ReadSymbol& symbol)
{
    return symbol.text.front().isDigit();
}

bool isLowerCase(const ReadSymbol& symbol)
{
    return symbol.text.front().isLower();
}

/// What a line of code may consist of alone.
bool isBracket(const ReadSymbol& symbol)
{
    return QStringLiteral("{}[]();,").contains(symbol.text.front());
}

/// What else stands in the picture, beside which a short line has to be credible: a check box is
/// read as "O", a magnifying glass as "Q", and half an avatar as "4".
struct Context {
    double letterHeight = 0; ///< Of the sure lines; 0 where there is none.
    std::size_t lineCount = 0;
};

Context contextOf(const PageLayout& page, const std::vector<LineReading>& readings)
{
    constexpr double sureConfidence = 80;
    constexpr std::ptrdiff_t sureSymbols = 4;
    constexpr double sureShortConfidence = 95;
    constexpr std::ptrdiff_t sureShortSymbols = 2;
    std::vector<double> heights;
    for (std::size_t line = 0; line < readings.size(); ++line) {
        const std::vector<ReadSymbol>& symbols = readings[line].symbols;
        const auto count = std::count_if(symbols.begin(), symbols.end(), isWordSymbol);
        const double confidence = readings[line].confidence;
        if ((confidence >= sureConfidence && count >= sureSymbols)
            || (confidence >= sureShortConfidence && count >= sureShortSymbols))
            heights.push_back(letterHeightOf(page, line));
    }
    Context context{0, page.lines.size()};
    if (!heights.empty())
        context.letterHeight = medianOf(std::move(heights));
    return context;
}

/// Letters whose capitals look like their small ones, but for the size.
bool hasAlikeCapital(QChar letter)
{
    return QStringLiteral("COPSUVWXYZ").contains(letter.toUpper());
}

/// Whether one shape was read as one letter, or as the same letter in both cases ("Ss", "WwW").
bool isLoneLetter(const LineReading& reading)
{
    const std::vector<ReadSymbol>& symbols = reading.symbols;
    return !symbols.empty() && hasAlikeCapital(symbols.front().text.front())
        && std::all_of(symbols.begin(), symbols.end(), [&](const ReadSymbol& symbol) {
               return symbol.text.toUpper() == symbols.front().text.toUpper();
           });
}

struct ShortLine {
    const LineReading& reading;
    double letterHeight = 0; ///< In pixels of the picture.
    double aspect = 1; ///< Width to height.
    std::size_t components = 1;
};

/// Whether one or two characters are credible text.
bool isShortText(const ShortLine& line, const Context& context)
{
    constexpr double widestDigit = 0.92;
    constexpr double widestLargeDigit = 0.78;
    constexpr double widestLetter = 1.45;
    constexpr double widestUsualLetter = 1.15;
    const std::vector<ReadSymbol>& symbols = line.reading.symbols;
    const double confidence = line.reading.confidence;
    const bool areDigits = std::all_of(symbols.begin(), symbols.end(), isDigit);
    const bool isOneShape = symbols.size() == 1 && line.components == 1;
    const bool isWide = QStringLiteral("MWmw").contains(symbols.front().text.front());
    if (isOneShape
        && line.aspect > (areDigits ? widestDigit
                   : isWide         ? widestLetter
                                    : widestUsualLetter))
        return false;
    if (context.letterHeight == 0)
        return context.lineCount <= 3 && confidence >= 85 && line.aspect <= widestDigit * 2;

    const double height = line.letterHeight / context.letterHeight;
    if (areDigits && confidence >= 93 && height <= 3.5
        && (height <= 1.25 || !isOneShape || line.aspect <= widestLargeDigit))
        return true;
    if (height < 0.5 || height > 1.6)
        return false;
    // What is exactly as tall as the letters around it is likelier one of them than an icon.
    const bool isOfContext = height >= 0.75 && height <= 1.25;
    if (areDigits)
        return confidence >= (isOfContext ? 35 : 60);
    if (std::all_of(symbols.begin(), symbols.end(), isLowerCase))
        return confidence >= 93 && symbols.size() > 1;
    return confidence >= (isOfContext ? 30 : 75);
}

bool isText(const ShortLine& line, const Context& context)
{
    const std::vector<ReadSymbol>& symbols = line.reading.symbols;
    const double confidence = line.reading.confidence;
    if (symbols.empty())
        return false;
    const bool fitsContext = context.letterHeight > 0
        && line.letterHeight >= 0.5 * context.letterHeight
        && line.letterHeight <= 1.8 * context.letterHeight;
    const auto wordSymbols = std::count_if(symbols.begin(), symbols.end(), isWordSymbol);
    if (wordSymbols == 0)
        return fitsContext && confidence >= 75
            && std::all_of(symbols.begin(), symbols.end(), isBracket);
    if (symbols.size() <= 2)
        return isShortText(line, context);
    if (symbols.size() == 3)
        return context.letterHeight > 0 ? confidence >= (fitsContext ? 55 : 85) : confidence >= 90;
    if (context.letterHeight == 0)
        return confidence >= 70;
    const bool isWordOfContext = fitsContext && wordSymbols >= 4;
    return isWordOfContext || confidence >= 45;
}

/// Of a line of large letters and the smaller ones that lie in it, or around it with their frame,
/// drops the side that says less.
void settleOverlaps(
    const PageLayout& page, const std::vector<LineReading>& readings, std::vector<bool>& isKept)
{
    for (std::size_t large = 0; large < page.lines.size(); ++large) {
        if (page.lines[large].level == 0 || !isKept[large])
            continue;
        std::vector<std::size_t> smaller;
        double smallerWeight = 0;
        for (std::size_t line = 0; line < page.lines.size(); ++line) {
            const QRect& box = page.lines[line].box;
            if (!isKept[line] || page.lines[line].level >= page.lines[large].level
                || (!liesMostlyIn(box, page.lines[large].box)
                    && !liesMostlyIn(page.lines[large].box, box)))
                continue;
            smaller.push_back(line);
            smallerWeight += weightOf(readings[line]);
        }
        if (smallerWeight >= weightOf(readings[large])) {
            isKept[large] = smaller.empty();
            continue;
        }
        for (const std::size_t line : smaller)
            isKept[line] = false;
    }
}

} // namespace

void settleLoneLetters(const PageLayout& page, std::vector<LineReading>& readings)
{
    // From descender to ascender, small letters are half as tall and capitals three quarters.
    constexpr double leastCapital = 0.58;
    const Context context = contextOf(page, readings);
    for (std::size_t line = 0; line < readings.size(); ++line) {
        LineReading& reading = readings[line];
        if (page.lines[line].line.components.size() != 1 || !isLoneLetter(reading)
            || page.lines[line].box.height() < leastCapital * context.letterHeight)
            continue;
        reading.symbols.resize(1);
        reading.symbols.front().text = reading.symbols.front().text.toUpper();
    }
}

std::vector<int> linesWithText(const PageLayout& page, const std::vector<LineReading>& readings)
{
    const Context context = contextOf(page, readings);
    std::vector<bool> isKept(page.lines.size());
    for (std::size_t line = 0; line < page.lines.size(); ++line) {
        const QRect& box = page.lines[line].box;
        isKept[line] = isText({readings[line], letterHeightOf(page, line),
                                  double(box.width()) / std::max(1, box.height()),
                                  page.lines[line].line.components.size()},
            context);
    }
    settleOverlaps(page, readings, isKept);
    std::vector<int> kept;
    for (std::size_t line = 0; line < page.lines.size(); ++line)
        if (isKept[line])
            kept.push_back(int(line));
    return kept;
}

} // namespace Platform
