#include "Platform/Tesseract/LanguagePass.h"

#include <algorithm>

namespace Platform {

namespace {

/// A word of letters read with less confidence than this may be of another language.
constexpr double doubtfulWord = 80;
/// A line read with less than this may be of another script altogether.
constexpr double doubtfulLine = 60;
/// How many lines tell a language, and how much surer it has to be on one of them.
constexpr std::size_t sampleSize = 6;
constexpr double sureGain = 3;
/// Starting an engine costs up to 0.15 s; of more languages than this nobody waits for all.
constexpr std::size_t mostLanguagesTried = 10;
constexpr std::size_t mostLanguagesUsed = 3;

struct Doubts {
    bool hasDoubtfulWord = false;
    int letters = 0;
};

Doubts doubtsOf(const LineReading& reading)
{
    constexpr int shortestWord = 3;
    Doubts doubts;
    int wordLetters = 0;
    int wordLength = 0;
    double wordConfidence = 100;
    const auto endWord = [&] {
        doubts.hasDoubtfulWord |= wordLetters >= shortestWord && wordLetters * 10 >= wordLength * 8
            && wordConfidence < doubtfulWord;
        wordLetters = 0;
        wordLength = 0;
    };
    for (const ReadSymbol& symbol : reading.symbols) {
        if (symbol.startsWord)
            endWord();
        const bool isLetter = symbol.text.front().isLetter();
        doubts.letters += isLetter;
        wordLetters += isLetter;
        ++wordLength;
        wordConfidence = symbol.confidence;
    }
    endWord();
    doubts.hasDoubtfulWord |= reading.confidence < doubtfulLine;
    return doubts;
}

/// The lines that tell best which language the page is in: doubtful ones, the longest first.
std::vector<int> sampleOf(const PageLayout& page, const std::vector<LineReading>& readings)
{
    constexpr std::size_t fewestLetters = 3;
    std::vector<int> sample;
    for (std::size_t line = 0; line < readings.size(); ++line)
        if (page.lines[line].line.components.size() >= fewestLetters
            && doubtsOf(readings[line]).hasDoubtfulWord)
            sample.push_back(int(line));
    std::stable_sort(sample.begin(), sample.end(), [&](int a, int b) {
        return page.lines[std::size_t(a)].line.components.size()
            > page.lines[std::size_t(b)].line.components.size();
    });
    if (sample.size() > sampleSize)
        sample.resize(sampleSize);
    return sample;
}

/// The lines that a further language may read better: those with words.
std::vector<int> linesWithWords(const std::vector<LineReading>& readings)
{
    std::vector<int> lines;
    for (std::size_t line = 0; line < readings.size(); ++line) {
        const Doubts doubts = doubtsOf(readings[line]);
        if (doubts.letters >= 2 || doubts.hasDoubtfulWord)
            lines.push_back(int(line));
    }
    return lines;
}

struct Candidate {
    QString language;
    double gain = 0; ///< Of confidence, over the sample.
};

/// The languages that read a line of the sample surely better, the best first.
std::vector<Candidate> languagesOf(const std::vector<int>& sample,
    const std::vector<LineReading>& readings, const QStringList& others, LineReader& reader,
    const std::stop_token& stop)
{
    std::vector<Candidate> candidates;
    for (const QString& language : others) {
        const auto tried = reader.read(sample, language, stop);
        if (!tried || stop.stop_requested())
            continue;
        Candidate candidate{language, 0};
        for (std::size_t index = 0; index < sample.size(); ++index) {
            const double gain =
                (*tried)[index].confidence - readings[std::size_t(sample[index])].confidence;
            if (gain >= sureGain)
                candidate.gain += gain;
        }
        if (candidate.gain > 0)
            candidates.push_back(candidate);
    }
    std::stable_sort(candidates.begin(), candidates.end(),
        [](const Candidate& a, const Candidate& b) { return a.gain > b.gain; });
    return candidates;
}

/// Keeps of two readings of each line the surer one.
void keepSurer(const std::vector<int>& lines, std::vector<LineReading> others,
    std::vector<LineReading>& readings)
{
    for (std::size_t index = 0; index < lines.size(); ++index) {
        LineReading& kept = readings[std::size_t(lines[index])];
        if (others[index].confidence > kept.confidence)
            kept = std::move(others[index]);
    }
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
    const std::vector<int> sample = sampleOf(page, *readings);
    if (sample.empty())
        return readings;

    std::vector<Candidate> found = languagesOf(sample, *readings, others, reader, stop);
    if (found.size() > mostLanguagesUsed)
        found.resize(mostLanguagesUsed);
    for (const Candidate& candidate : found) {
        const std::vector<int> lines = linesWithWords(*readings);
        if (auto more = reader.read(lines, candidate.language, stop))
            keepSurer(lines, std::move(*more), *readings);
    }
    return readings;
}

} // namespace Platform
