#include "Platform/TextLayout/ReadingOrder.h"

#include <algorithm>
#include <array>
#include <gtest/gtest.h>
#include <numeric>
#include <random>

using Platform::readingOrder;

namespace {

/// Lines of one column, from its corner.
std::vector<QRect> column(int x, int y, int count, const QSize& line = {180, 12}, int step = 20)
{
    std::vector<QRect> boxes;
    boxes.reserve(std::size_t(count));
    for (int row = 0; row < count; ++row)
        boxes.emplace_back(QPoint(x, y + row * step), line);
    return boxes;
}

std::vector<QRect> operator+(std::vector<QRect> boxes, const std::vector<QRect>& others)
{
    boxes.insert(boxes.end(), others.begin(), others.end());
    return boxes;
}

std::vector<QRect> rowWise(int columns, int rows, int width, int gap, int step = 40)
{
    std::vector<QRect> boxes;
    for (int row = 0; row < rows; ++row)
        for (int column = 0; column < columns; ++column)
            boxes.emplace_back(column * (width + gap), row * step, width, 12 + column % 2);
    return boxes;
}

TEST(ReadingOrderTest, boxesComeAsAPersonReadsThem)
{
    const std::vector<QRect> title{{100, 0, 400, 20}};
    const std::array pages{
        std::pair("none", std::vector<QRect>()),
        std::pair("one", title),
        std::pair("oneColumn", column(10, 0, 30)),
        std::pair("twoColumns", column(0, 0, 12) + column(240, 0, 15)),
        std::pair("titleAndTwoColumns", title + column(0, 90, 12) + column(320, 90, 12)),
        std::pair("sideBarAndContent", column(0, 0, 6, {90, 12}, 36) + column(200, 0, 25)),
        std::pair("tableOfWideRows", rowWise(3, 5, 100, 20)),
        std::pair("tableOfFarColumns", rowWise(3, 6, 80, 90, 20)),
        std::pair("titleAndFarColumns",
            std::vector<QRect>{{0, -60, 400, 20}} + rowWise(2, 8, 60, 200, 18)),
        std::pair("cards", column(0, 0, 3, {60, 12}) + column(200, 0, 3, {60, 12})),
        std::pair("cardsInTwoRows",
            column(0, 0, 3, {60, 12}) + column(0, 90, 3, {60, 12}) + column(200, 0, 3, {60, 12})
                + column(200, 90, 3, {60, 12})),
        std::pair("menu", rowWise(6, 1, 40, 20)),
        std::pair("unevenRow",
            std::vector<QRect>{{0, 4, 30, 10}, {40, 0, 60, 18}, {110, 6, 40, 8}, {160, 2, 20, 15}}),
        std::pair("staggeredRow",
            std::vector<QRect>{
                {0, 4, 50, 10}, {60, 2, 50, 10}, {120, 0, 50, 10}, {10, 14, 90, 10}}),
    };
    std::mt19937 random(5);
    for (const auto& [name, page] : pages) {
        for (int round = 0; round < 20; ++round) {
            auto boxes = page;
            std::shuffle(boxes.begin(), boxes.end(), random);
            auto read = boxes;
            Platform::putInReadingOrder(read, [](const QRect& box) { return box; });
            ASSERT_EQ(read, page) << name;
        }
    }
}

TEST(ReadingOrderTest, eachBoxComesOnce)
{
    std::mt19937 random(3);
    const auto upTo = [&](int most) { return std::uniform_int_distribution(0, most)(random); };
    for (int round = 0; round < 300; ++round) {
        std::vector<QRect> boxes(std::size_t(upTo(80)));
        const int side = 1 + upTo(1000);
        for (QRect& box : boxes)
            box = {upTo(side), upTo(side), 1 + upTo(90), 1 + upTo(30)};
        auto order = readingOrder(boxes);
        std::sort(order.begin(), order.end());
        std::vector<int> all(boxes.size());
        std::iota(all.begin(), all.end(), 0);
        ASSERT_EQ(order, all) << "round " << round;
    }
}

} // namespace
