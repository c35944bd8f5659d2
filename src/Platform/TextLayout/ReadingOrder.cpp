#include "Platform/TextLayout/ReadingOrder.h"

#include "Platform/TextLayout/Boxes.h"
#include "Platform/TextLayout/Quantiles.h"
#include "Platform/TextLayout/TableRows.h"

#include <algorithm>
#include <numeric>
#include <optional>
#include <span>

namespace Platform {

namespace {

/// An empty strip across all boxes of a part of the page.
struct Cut {
    int position = 0;
    int width = 0;
};

enum class Axis { horizontal, vertical };

int startOf(const QRect& box, Axis axis)
{
    return axis == Axis::horizontal ? box.x() : box.y();
}

int endOf(const QRect& box, Axis axis)
{
    return axis == Axis::horizontal ? box.x() + box.width() : box.y() + box.height();
}

class Order {
public:
    explicit Order(const std::vector<QRect>& boxes)
        : m_boxes(boxes)
    {
    }

    std::vector<int> sorted()
    {
        std::vector<int> order(m_boxes.size());
        std::iota(order.begin(), order.end(), 0);
        sort(order);
        return order;
    }

private:
    const QRect& box(int index) const { return m_boxes[std::size_t(index)]; }

    /// The strips free of boxes along @p axis, and leaves @p part sorted by it.
    std::vector<Cut> cutsOf(std::span<int> part, Axis axis) const
    {
        std::sort(part.begin(), part.end(),
            [&](int a, int b) { return startOf(box(a), axis) < startOf(box(b), axis); });
        std::vector<Cut> cuts;
        int end = endOf(box(part.front()), axis);
        for (const int index : part) {
            const int start = startOf(box(index), axis);
            if (start > end)
                cuts.push_back({start, start - end});
            end = std::max(end, endOf(box(index), axis));
        }
        return cuts;
    }

    static std::optional<Cut> widestOf(const std::vector<Cut>& cuts)
    {
        const auto widest = std::max_element(
            cuts.begin(), cuts.end(), [](const Cut& a, const Cut& b) { return a.width < b.width; });
        return widest == cuts.end() ? std::nullopt : std::optional(*widest);
    }

    int typicalHeight(std::span<const int> part) const
    {
        std::vector<int> heights;
        for (const int index : part)
            heights.push_back(box(index).height());
        return medianOf(std::move(heights));
    }

    /// A column is worth reading by itself where it holds more than one row.
    bool areColumns(std::span<const int> part, const Cut& cut) const
    {
        int leftRows = 0;
        int rightRows = 0;
        for (const int index : part)
            (box(index).x() < cut.position ? leftRows : rightRows) += 1;
        return leftRows > 1 && rightRows > 1;
    }

    /// Whether @p cut runs between cells of a table, whose rows belong together.
    bool isInTable(std::span<const int> part, const Cut& cut) const
    {
        std::vector<QRect> left;
        std::vector<QRect> right;
        for (const int index : part)
            (box(index).x() < cut.position ? left : right).push_back(box(index));
        return areCellsOfOneTable(left, right);
    }

    void sortAround(std::span<int> part, const Cut& cut, Axis axis)
    {
        const auto middle = std::partition_point(part.begin(), part.end(),
            [&](int index) { return startOf(box(index), axis) < cut.position; });
        const auto count = std::size_t(middle - part.begin());
        sort(part.first(count));
        sort(part.subspan(count));
    }

    void sortByRows(std::span<int> part) const
    {
        std::sort(part.begin(), part.end(),
            [&](int a, int b) { return middleOf(box(a)) < middleOf(box(b)); });
        for (std::size_t start = 0; start < part.size();) {
            const QRect& first = box(part[start]);
            std::size_t end = start + 1;
            while (end < part.size() && middleOf(box(part[end])) < first.y() + first.height())
                ++end;
            std::sort(part.begin() + std::ptrdiff_t(start), part.begin() + std::ptrdiff_t(end),
                [&](int a, int b) { return box(a).x() < box(b).x(); });
            start = end;
        }
    }

    /// Sorts each of the bands between @p cuts by itself. @p part is sorted from top to bottom.
    void sortBands(std::span<int> part, const std::vector<Cut>& cuts)
    {
        std::size_t start = 0;
        for (const Cut& cut : cuts) {
            std::size_t end = start;
            while (end < part.size() && box(part[end]).y() < cut.position)
                ++end;
            sort(part.subspan(start, end - start));
            start = end;
        }
        sort(part.subspan(start));
    }

    void sort(std::span<int> part)
    {
        if (part.size() < 2)
            return;
        const int height = typicalHeight(part);
        const std::optional<Cut> gutter = widestOf(cutsOf(part, Axis::horizontal));
        const std::vector<Cut> rowCuts = cutsOf(part, Axis::vertical);
        const std::optional<Cut> gap = widestOf(rowCuts);
        const bool hasGutter = gutter && gutter->width >= 2 * height && areColumns(part, *gutter);
        const bool readsColumns = hasGutter && (!gap || gutter->width >= gap->width);
        if (readsColumns && gap && isInTable(part, *gutter)) {
            sortBands(part, rowCuts);
        } else if (readsColumns) {
            cutsOf(part, Axis::horizontal);
            sortAround(part, *gutter, Axis::horizontal);
        } else if (gap) {
            sortAround(part, *gap, Axis::vertical);
        } else {
            sortByRows(part);
        }
    }

    const std::vector<QRect>& m_boxes;
};

} // namespace

std::vector<int> readingOrder(const std::vector<QRect>& boxes)
{
    return Order(boxes).sorted();
}

} // namespace Platform
