#include "Platform/ExifTags.h"

namespace Platform {

namespace {

constexpr double centimetresPerInch = 2.54;

class Directory {
public:
    explicit Directory(const ByteSource& source)
        : m_source(source)
    {
        const auto mark = source.bytes(0, 4);
        m_isLittleEndian = mark == QByteArrayView("II\x2a\0", 4);
        if (m_isLittleEndian || mark == QByteArrayView("MM\0\x2a", 4))
            m_place = number<quint32>(4).value_or(0);
    }

    /// The place of the twelve bytes of a tag: its number, type, count, and value or the value's
    /// place.
    std::optional<qint64> find(quint16 tag) const
    {
        constexpr int mostEntries = 256;
        constexpr qint64 entrySize = 12;
        if (m_place == 0)
            return std::nullopt;
        const auto count = std::min<int>(number<quint16>(m_place).value_or(0), mostEntries);
        for (int index = 0; index < count; ++index) {
            const auto entry = m_place + 2 + index * entrySize;
            const auto found = number<quint16>(entry);
            if (found == tag)
                return entry;
            if (!found)
                break;
        }
        return std::nullopt;
    }

    std::optional<quint16> shortNumber(quint16 tag) const
    {
        const auto entry = find(tag);
        if (!entry || number<quint16>(*entry + 2) != shortType)
            return std::nullopt;
        return number<quint16>(*entry + 8);
    }

    std::optional<double> ratio(quint16 tag) const
    {
        const auto entry = find(tag);
        if (!entry || number<quint16>(*entry + 2) != ratioType)
            return std::nullopt;
        const auto place = number<quint32>(*entry + 8);
        if (!place)
            return std::nullopt;
        const auto numerator = number<quint32>(*place);
        const auto denominator = number<quint32>(qint64{*place} + 4);
        if (!numerator || !denominator || *denominator == 0)
            return std::nullopt;
        return static_cast<double>(*numerator) / *denominator;
    }

private:
    static constexpr quint16 shortType = 3;
    static constexpr quint16 ratioType = 5;

    template <typename Number>
    std::optional<Number> number(qint64 place) const
    {
        return m_isLittleEndian ? m_source.littleEndian<Number>(place)
                                : m_source.bigEndian<Number>(place);
    }

    const ByteSource& m_source;
    bool m_isLittleEndian = false;
    qint64 m_place = 0;
};

std::optional<double> dotsPerInch(const Directory& directory)
{
    constexpr quint16 horizontalResolution = 282;
    constexpr quint16 resolutionUnit = 296;
    enum Unit : quint16 { inch = 2, centimetre = 3 };
    const auto resolution = directory.ratio(horizontalResolution);
    if (!resolution)
        return std::nullopt;
    switch (directory.shortNumber(resolutionUnit).value_or(inch)) {
    case inch:
        return credibleDotsPerInch(*resolution);
    case centimetre:
        return credibleDotsPerInch(*resolution * centimetresPerInch);
    default:
        return std::nullopt;
    }
}

int orientation(const Directory& directory)
{
    constexpr quint16 orientationTag = 274;
    const auto number = directory.shortNumber(orientationTag).value_or(1);
    return number >= 1 && number <= 8 ? number : 1;
}

} // namespace

ExifTags readExifTags(const ByteSource& source)
{
    const Directory directory(source);
    return {.dotsPerInch = dotsPerInch(directory), .orientation = orientation(directory)};
}

std::optional<double> credibleDotsPerInch(double value)
{
    constexpr double finest = 100'000;
    return value > 0 && value <= finest ? std::optional(value) : std::nullopt;
}

} // namespace Platform
