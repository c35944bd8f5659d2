#include "Platform/TextLayout/Components.h"

#include "Platform/TextLayout/DisjointSets.h"

#include <algorithm>

namespace Platform {

namespace {

/// Ink below this is noise, wherever it stands.
constexpr int faintestInk = 20;
/// A component whose strongest ink is below this is no text.
constexpr int faintestPeak = 28;
/// Ink below this share of the strongest ink around it is a fringe.
constexpr double fringeShare = 0.15;
/// The neighbourhood is told in tiles of this many pixels.
constexpr int tileSize = 16;
/// A page of dense small text has about 40,000 runs a megapixel; noise has ten times that.
constexpr std::size_t mostRuns = 6'000'000;

/// The least ink that counts, tile by tile.
class Thresholds {
public:
    explicit Thresholds(const InkImage& ink)
        : m_columns((ink.width() + tileSize - 1) / tileSize)
        , m_rows((ink.height() + tileSize - 1) / tileSize)
        , m_values(std::size_t(m_columns) * std::size_t(m_rows))
    {
        std::vector<std::uint8_t> peaks(m_values.size());
        for (int y = 0; y < ink.height(); ++y)
            raisePeaks(ink, y, peaks.data() + tileOffset(y));
        for (int row = 0; row < m_rows; ++row)
            for (int column = 0; column < m_columns; ++column)
                m_values[index(column, row)] = thresholdAt(peaks, column, row);
    }

    const std::uint8_t* row(int y) const { return m_values.data() + tileOffset(y); }

private:
    std::size_t index(int column, int row) const
    {
        return std::size_t(row) * std::size_t(m_columns) + std::size_t(column);
    }
    std::size_t tileOffset(int y) const { return index(0, y / tileSize); }

    void raisePeaks(const InkImage& ink, int y, std::uint8_t* peaks) const
    {
        const std::uint8_t* row = ink.row(y);
        for (int column = 0; column < m_columns; ++column) {
            const int left = column * tileSize;
            const int right = std::min(left + tileSize, ink.width());
            peaks[column] = std::max(peaks[column], *std::max_element(row + left, row + right));
        }
    }

    std::uint8_t thresholdAt(const std::vector<std::uint8_t>& peaks, int column, int row) const
    {
        int peak = 0;
        for (int r = std::max(0, row - 1); r <= std::min(m_rows - 1, row + 1); ++r)
            for (int c = std::max(0, column - 1); c <= std::min(m_columns - 1, column + 1); ++c)
                peak = std::max(peak, int(peaks[index(c, r)]));
        return std::uint8_t(std::max(faintestInk, int(fringeShare * peak)));
    }

    int m_columns;
    int m_rows;
    std::vector<std::uint8_t> m_values;
};

void appendRuns(const std::uint8_t* ink, const std::uint8_t* thresholds, int y, int width,
    std::vector<InkRun>& runs)
{
    int start = -1;
    for (int x = 0; x < width; ++x) {
        const bool isInked = ink[x] >= thresholds[x / tileSize];
        if (isInked && start < 0) {
            start = x;
        } else if (!isInked && start >= 0) {
            runs.push_back({y, start, x});
            start = -1;
        }
    }
    if (start >= 0)
        runs.push_back({y, start, width});
}

/// Joins the runs of one row, from @p current on, with those of the row above that they touch.
void joinRows(
    const std::vector<InkRun>& runs, std::size_t above, std::size_t current, DisjointSets& sets)
{
    const std::size_t aboveEnd = current;
    for (std::size_t run = current; run < runs.size(); ++run) {
        sets.add();
        while (above < aboveEnd && runs[above].right < runs[run].left)
            ++above;
        for (std::size_t upper = above; upper < aboveEnd && runs[upper].left <= runs[run].right;
             ++upper)
            sets.join(int(upper), int(run));
    }
}

void addToBox(Component& component, const InkRun& run)
{
    const QRect strip(run.left, run.y, run.right - run.left, 1);
    component.box = component.box.isNull() ? strip : component.box.united(strip);
    component.area += run.right - run.left;
}

/// Gathers the runs of each set, and describes the set.
Components gather(const InkImage& ink, const std::vector<InkRun>& runs, DisjointSets& sets)
{
    Components found;
    std::vector<int> owner(runs.size());
    for (std::size_t run = 0; run < runs.size(); ++run) {
        const auto root = std::size_t(sets.find(int(run)));
        if (root == run) {
            owner[run] = int(found.items.size());
            found.items.emplace_back();
        } else {
            owner[run] = owner[root];
        }
        Component& component = found.items[std::size_t(owner[run])];
        addToBox(component, runs[run]);
        ++component.runCount;
        const std::uint8_t* row = ink.row(runs[run].y);
        for (int x = runs[run].left; x < runs[run].right; ++x) {
            component.peak = std::max(component.peak, int(row[x]));
            component.ink += row[x];
        }
    }

    int first = 0;
    for (Component& component : found.items) {
        component.firstRun = first;
        first += component.runCount;
        component.runCount = 0;
    }
    found.runs.resize(runs.size());
    for (std::size_t run = 0; run < runs.size(); ++run) {
        Component& component = found.items[std::size_t(owner[run])];
        const int place = component.firstRun + component.runCount++;
        found.runs[std::size_t(place)] = runs[run];
    }
    std::erase_if(
        found.items, [](const Component& component) { return component.peak < faintestPeak; });
    return found;
}

} // namespace

Components componentsOf(const InkImage& ink, const std::stop_token& stop)
{
    if (ink.rect().isEmpty())
        return {};
    const Thresholds thresholds(ink);
    std::vector<InkRun> runs;
    DisjointSets sets;
    std::size_t above = 0;
    for (int y = 0; y < ink.height() && runs.size() < mostRuns; ++y) {
        if (stop.stop_requested())
            return {};
        const std::size_t current = runs.size();
        appendRuns(ink.row(y), thresholds.row(y), y, ink.width(), runs);
        joinRows(runs, above, current, sets);
        above = current;
    }
    return gather(ink, runs, sets);
}

} // namespace Platform
