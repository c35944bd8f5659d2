#pragma once

#include <QString>

#include <random>

namespace Lumenote::Bench {

/// The same numbers on every machine: the standard's own distributions promise no such thing.
class Random {
public:
    explicit Random(quint32 seed)
        : m_engine(seed)
    {
    }

    /// From 0 to @p bound - 1.
    int below(int bound) { return int((quint64(m_engine()) * quint64(bound)) >> 32); }

    /// From @p low to @p high, both included.
    int between(int low, int high) { return low + below(high - low + 1); }

    /// From 0 up to, but without, 1.
    double unit() { return double(m_engine()) / 4294967296.0; }

    bool isLuckyIn(int tries) { return below(tries) == 0; }

    template <typename List>
    const auto& pick(const List& list)
    {
        return list[below(int(list.size()))];
    }

private:
    std::mt19937 m_engine;
};

/// A seed that depends on nothing but @p name.
inline quint32 seedOf(const QString& name)
{
    quint32 hash = 2166136261U;
    for (const QChar unit : name)
        hash = (hash ^ unit.unicode()) * 16777619U;
    return hash;
}

} // namespace Lumenote::Bench
