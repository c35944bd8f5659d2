#include "Platform/Tesseract/LanguagePass.h"

#include <algorithm>
#include <span>
#include <utility>

namespace Platform {

namespace {

/// A word read with less confidence than this may be of another language.
constexpr double doubtfulWord = 90;
constexpr double doubtfulKnownWord = 65;
constexpr std::ptrdiff_t shortestWord = 4;
/// A line read with less than this may be of another script altogether.
constexpr double doubtfulLine = 60;
/// A line of fewer is no sample, but may be an icon.
constexpr int fewestLetters = 4;
constexpr std::size_t fewestComponents = 3;
/// In a page of one language a dictionary lacks fewer words than one in so many; a few names may
/// be more by chance.
constexpr int unknownShare = 8;
constexpr int chanceOfNames = 5;
/// A line of so many unknown words, most of its words, is of another language, whatever the page.
constexpr int foreignLine = 3;
/// How many lines tell a language, and how much surer it has to be on one of them.
constexpr std::size_t sampleSize = 4;
constexpr double sureGain = 3;
/// How much surer than the main language another one has to be to have its reading taken.
constexpr double leastGain = 1.5;
/// Each language costs the start of an engine and a sample; of more than this nobody waits for all.
constexpr qsizetype mostLanguagesTried = 10;

/// What the readings say of their language.
struct Evidence {
    int letters = 0;
    int words = 0; ///< Long ones of letters alone: names of files and of variables tell nothing.
    int unknownWords = 0; ///< Of these, the ones that the language's dictionary lacks.
    int doubtfulWords = 0; ///< Those that another language may read better.
    bool isIllegible = false; ///< Letters of another script, or no text.

    bool isDoubtful() const { return doubtfulWords > 0 || isIllegible; }
};

using Word = std::span<const ReadSymbol>;

/// Whether @p word is one of a natural language: long enough, of letters alone but for punctuation
/// at its end, with no capital inside. A "B" may have been "ß".
bool isNaturalWord(Word word)
{
    const auto end = std::find_if_not(word.rbegin(), word.rend(), [](const ReadSymbol& symbol) {
        return symbol.text.front().isPunct();
    }).base();
    const auto isCapital = [](const ReadSymbol& symbol) {
        return symbol.text.front().isUpper() && symbol.text.front() != u'B';
    };
    const bool isInCapitals = word.size() > 1 && isCapital(word[1]);
    return end - word.begin() >= shortestWord
        && std::all_of(word.begin(), end,
            [](const ReadSymbol& symbol) { return symbol.text.front().isLetter(); })
        && std::all_of(word.begin() + 1, end, [&](const ReadSymbol& symbol) {
               return isCapital(symbol) == isInCapitals || symbol.text.front() == u'B';
           });
}

Evidence evidenceOf(const LineReading& reading)
{
    Evidence evidence;
    for (const Word word : wordsOf(std::span(reading.symbols))) {
        if (!isNaturalWord(word))
            continue;
        const bool isKnown = word.front().isOfKnownWord;
        ++evidence.words;
        evidence.unknownWords += isKnown ? 0 : 1;
        evidence.doubtfulWords +=
            word.front().confidence < (isKnown ? doubtfulKnownWord : doubtfulWord) ? 1 : 0;
    }
    evidence.letters = int(std::count_if(reading.symbols.begin(), reading.symbols.end(),
        [](const ReadSymbol& symbol) { return symbol.text.front().isLetter(); }));
    evidence.isIllegible = reading.confidence < doubtfulLine && evidence.letters >= fewestLetters
        && evidence.letters * 10 >= int(reading.symbols.size()) * 6;
    return evidence;
}

std::vector<Evidence> evidenceOf(const std::vector<LineReading>& readings)
{
    std::vector<Evidence> evidence;
    evidence.reserve(readings.size());
    for (const LineReading& reading : readings)
        evidence.push_back(evidenceOf(reading));
    return evidence;
}

/// Whether some of the page is written in none of the languages it was read in. Nothing else costs
/// so little to know: one more engine with a few lines takes as long as a small picture.
bool hasForeignWords(const std::vector<Evidence>& lines)
{
    int words = 0;
    int unknownWords = 0;
    int legible = 0;
    int illegible = 0;
    for (const Evidence& line : lines) {
        if (line.unknownWords >= foreignLine && line.unknownWords * 2 > line.words)
            return true;
        words += line.words;
        unknownWords += line.unknownWords;
        illegible += line.isIllegible ? 1 : 0;
        legible += !line.isIllegible && line.letters >= fewestLetters ? 1 : 0;
    }
    return unknownWords * unknownShare >= words + chanceOfNames || illegible > legible;
}

/// The lines that another language may read better, those with the most to tell first.
std::vector<int> doubtfulLines(const PageLayout& page, const std::vector<Evidence>& evidence)
{
    std::vector<int> lines;
    for (std::size_t line = 0; line < evidence.size(); ++line)
        if (evidence[line].isDoubtful()
            && page.lines[line].line.components.size() >= fewestComponents)
            lines.push_back(int(line));
    const auto weightOf = [&](int line) {
        return std::pair(evidence[std::size_t(line)].doubtfulWords,
            page.lines[std::size_t(line)].line.components.size());
    };
    std::stable_sort(
        lines.begin(), lines.end(), [&](int a, int b) { return weightOf(a) > weightOf(b); });
    return lines;
}

/// The lines that a further language may read better. Where much is doubtful that is every line
/// with words, since "fur" for "für" raises no doubt.
std::vector<int> linesToReadAgain(
    const std::vector<int>& doubtful, const std::vector<Evidence>& evidence)
{
    constexpr std::size_t manyDoubtful = 6; // One line in so many.
    std::vector<int> lines;
    for (std::size_t line = 0; line < evidence.size(); ++line)
        if (evidence[line].letters >= 2 || evidence[line].isDoubtful())
            lines.push_back(int(line));
    return doubtful.size() * manyDoubtful >= lines.size() ? lines : doubtful;
}

/// Keeps of two readings of each line the surer one.
void keepSurer(const std::vector<int>& lines, std::vector<LineReading> others,
    std::vector<LineReading>& readings)
{
    for (std::size_t index = 0; index < lines.size(); ++index) {
        LineReading& kept = readings[std::size_t(lines[index])];
        if (others[index].confidence > kept.confidence + leastGain)
            kept = std::move(others[index]);
    }
}

/// Whether @p tried, in another language, is surely better than what was read of three quarters of
/// @p sample. One line may be so by chance.
bool isBetter(const std::vector<int>& sample, const std::vector<LineReading>& tried,
    const std::vector<LineReading>& readings)
{
    std::size_t better = 0;
    for (std::size_t index = 0; index < sample.size(); ++index) {
        const LineReading& known = readings[std::size_t(sample[index])];
        better += tried[index].confidence >= known.confidence + sureGain;
    }
    return better >= 2 && better * 2 >= sample.size();
}

} // namespace

Result<std::vector<LineReading>> readInBestLanguages(const PageLayout& page, LineReader& reader,
    const QStringList& languages, const std::stop_token& stop)
{
    const QString english = QStringLiteral("eng");
    const QString main = languages.contains(english) ? english : languages.front();
    QStringList others = languages;
    others.removeAll(main);
    others = others.mid(0, mostLanguagesTried);

    Result<std::vector<LineReading>> readings = reader.readPage(main, stop);
    if (!readings)
        return readings;
    const std::vector<Evidence> evidence = evidenceOf(*readings);
    const std::vector<int> doubtful = doubtfulLines(page, evidence);
    if (doubtful.empty() || !hasForeignWords(evidence))
        return readings;
    const std::vector<int> sample(
        doubtful.begin(), doubtful.begin() + std::ptrdiff_t(std::min(sampleSize, doubtful.size())));
    const std::vector<LineReading> inMain = *readings;
    for (const QString& language : others) {
        auto tried = reader.read(sample, language, stop);
        if (!tried || stop.stop_requested())
            continue;
        const bool isLanguageOfPage = isBetter(sample, *tried, inMain);
        keepSurer(sample, std::move(*tried), *readings);
        if (!isLanguageOfPage)
            continue;
        const std::vector<int> lines = linesToReadAgain(doubtful, evidence);
        if (auto more = reader.read(lines, language, stop))
            keepSurer(lines, std::move(*more), *readings);
    }
    return readings;
}

} // namespace Platform
