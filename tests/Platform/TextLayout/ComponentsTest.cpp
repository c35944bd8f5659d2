#include "Platform/TextLayout/Components.h"

#include <algorithm>
#include <array>
#include <gtest/gtest.h>
#include <random>

using Platform::componentsOf;
using Platform::InkImage;

namespace {

using Pixels = std::vector<std::pair<int, int>>; ///< By row, then by column.

InkImage randomInk(int width, int height, double density, std::mt19937& random)
{
    InkImage ink(width, height);
    std::bernoulli_distribution isInked(density);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            ink.row(y)[x] = isInked(random) ? 255 : 0;
    return ink;
}

/// Takes what is connected with one pixel, its corners included, out of @p ink.
Pixels flooded(InkImage& ink, int x, int y)
{
    Pixels found{{y, x}};
    ink.row(y)[x] = 0;
    for (std::size_t next = 0; next < found.size(); ++next) {
        const auto [row, column] = found[next];
        for (int r = std::max(0, row - 1); r <= std::min(ink.height() - 1, row + 1); ++r) {
            for (int c = std::max(0, column - 1); c <= std::min(ink.width() - 1, column + 1); ++c) {
                if (ink.row(r)[c] == 0)
                    continue;
                ink.row(r)[c] = 0;
                found.emplace_back(r, c);
            }
        }
    }
    std::sort(found.begin(), found.end());
    return found;
}

std::vector<Pixels> floodFilled(InkImage ink)
{
    std::vector<Pixels> found;
    for (int y = 0; y < ink.height(); ++y)
        for (int x = 0; x < ink.width(); ++x)
            if (ink.row(y)[x] != 0)
                found.push_back(flooded(ink, x, y));
    return found;
}

TEST(ComponentsTest, theyAreThoseOfAFloodFill)
{
    std::mt19937 random(7);
    const std::array<std::pair<int, int>, 7> sizes{
        {{1, 1}, {1, 60}, {60, 1}, {2, 2}, {16, 16}, {17, 33}, {90, 70}}};
    for (const auto& [width, height] : sizes) {
        for (const double density : {0.05, 0.2, 0.35, 0.5, 0.7, 0.95, 1.0}) {
            SCOPED_TRACE(testing::Message() << width << 'x' << height << " at " << density);
            const auto ink = randomInk(width, height, density, random);
            const auto components = componentsOf(ink, {});
            std::vector<Pixels> found;
            for (const auto& component : components.items) {
                Pixels pixels;
                QRect box;
                for (const auto& run : components.runsOf(component)) {
                    box |= QRect(run.left, run.y, run.right - run.left, 1);
                    for (int x = run.left; x < run.right; ++x)
                        pixels.emplace_back(run.y, x);
                }
                EXPECT_EQ(component.box, box);
                EXPECT_EQ(std::size_t(component.area), pixels.size());
                EXPECT_EQ(component.peak, 255);
                EXPECT_EQ(component.ink, 255 * component.area);
                EXPECT_TRUE(std::is_sorted(pixels.begin(), pixels.end()));
                found.push_back(std::move(pixels));
            }
            EXPECT_EQ(found, floodFilled(ink));
        }
    }
}

} // namespace
