#include "Platform/Tesseract/LanguagePass.h"

#include <algorithm>
#include <span>

namespace Platform {

namespace {

/// A word read with less confidence than this may be of another language.
constexpr double doubtfulWord = 90;
constexpr double doubtfulKnownWord = 65;
constexpr std::size_t shortestWord = 4;
/// A line read with less than this may be of another script altogether.
constexpr double doubtfulLine = 60;
/// How many lines tell a language, and how much surer it has to be on one of them.
constexpr std::size_t sampleSize = 4;
constexpr double sureGain = 3;
/// A line of fewer is no sample, but may be an icon.
constexpr int fewestLetters = 4;
constexpr int fewestComponents = 3;
/// How much surer than the main language another one has to be to have its reading taken.
constexpr double leastGain = 1.5;
/// Each language costs the start of an engine and a sample; of more than this nobody waits for all.
constexpr std::size_t mostLanguagesTried = 10;

/// What a reading says of its language.
struct Doubts {
    bool hasDoubtfulWord = false;
    int letters = 0;
};

/// Whether the word in @p symbols may be of another language: letters alone, but for punctuation
/// at its end, unknown and read with little confidence.
bool isDoubtful(std::span<const ReadSymbol> word)
{
    while (!word.empty() && word.back().text.front().isPunct())
        word = word.first(word.size() - 1);
    if (word.size() < shortestWord
        || !std::all_of(word.begin(), word.end(),
            [](const ReadSymbol& symbol) { return symbol.text.front().isLetter(); }))
        return false;
    const ReadSymbol& first = word.front();
    return first.confidence < (first.isOfKnownWord ? doubtfulKnownWord : doubtfulWord);
}

Doubts doubtsOf(const LineReading& reading)
{
    const std::vector<ReadSymbol>& symbols = reading.symbols;
    Doubts doubts;
    std::size_t start = 0;
    for (std::size_t next = 1; next <= symbols.size(); ++next) {
        doubts.letters += symbols[next - 1].text.front().isLetter();
        if (next < symbols.size() && !symbols[next].startsWord)
            continue;
        doubts.hasDoubtfulWord |= isDoubtful(std::span(symbols).subspan(start, next - start));
        start = next;
    }
    const bool isMostlyLetters =
        doubts.letters >= fewestLetters && doubts.letters * 10 >= int(symbols.size()) * 6;
    doubts.hasDoubtfulWord |= isMostlyLetters && reading.confidence < doubtfulLine;
    return doubts;
}

/// The lines with doubtful words, the longest first.
std::vector<int> doubtfulLines(const PageLayout& page, const std::vector<LineReading>& readings)
{
    const auto lettersOf = [&](int line) {
        return int(page.lines[std::size_t(line)].line.components.size());
    };
    std::vector<int> lines;
    for (int line = 0; line < int(readings.size()); ++line)
        if (lettersOf(line) >= fewestComponents
            && doubtsOf(readings[std::size_t(line)]).hasDoubtfulWord)
            lines.push_back(line);
    std::stable_sort(
        lines.begin(), lines.end(), [&](int a, int b) { return lettersOf(a) > lettersOf(b); });
    return lines;
}

/// The lines that a further language may read better. Where much is doubtful that is every line
/// with words, since "fur" for "für" raises no doubt.
std::vector<int> linesToReadAgain(
    const std::vector<int>& doubtful, const std::vector<LineReading>& readings)
{
    constexpr std::size_t manyDoubtful = 6; // One line in so many.
    std::vector<int> lines;
    for (std::size_t line = 0; line < readings.size(); ++line) {
        const Doubts doubts = doubtsOf(readings[line]);
        if (doubts.letters >= 2 || doubts.hasDoubtfulWord)
            lines.push_back(int(line));
    }
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
    others = others.mid(0, qsizetype(mostLanguagesTried));

    Result<std::vector<LineReading>> readings = reader.readPage(main, stop);
    if (!readings || others.isEmpty())
        return readings;
    const std::vector<int> doubtful = doubtfulLines(page, *readings);
    if (doubtful.empty())
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
        const std::vector<int> lines = linesToReadAgain(doubtful, inMain);
        if (auto more = reader.read(lines, language, stop))
            keepSurer(lines, std::move(*more), *readings);
    }
    return readings;
}

} // namespace Platform
