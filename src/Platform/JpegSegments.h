#pragma once

#include "Platform/ByteSource.h"

namespace Platform {

/// One segment of a JPEG file.
struct JpegSegment {
    quint8 marker = 0;
    qint64 start = 0; ///< Of the content, behind marker and length.
    int size = 0; ///< Of the content, in bytes.

    bool isFrame() const; ///< Tells size, components and way of coding.
    bool isScan() const { return marker == 0xDA; } ///< Coded pixels follow.
};

/// Calls @p visit for the segments of @p source up to and with the first scan, until it answers
/// false. Nothing is called where @p source is no JPEG file.
template <typename Visit>
void visitJpegSegments(const ByteSource& source, Visit visit);

/// The segment at @p place; nothing where there is none.
std::optional<JpegSegment> jpegSegmentAt(const ByteSource& source, qint64 place);

template <typename Visit>
void visitJpegSegments(const ByteSource& source, Visit visit)
{
    constexpr int most = 1000; // A profile of 16 MB has 256.
    if (source.bigEndian<quint16>(0) != quint16{0xFFD8})
        return;
    qint64 place = 2;
    for (int count = 0; count < most; ++count) {
        const auto segment = jpegSegmentAt(source, place);
        if (!segment || !visit(*segment) || segment->isScan())
            return;
        place = segment->start + segment->size;
    }
}

} // namespace Platform
