#pragma once

#include "Platform/Geometry.h"

#include <QRectF>

#include <variant>

namespace Lumenote {

/// A rectangle in points, in the global space: origin at the upper left corner of the first
/// display, y down.
struct RegionTarget {
    QRectF rect;

    bool operator==(const RegionTarget& other) const { return Platform::isSame(rect, other.rect); }
};

struct WindowTarget {
    quint32 id = 0; ///< As in Platform::SharedWindow.

    bool operator==(const WindowTarget&) const = default;
};

/// What a selection yields. Where there is none, the user cancelled.
using CaptureTarget = std::variant<RegionTarget, WindowTarget>;

} // namespace Lumenote
