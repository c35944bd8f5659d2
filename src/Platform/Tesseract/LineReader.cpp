#include "Platform/Tesseract/LineReader.h"

#include "Platform/TextLayout/LineImage.h"

#include <algorithm>
#include <atomic>
#include <cmath>
#include <omp.h>
#include <optional>
#include <thread>

namespace Platform {

namespace {

/// What one more engine has to read to make up for its start, in letter heights of line.
/// Reading one costs about 0.35 ms, a start about 70 ms.
constexpr double workWorthAnEngine = 700;

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

LineReading readPlaced(const PageLayout& page, const PlacedLine& placed, TesseractEngine& engine)
{
    const LayoutLevel& level = page.levels[std::size_t(placed.level)];
    const LineImage image = lineImageOf(level.ink, level.components, placed.line);
    LineReading reading = engine.readLine(image.pixels);
    for (ReadSymbol& symbol : reading.symbols)
        symbol.centre = image.toLevel(symbol.centre);
    respace(reading.symbols, gapsOf(level.components, placed.line));
    return reading;
}

} // namespace

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

Result<std::vector<LineReading>> LineReader::read(
    const std::vector<int>& lines, const QString& language, const std::stop_token& stop)
{
    std::vector<LineReading> readings(lines.size());
    std::atomic<std::size_t> next = 0;
    std::atomic<bool> hasRead = lines.empty();
    std::optional<Error> failure;

    const auto work = [&]() -> std::optional<Error> {
        // Tesseract's inner loops use OpenMP, whose threads wait for each other longer than they
        // work; one thread a line is several times faster. The setting is the calling thread's own.
        omp_set_max_active_levels(0);
        Result<std::unique_ptr<TesseractEngine>> engine = m_engines.take(language);
        if (!engine)
            return engine.error();
        for (std::size_t at = next++; at < lines.size() && !stop.stop_requested(); at = next++)
            readings[at] = readPlaced(m_page, m_page.lines[std::size_t(lines[at])], **engine);
        hasRead = true;
        m_engines.giveBack(language, std::move(*engine));
        return std::nullopt;
    };

    {
        std::vector<std::jthread> helpers;
        const int workers = workersFor(lines, language);
        for (int helper = 1; helper < workers; ++helper)
            helpers.emplace_back(work);
        failure = work();
    }
    if (!hasRead && failure)
        return tl::make_unexpected(*failure);
    return readings;
}

} // namespace Platform
