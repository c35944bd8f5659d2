#pragma once

#include <algorithm>
#include <cstddef>
#include <numeric>
#include <vector>

namespace Platform {

/// Sets of items that are joined one pair after the other; each is known by its least member.
class DisjointSets {
public:
    explicit DisjointSets(std::size_t count = 0)
        : m_parent(count)
    {
        std::iota(m_parent.begin(), m_parent.end(), 0);
    }

    /// Adds an item in a set of its own; items are numbered from 0.
    void add() { m_parent.push_back(int(m_parent.size())); }

    int find(int item)
    {
        while (parentOf(item) != item) {
            parentOf(item) = parentOf(parentOf(item));
            item = parentOf(item);
        }
        return item;
    }

    void join(int a, int b)
    {
        const int first = find(a);
        const int second = find(b);
        parentOf(std::max(first, second)) = std::min(first, second);
    }

private:
    int& parentOf(int item) { return m_parent[std::size_t(item)]; }

    std::vector<int> m_parent;
};

} // namespace Platform
