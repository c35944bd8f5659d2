#pragma once

#include "Platform/TextLayout/InkImage.h"

#include <QRect>

#include <cstdint>
#include <span>
#include <stop_token>
#include <vector>

namespace Platform {

/// Neighbouring inked pixels of one row: from `left` up to, not including, `right`.
struct InkRun {
    int y = 0;
    int left = 0;
    int right = 0;
};

/// A connected patch of ink: mostly one letter, or a few that touch.
struct Component {
    QRect box; ///< Pixels of the ink image.
    int area = 0; ///< Inked pixels.
    int peak = 0; ///< Its strongest ink.
    std::int64_t ink = 0; ///< The sum of its ink.
    int firstRun = 0;
    int runCount = 0;
};

/// All components of a picture, in the order of their topmost rows.
struct Components {
    std::vector<Component> items;
    std::vector<InkRun> runs; ///< Those of one component lie together, from top to bottom.

    std::span<const InkRun> runsOf(const Component& component) const
    {
        return {runs.data() + component.firstRun, std::size_t(component.runCount)};
    }
};

/// Finds the components of @p ink that touch at edges or corners. What is weak beside its
/// neighbourhood (the fringes of compressed pictures) doesn't count as ink. Pictures made of noise
/// are cut off at a bounded number of runs. Nothing once @p stop is requested. Any thread.
Components componentsOf(const InkImage& ink, const std::stop_token& stop);

} // namespace Platform
