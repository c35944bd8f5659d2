#pragma once

#include <QRect>

#include <algorithm>
#include <cstdint>
#include <unordered_map>
#include <vector>

namespace Platform {

/// The first row below @p box, which QRect::bottom() is not.
inline int bottomOf(const QRect& box)
{
    return box.y() + box.height();
}

/// The first column beyond @p box.
inline int rightOf(const QRect& box)
{
    return box.x() + box.width();
}

/// The row half way down.
inline int middleOf(const QRect& box)
{
    return box.y() + box.height() / 2;
}

/// How many rows the boxes share; negative is how many lie between them.
inline int verticalOverlap(const QRect& a, const QRect& b)
{
    return std::min(bottomOf(a), bottomOf(b)) - std::max(a.y(), b.y());
}

/// How many columns lie between the boxes; negative is how many they share.
inline int horizontalGap(const QRect& a, const QRect& b)
{
    return std::max(a.x(), b.x()) - std::min(rightOf(a), rightOf(b));
}

/// Finds boxes near a place without looking at all of them.
class BoxIndex {
public:
    void add(int id, const QRect& box)
    {
        forCells(box, [&](std::int64_t cell) { m_cells[cell].push_back(id); });
    }

    /// Calls @p visit with each box that may meet @p area; some more than once.
    template <typename Visit>
    void visit(const QRect& area, Visit visit) const
    {
        forCells(area, [&](std::int64_t key) {
            const auto cell = m_cells.find(key);
            if (cell == m_cells.end())
                return;
            for (const int id : cell->second)
                visit(id);
        });
    }

private:
    static int cellOf(int position) { return position >> 5; }

    template <typename Use>
    static void forCells(const QRect& area, Use use)
    {
        for (int row = cellOf(area.y()); row <= cellOf(bottomOf(area) - 1); ++row)
            for (int column = cellOf(area.x()); column <= cellOf(rightOf(area) - 1); ++column)
                use((std::int64_t(row) << 32) ^ std::int64_t(std::uint32_t(column)));
    }

    std::unordered_map<std::int64_t, std::vector<int>> m_cells;
};

} // namespace Platform
