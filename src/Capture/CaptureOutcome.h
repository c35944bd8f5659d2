#pragma once

#include "Capture/CaptureError.h"

#include <QImage>
#include <QSizeF>

#include <tl/expected.hpp>

#include <variant>

namespace Lumenote {

/// The pixels of a display or window as they are there, and their size in points.
struct CapturedImage {
    QImage image;
    QSizeF pointSize;
};

using CaptureResult = tl::expected<CapturedImage, CaptureError>;

/// The user backed out; nothing is shown.
struct CaptureCancelled { };

/// The end of a capture flow.
using CaptureOutcome = std::variant<CapturedImage, CaptureError, CaptureCancelled>;

} // namespace Lumenote
