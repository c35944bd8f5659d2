#pragma once

#include <QIODevice>
#include <QtEndian>

#include <optional>

namespace Platform {

/// Reads at any place of a file, and answers nothing rather than less than was asked for.
class ByteSource {
public:
    /// @p device is borrowed, open and can seek; places count from @p start.
    explicit ByteSource(QIODevice& device, qint64 start = 0)
        : m_device(device)
        , m_start(start)
    {
    }

    /// The same file with its places counted from @p place of this one.
    ByteSource from(qint64 place) const { return ByteSource(m_device, m_start + place); }

    qint64 size() const { return m_device.size() - m_start; }

    /// Empty where the file doesn't reach so far.
    QByteArray bytes(qint64 place, qint64 count) const
    {
        const bool isInside = place >= 0 && m_start + place + count <= m_device.size();
        if (!isInside || !m_device.seek(m_start + place))
            return {};
        auto bytes = m_device.read(count);
        return bytes.size() == count ? bytes : QByteArray();
    }

    template <typename Number>
    std::optional<Number> bigEndian(qint64 place) const
    {
        const auto raw = bytes(place, sizeof(Number));
        return raw.isEmpty() ? std::nullopt
                             : std::optional(qFromBigEndian<Number>(raw.constData()));
    }

    template <typename Number>
    std::optional<Number> littleEndian(qint64 place) const
    {
        const auto raw = bytes(place, sizeof(Number));
        return raw.isEmpty() ? std::nullopt
                             : std::optional(qFromLittleEndian<Number>(raw.constData()));
    }

private:
    QIODevice& m_device;
    qint64 m_start;
};

} // namespace Platform
