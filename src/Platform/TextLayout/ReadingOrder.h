#pragma once

#include <QRect>

#include <algorithm>
#include <utility>
#include <vector>

namespace Platform {

/// The order in which a person reads boxes on a page: columns and side bars one after the other,
/// each from top to bottom, and what stands in one row from left to right, as the cells of a table
/// do. Found by cutting the page along its widest empty strips, again and again. Answers indices
/// into @p boxes.
std::vector<int> readingOrder(const std::vector<QRect>& boxes);

/// Sorts @p items by the boxes that @p boxOf tells.
template <typename Item, typename BoxOf>
void putInReadingOrder(std::vector<Item>& items, BoxOf boxOf)
{
    std::vector<QRect> boxes;
    boxes.reserve(items.size());
    for (const Item& item : items)
        boxes.push_back(boxOf(item));
    std::vector<Item> sorted;
    sorted.reserve(items.size());
    for (const int index : readingOrder(boxes))
        sorted.push_back(std::move(items[std::size_t(index)]));
    items = std::move(sorted);
}

} // namespace Platform
