#include "Platform/TextLayout/Glyphs.h"

#include "Platform/TextLayout/Boxes.h"

#include <algorithm>
#include <cstdlib>
#include <numeric>
#include <optional>

namespace Platform {

namespace {

constexpr double noLikeness = 2;
/// A column where letters touch has no more than this share of the ink of their fullest columns.
constexpr double deepestCut = 0.6;

using Members = std::vector<const Component*>;

QRect boxOf(const Members& members)
{
    QRect box;
    for (const Component* member : members)
        box |= member->box;
    return box;
}

/// Whether two parts of a line are of one character: one inside the other, or above each other.
bool areOneCharacter(const QRect& a, const QRect& b)
{
    const int common = -horizontalGap(a, b);
    return a.contains(b) || b.contains(a)
        || (common * 10 >= 6 * std::min(a.width(), b.width()) && verticalOverlap(a, b) <= 0);
}

/// The ink of some components.
struct Patch {
    QRect box;
    std::vector<std::uint8_t> ink;

    std::uint8_t at(int column, int row) const
    {
        return ink[std::size_t(row) * std::size_t(box.width()) + std::size_t(column)];
    }
};

Patch patchOf(const InkImage& ink, const Components& components, const Members& members)
{
    Patch patch{boxOf(members), {}};
    const auto width = std::size_t(patch.box.width());
    patch.ink.resize(width * std::size_t(patch.box.height()));
    int peak = 1;
    for (const Component* member : members)
        peak = std::max(peak, member->peak);
    for (const Component* member : members) {
        for (const InkRun& run : components.runsOf(*member)) {
            std::uint8_t* row = patch.ink.data() + std::size_t(run.y - patch.box.y()) * width;
            for (int x = run.left; x < run.right; ++x)
                row[x - patch.box.x()] =
                    std::uint8_t(std::min(255, ink.row(run.y)[x] * 255 / peak));
        }
    }
    return patch;
}

/// The columns of @p patch before which it is cut, so that each part has one of @p centres.
std::vector<int> cutsOf(const Patch& patch, const std::vector<double>& centres)
{
    std::vector<int> sums(std::size_t(patch.box.width()));
    for (int row = 0; row < patch.box.height(); ++row)
        for (int column = 0; column < patch.box.width(); ++column)
            sums[std::size_t(column)] += patch.at(column, row);
    std::vector<int> cuts{0};
    const auto inside = [&](double x) { return x >= patch.box.x() && x < rightOf(patch.box); };
    for (std::size_t next = 1; next < centres.size(); ++next) {
        if (!inside(centres[next - 1]) || !inside(centres[next]))
            continue;
        // Around the middle between two characters, as far as a quarter of the way.
        const double middle = (centres[next - 1] + centres[next]) / 2 - patch.box.x();
        const double reach = 1 + (centres[next] - centres[next - 1]) / 4;
        const int first = std::max(cuts.back() + 1, int(middle - reach));
        const int end = std::min(patch.box.width(), int(middle + reach) + 1);
        if (first >= end)
            continue;
        const auto lowest = std::min_element(sums.begin() + first, sums.begin() + end);
        const int left = *std::max_element(sums.begin() + cuts.back(), lowest);
        const int right = *std::max_element(lowest, sums.end());
        if (*lowest <= deepestCut * std::min(left, right))
            cuts.push_back(int(lowest - sums.begin()));
    }
    cuts.push_back(patch.box.width());
    return cuts;
}

/// The glyph in the columns of @p patch from @p left up to @p right, without the fringes around it.
std::optional<Glyph> glyphIn(const Patch& patch, int left, int right, int baseline)
{
    constexpr int fringe = 64;
    int top = patch.box.height();
    int bottom = 0;
    int first = right;
    int end = left;
    for (int row = 0; row < patch.box.height(); ++row) {
        for (int column = left; column < right; ++column) {
            if (patch.at(column, row) < fringe)
                continue;
            top = std::min(top, row);
            bottom = row + 1;
            first = std::min(first, column);
            end = std::max(end, column + 1);
        }
    }
    if (bottom == 0)
        return std::nullopt;
    Glyph glyph;
    glyph.box = QRect(first, top, end - first, bottom - top).translated(patch.box.topLeft());
    glyph.drop = bottomOf(glyph.box) - baseline;
    glyph.ink.reserve(std::size_t(end - first) * std::size_t(bottom - top));
    for (int row = top; row < bottom; ++row)
        for (int column = first; column < end; ++column)
            glyph.ink.push_back(patch.at(column, row));
    glyph.inkSum = std::accumulate(glyph.ink.begin(), glyph.ink.end(), 0);
    return glyph;
}

/// How much ink of the one has none of the other below it, with the corner of @p b so many pixels
/// from that of @p a.
int differenceAt(const Glyph& a, const Glyph& b, int dx, int dy)
{
    const auto at = [](const Glyph& glyph, int x, int y) -> int {
        const bool isInside = x >= 0 && y >= 0 && x < glyph.box.width() && y < glyph.box.height();
        return isInside
            ? glyph.ink[std::size_t(y) * std::size_t(glyph.box.width()) + std::size_t(x)]
            : 0;
    };
    const int right = std::max(a.box.width(), dx + b.box.width());
    const int bottom = std::max(a.box.height(), dy + b.box.height());
    int difference = 0;
    for (int y = std::min(0, dy); y < bottom; ++y)
        for (int x = std::min(0, dx); x < right; ++x)
            difference += std::abs(at(a, x, y) - at(b, x - dx, y - dy));
    return difference;
}

} // namespace

std::vector<Glyph> glyphsOf(const InkImage& ink, const Components& components, const TextLine& line,
    const std::vector<double>& centres)
{
    std::vector<Members> groups;
    std::vector<QRect> boxes;
    for (const int member : line.components) {
        const Component& component = components.items[std::size_t(member)];
        // Parts of one character follow each other closely in the order of their left sides.
        constexpr std::size_t reach = 3;
        std::size_t group = groups.size();
        while (group > 0 && groups.size() - group < reach
            && !areOneCharacter(boxes[group - 1], component.box))
            --group;
        const bool isFound = group > 0 && areOneCharacter(boxes[group - 1], component.box);
        if (isFound) {
            groups[group - 1].push_back(&component);
            boxes[group - 1] |= component.box;
        } else {
            groups.push_back({&component});
            boxes.push_back(component.box);
        }
    }
    std::vector<Glyph> glyphs;
    glyphs.reserve(groups.size());
    for (const Members& members : groups) {
        const Patch patch = patchOf(ink, components, members);
        const std::vector<int> cuts = cutsOf(patch, centres);
        for (std::size_t cut = 1; cut < cuts.size(); ++cut) {
            auto glyph = glyphIn(patch, cuts[cut - 1], cuts[cut], line.baseline);
            if (!glyph)
                continue;
            glyph->isCut = cuts.size() > 2;
            glyphs.push_back(std::move(*glyph));
        }
    }
    std::stable_sort(glyphs.begin(), glyphs.end(), [](const Glyph& a, const Glyph& b) {
        return a.box.x() + rightOf(a.box) < b.box.x() + rightOf(b.box);
    });
    return glyphs;
}

double unlikeness(const Glyph& a, const Glyph& b, double limit)
{
    const int wider = b.box.width() - a.box.width();
    const int taller = b.box.height() - a.box.height();
    if (std::abs(wider) > 1 || std::abs(taller) > 1 || std::abs(a.drop - b.drop) > 1)
        return noLikeness;
    const double mean = std::max(1.0, (a.inkSum + b.inkSum) / 2.0);
    if (std::abs(a.inkSum - b.inkSum) > limit * mean)
        return noLikeness;
    double best = noLikeness;
    for (int dx = std::min(0, -wider); dx <= std::max(0, -wider); ++dx)
        for (int dy = std::min(0, -taller); dy <= std::max(0, -taller); ++dy)
            best = std::min(best, differenceAt(a, b, dx, dy) / mean);
    return best <= limit ? best : noLikeness;
}

} // namespace Platform
