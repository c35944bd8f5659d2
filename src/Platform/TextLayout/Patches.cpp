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

/// What each row of the patch spans, between its outermost pixels of the main colour.
struct Hull {
    std::vector<int> left;
    std::vector<int> right;
};

std::optional<Hull> hullOf(
    const QImage& image, std::span<const InkRun> runs, const QRect& box, Pixel colour)
{
    Hull hull{std::vector<int>(std::size_t(box.height()), box.x() + box.width()),
        std::vector<int>(std::size_t(box.height()), box.x())};
    int even = 0;
    for (const InkRun& run : runs) {
        const auto row = std::size_t(run.y - box.y());
        for (int x = run.left; x < run.right; ++x) {
            if (channelDistance(pixelRow(image, run.y)[x], colour) > evenStep)
                continue;
            ++even;
            hull.left[row] = std::min(hull.left[row], x);
            hull.right[row] = std::max(hull.right[row], x + 1);
        }
    }
    int area = 0;
    for (std::size_t row = 0; row < hull.left.size(); ++row)
        area += std::max(0, hull.right[row] - hull.left[row]);
    if (even < evenShare * area || area * 2 < box.width() * box.height())
        return std::nullopt;
    return hull;
}

struct Patch {
    QRect box;
    std::span<const InkRun> runs;
    Pixel colour = 0;
    Hull hull;
};

std::optional<Patch> patchOf(
    const QImage& image, const Components& components, const Component& component)
{
    if (!mayBePatch(component))
        return std::nullopt;
    const std::span<const InkRun> runs = components.runsOf(component);
    const Pixel colour = mainColour(image, runs);
    std::optional<Hull> hull = hullOf(image, runs, component.box, colour);
    if (!hull)
        return std::nullopt;
    return Patch{component.box, runs, colour, std::move(*hull)};
}

/// The patches among the components of @p line. A bold "o" looks like one, but for the letters
/// beside it that are as tall.
std::vector<Patch> patchesOf(
    const QImage& image, const Components& components, const TextLine& line)
{
    std::vector<Patch> patches;
    std::vector<int> letterHeights;
    for (const int member : line.components) {
        const Component& component = components.items[std::size_t(member)];
        if (std::optional<Patch> patch = patchOf(image, components, component))
            patches.push_back(std::move(*patch));
        else if (component.box.height() >= 5)
            letterHeights.push_back(component.box.height());
    }
    if (letterHeights.size() * 2 < patches.size() || letterHeights.empty())
        return patches;
    const auto middle = letterHeights.begin() + std::ptrdiff_t(letterHeights.size() / 2);
    std::nth_element(letterHeights.begin(), middle, letterHeights.end());
    std::erase_if(patches,
        [&](const Patch& patch) { return patch.box.height() < tallerThanLetters * *middle; });
    return patches;
}

void flatten(const QImage& image, const Patch& patch, InkImage& ink)
{
    for (const InkRun& run : patch.runs)
        std::fill(ink.row(run.y) + run.left, ink.row(run.y) + run.right, std::uint8_t(0));
    for (std::size_t row = 0; row < patch.hull.left.size(); ++row) {
        const int y = patch.box.y() + int(row);
        for (int x = patch.hull.left[row]; x < patch.hull.right[row]; ++x)
            ink.row(y)[x] = std::uint8_t(inkBetween(pixelRow(image, y)[x], patch.colour));
    }
}

} // namespace

bool flattenPatches(const QImage& image, const Components& components,
    const std::vector<TextLine>& lines, InkImage& ink)
{
    bool found = false;
    for (const TextLine& line : lines) {
        for (const Patch& patch : patchesOf(image, components, line)) {
            flatten(image, patch, ink);
            found = true;
        }
    }
    return found;
}

} // namespace Platform
