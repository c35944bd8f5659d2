#pragma once

#include "Capture/CapturableWindow.h"

#include <QRectF>

#include <optional>

namespace Lumenote {

enum class SelectionMode { region, window };

/// The part of a selection that overlays show. Global space of selections, in points, y down.
struct SelectionState {
    SelectionMode mode = SelectionMode::region;
    std::optional<QRectF> selection = std::nullopt; ///< The region so far.
    /// The one under the pointer, in window mode.
    std::optional<CapturableWindow> hoveredWindow = std::nullopt;
};

} // namespace Lumenote
