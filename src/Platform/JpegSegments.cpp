#include "Platform/JpegSegments.h"

namespace Platform {

bool JpegSegment::isFrame() const
{
    constexpr quint8 huffmanTables = 0xC4;
    constexpr quint8 extension = 0xC8;
    constexpr quint8 arithmeticConditioning = 0xCC;
    return marker >= 0xC0 && marker <= 0xCF && marker != huffmanTables && marker != extension
        && marker != arithmeticConditioning;
}

std::optional<JpegSegment> jpegSegmentAt(const ByteSource& source, qint64 place)
{
    constexpr int mostFillBytes = 64;
    constexpr quint16 lengthBytes = 2;
    constexpr quint8 fill = 0xFF;
    if (source.bigEndian<quint8>(place) != fill)
        return std::nullopt;
    ++place;
    auto marker = source.bigEndian<quint8>(place);
    for (int count = 0; marker == fill && count < mostFillBytes; ++count)
        marker = source.bigEndian<quint8>(++place);
    const auto length = source.bigEndian<quint16>(place + 1);
    if (!marker || !length || *length < lengthBytes)
        return std::nullopt;
    return JpegSegment{
        .marker = *marker, .start = place + 1 + lengthBytes, .size = *length - lengthBytes};
}

} // namespace Platform
