#include "Platform/Tesseract/LineReader.h"

#include "Platform/Tesseract/WordSpacing.h"
#include "Platform/TextLayout/LineImage.h"

#include <algorithm>
#include <atomic>
#include <cmath>
#include <numeric>
#include <omp.h>
#include <optional>
#include <system_error>
#include <thread>

namespace Platform {

namespace {

/// What one more engine has to read to make up for its start, in letter heights of line.
/// Reading one costs about 0.35 ms, a start about 20 ms.
constexpr double workWorthAnEngine = 300;

double lengthOf(const TextLine& line)
{
    return line.box.width() / std::max(1.0, line.letterHeight);
}

/// The stretches of the line between its components, from left to right.
std::vector<InkGap> gapsOf(const Components& components, const TextLine& line)
{
    std::vector<InkGap> gaps;
    int end = line.box.x();
    for (const int member : line.components) {
        const QRect& box = components.items[std::size_t(member)].box;
        if (box.x() > end)
            gaps.push_back({double(end), double(box.x())});
        end = std::max(end, box.x() + box.width());
    }
    return gaps;
}

/// One look at a line.
struct Look {
    LetterWidth width;
    TesseractEngine::Framing framing;
};

LineReading lookAt(
    const PageLayout& page, const PlacedLine& placed, Look look, TesseractEngine& engine)
{
    const LayoutLevel& level = page.levels[std::size_t(placed.level)];
    const LineImage image = lineImageOf(level.ink, level.components, placed.line, look.width);
    LineReading reading = engine.readLine(image.pixels, look.framing);
    for (ReadSymbol& symbol : reading.symbols)
        symbol.centre = image.toLevel(symbol.centre);
    return reading;
}

void keepSurer(LineReading& kept, LineReading other)
{
    if (other.confidence > kept.confidence)
        kept = std::move(other);
}

/// Reads a line, and looks again where that may pay: Tesseract finds no baseline in a few letters,
/// and a long line may have been narrowed too much.
LineReading readPlaced(const PageLayout& page, const PlacedLine& placed, TesseractEngine& engine)
{
    using Framing = TesseractEngine::Framing;
    constexpr std::size_t fewLetters = 4;
    constexpr double doubtfulShort = 88;
    constexpr double doubtfulLong = 70;
    constexpr double doubtful = 65;

    LineReading reading = lookAt(page, placed, {LetterWidth::byLength, Framing::engine}, engine);
    const bool isShort = placed.line.components.size() <= fewLetters;
    const bool isLong = placed.line.box.width() > 8 * placed.line.box.height();
    if (isLong && reading.confidence < doubtfulLong)
        keepSurer(reading, lookAt(page, placed, {LetterWidth::natural, Framing::engine}, engine));
    if (reading.confidence < (isShort ? doubtfulShort : doubtful))
        keepSurer(reading, lookAt(page, placed, {LetterWidth::natural, Framing::picture}, engine));

    const LayoutLevel& level = page.levels[std::size_t(placed.level)];
    respace(reading.symbols, gapsOf(level.components, placed.line));
    return reading;
}

/// Whether the lines that finer levels saw in the place of @p large are sure text, so that it
/// needs no reading itself.
bool isReadWell(
    const PageLayout& page, const std::vector<LineReading>& readings, const PlacedLine& large)
{
    constexpr double sureConfidence = 88;
    double symbols = 0;
    double confidence = 0;
    for (std::size_t line = 0; line < readings.size(); ++line) {
        if (page.lines[line].level >= large.level || !liesMostlyIn(page.lines[line].box, large.box))
            continue;
        symbols += double(readings[line].symbols.size());
        confidence += double(readings[line].symbols.size()) * readings[line].confidence;
    }
    return symbols > 0 && confidence >= sureConfidence * symbols;
}

} // namespace

Result<std::vector<LineReading>> LineReader::readPage(
    const QString& language, const std::stop_token& stop)
{
    std::vector<LineReading> readings(m_page.lines.size());
    for (int level = 0; level < int(m_page.levels.size()); ++level) {
        std::vector<int> lines;
        for (std::size_t line = 0; line < m_page.lines.size(); ++line)
            if (m_page.lines[line].level == level
                && !isReadWell(m_page, readings, m_page.lines[line]))
                lines.push_back(int(line));
        Result<std::vector<LineReading>> read = this->read(lines, language, stop);
        if (!read)
            return read;
        for (std::size_t index = 0; index < lines.size(); ++index)
            readings[std::size_t(lines[index])] = std::move((*read)[index]);
    }
    return readings;
}

int LineReader::workersFor(const std::vector<int>& lines, const QString& language) const
{
    const int cores = std::max(1, int(std::thread::hardware_concurrency()));
    if (m_engines.hasIdle(language))
        return std::min(cores, int(lines.size()));
    double length = 0;
    for (const int line : lines)
        length += lengthOf(m_page.lines[std::size_t(line)].line);
    return std::clamp(int(length / workWorthAnEngine), 1, cores);
}

/// Places in @p lines, so that no worker is left alone with a long line at the end.
std::vector<std::size_t> LineReader::longestFirst(const std::vector<int>& lines) const
{
    std::vector<std::size_t> order(lines.size());
    std::iota(order.begin(), order.end(), 0);
    const auto lengthAt = [&](std::size_t place) {
        return lengthOf(m_page.lines[std::size_t(lines[place])].line);
    };
    std::stable_sort(order.begin(), order.end(),
        [&](std::size_t a, std::size_t b) { return lengthAt(a) > lengthAt(b); });
    return order;
}

Result<std::vector<LineReading>> LineReader::read(
    const std::vector<int>& lines, const QString& language, const std::stop_token& stop)
{
    std::vector<LineReading> readings(lines.size());
    if (lines.empty())
        return readings;
    const std::vector<std::size_t> order = longestFirst(lines);
    std::atomic<std::size_t> next = 0;
    std::atomic<bool> hasRead = false;
    std::optional<Error> failure;

    const auto work = [&]() -> std::optional<Error> {
        // Tesseract's inner loops use OpenMP, whose threads wait for each other longer than they
        // work; one thread a line is several times faster. The setting is the calling thread's own.
        omp_set_max_active_levels(0);
        Result<std::unique_ptr<TesseractEngine>> engine = m_engines.take(language);
        if (!engine)
            return engine.error();
        for (std::size_t at = next++; at < order.size() && !stop.stop_requested(); at = next++) {
            const auto line = std::size_t(lines[order[at]]);
            readings[order[at]] = readPlaced(m_page, m_page.lines[line], **engine);
        }
        hasRead = true;
        m_engines.giveBack(language, std::move(*engine));
        return std::nullopt;
    };

    {
        std::vector<std::jthread> helpers;
        const int workers = workersFor(lines, language);
        try {
            for (int helper = 1; helper < workers; ++helper)
                helpers.emplace_back(work);
        } catch (const std::system_error&) {
            // The system gives no more threads: those that there are do the work.
        }
        failure = work();
    }
    if (!hasRead && failure)
        return tl::make_unexpected(*failure);
    return readings;
}

} // namespace Platform
