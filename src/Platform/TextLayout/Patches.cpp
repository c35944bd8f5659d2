#include "Platform/TextLayout/Patches.h"

#include "Platform/TextLayout/Pixels.h"

#include <algorithm>
#include <array>
#include <optional>
#include <vector>

namespace Platform {

namespace {

constexpr int smallestPatch = 12; // Pixels, across and down.
constexpr int tallestPatch = 56;
constexpr int widestPatch = 400;
/// How much of a patch has its main colour. Bold letters, with their fringes, have less.
constexpr double evenShare = 0.62;
constexpr int evenStep = 20;
constexpr int leastMarkHeight = 5; // Pixels.
/// What fills more of its box is a counter, unless it fills even less of the patch: "5".
constexpr double mostMarkFill = 0.8;
constexpr double leastLetterFill = 0.25;
constexpr double tallerThanLetters = 1.35;

bool mayBePatch(const Component& component)
{
    const int width = component.box.width();
    const int height = component.box.height();
    return width >= smallestPatch && height >= smallestPatch && width <= widestPatch
        && height <= tallestPatch && component.area * 2 >= width * height;
}

/// The most frequent colour of the component, told in steps of 16 and then averaged.
Pixel mainColour(const QImage& image, std::span<const InkRun> runs)
{
    std::vector<int> counts(4096);
    const auto bin = [](Pixel pixel) {
        return std::size_t(((pixel >> 12) & 0xf00) | ((pixel >> 8) & 0xf0) | ((pixel >> 4) & 0xf));
    };
    for (const InkRun& run : runs)
        for (int x = run.left; x < run.right; ++x)
            ++counts[bin(pixelRow(image, run.y)[x])];
    const auto most = std::size_t(std::max_element(counts.begin(), counts.end()) - counts.begin());
    std::array<int, 3> sums{};
    for (const InkRun& run : runs) {
        for (int x = run.left; x < run.right; ++x) {
            const Pixel pixel = pixelRow(image, run.y)[x];
            if (bin(pixel) != most)
                continue;
            for (int channel = 0; channel < 3; ++channel)
                sums[std::size_t(channel)] += int((pixel >> (8 * channel)) & 0xff);
        }
    }
    Pixel colour = 0;
    for (int channel = 0; channel < 3; ++channel)
        colour |= Pixel(sums[std::size_t(channel)] / std::max(1, counts[most])) << (8 * channel);
    return colour;
}

/// What a patch spans: the pixels between its outermost ones, across as well as down.
class Hull {
public:
    /// Of the pixels of @p box that have the patch's colour, told by @p isEven.
    template <typename IsEven>
    Hull(const QRect& box, IsEven isEven)
        : m_left(std::size_t(box.height()), box.width())
        , m_right(std::size_t(box.height()), 0)
        , m_top(std::size_t(box.width()), box.height())
        , m_bottom(std::size_t(box.width()), 0)
    {
        for (int y = 0; y < box.height(); ++y) {
            for (int x = 0; x < box.width(); ++x) {
                if (!isEven(box.x() + x, box.y() + y))
                    continue;
                at(m_left, y) = std::min(at(m_left, y), x);
                at(m_right, y) = std::max(at(m_right, y), x + 1);
                at(m_top, x) = std::min(at(m_top, x), y);
                at(m_bottom, x) = std::max(at(m_bottom, x), y + 1);
            }
        }
    }

    /// In pixels from the box's corner.
    bool contains(int x, int y) const
    {
        return x >= m_left[std::size_t(y)] && x < m_right[std::size_t(y)]
            && y >= m_top[std::size_t(x)] && y < m_bottom[std::size_t(x)];
    }

private:
    static int& at(std::vector<int>& values, int index) { return values[std::size_t(index)]; }

    std::vector<int> m_left;
    std::vector<int> m_right;
    std::vector<int> m_top;
    std::vector<int> m_bottom;
};

struct Patch {
    QRect box;
    std::span<const InkRun> runs;
    Pixel colour = 0;
    Hull hull;
};

/// Whether something stands on the patch, and is no counter of a letter: those are compact.
bool carriesText(const QImage& image, const Patch& patch)
{
    QRect marks;
    int marked = 0;
    int area = 0;
    for (int y = 0; y < patch.box.height(); ++y) {
        for (int x = 0; x < patch.box.width(); ++x) {
            if (!patch.hull.contains(x, y))
                continue;
            ++area;
            const Pixel pixel = pixelRow(image, patch.box.y() + y)[patch.box.x() + x];
            if (channelDistance(pixel, patch.colour) <= evenStep)
                continue;
            ++marked;
            marks |= QRect(x, y, 1, 1);
        }
    }
    const double share = 1 - double(marked) / std::max(1, area);
    return area * 2 >= patch.box.width() * patch.box.height() && share >= evenShare
        && marks.height() >= leastMarkHeight
        && marked <= std::max(mostMarkFill, share) * marks.width() * marks.height();
}

std::optional<Patch> patchOf(
    const QImage& image, const Components& components, const Component& component)
{
    if (!mayBePatch(component))
        return std::nullopt;
    const std::span<const InkRun> runs = components.runsOf(component);
    const Pixel colour = mainColour(image, runs);
    Patch patch{component.box, runs, colour, Hull(component.box, [&](int x, int y) {
                    return channelDistance(pixelRow(image, y)[x], colour) <= evenStep;
                })};
    return carriesText(image, patch) ? std::optional(std::move(patch)) : std::nullopt;
}

/// Whether @p component may be a letter beside others of @p height: no frame, bar or mark.
bool isLetterOf(const Component& component, int height)
{
    const QRect& box = component.box;
    return component.area >= leastLetterFill * box.width() * box.height()
        && box.height() * tallerThanLetters >= height && box.height() <= tallerThanLetters * height
        && box.width() * 3 >= box.height() && box.width() * 2 <= 3 * box.height();
}

/// The patches among the components of @p line. A bold "o" looks like one, but for the letters
/// beside it that are as tall.
std::vector<Patch> patchesOf(
    const QImage& image, const Components& components, const TextLine& line)
{
    std::vector<Patch> patches;
    std::vector<Component> others;
    for (const int member : line.components) {
        const Component& component = components.items[std::size_t(member)];
        if (std::optional<Patch> patch = patchOf(image, components, component))
            patches.push_back(std::move(*patch));
        else
            others.push_back(component);
    }
    const auto all = std::ptrdiff_t(patches.size());
    std::erase_if(patches, [&](const Patch& patch) {
        return std::count_if(others.begin(), others.end(), [&](const Component& other) {
            return isLetterOf(other, patch.box.height());
        }) >= all;
    });
    return patches;
}

void flatten(const QImage& image, const Patch& patch, InkImage& ink)
{
    for (const InkRun& run : patch.runs)
        std::fill(ink.row(run.y) + run.left, ink.row(run.y) + run.right, std::uint8_t(0));
    for (int y = 0; y < patch.box.height(); ++y) {
        const Pixel* row = pixelRow(image, patch.box.y() + y) + patch.box.x();
        std::uint8_t* inkRow = ink.row(patch.box.y() + y) + patch.box.x();
        for (int x = 0; x < patch.box.width(); ++x)
            if (patch.hull.contains(x, y))
                inkRow[x] = std::uint8_t(inkBetween(row[x], patch.colour));
    }
}

} // namespace

bool flattenPatches(const QImage& image, const Components& components,
    const std::vector<TextLine>& lines, InkImage& ink)
{
    std::vector<Patch> patches;
    std::vector<char> isInLine(components.items.size());
    for (const TextLine& line : lines) {
        for (const int member : line.components)
            isInLine[std::size_t(member)] = true;
        std::vector<Patch> found = patchesOf(image, components, line);
        std::move(found.begin(), found.end(), std::back_inserter(patches));
    }
    for (std::size_t item = 0; item < components.items.size(); ++item) {
        if (isInLine[item])
            continue;
        if (std::optional<Patch> patch = patchOf(image, components, components.items[item]))
            patches.push_back(std::move(*patch));
    }
    for (const Patch& patch : patches)
        flatten(image, patch, ink);
    return !patches.empty();
}

} // namespace Platform
