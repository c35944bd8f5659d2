#pragma once

#include <QColorSpace>

namespace Platform {

/// Whether @p space tells colours by red, green and blue. Qt has no question for that: it takes the
/// profiles of grey images too, and keeps the bytes of those that it can't use.
inline bool isRgb(const QColorSpace& space)
{
    constexpr qsizetype modelOffset = 16; // In the header of a profile, see ICC.1 section 7.2.
    return space.isValid() && space.iccProfile().mid(modelOffset, 4) == "RGB ";
}

} // namespace Platform
