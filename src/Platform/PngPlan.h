#pragma once

#include "Platform/PngRows.h"

#include <vector>

namespace Platform {

/// Rows that are filtered alike.
struct PngStrip {
    int first = 0;
    int count = 0;
    PngFilter filter = PngFilter::none;
};

/// How the pixels of one image are written best.
struct PngPlan {
    std::vector<PngStrip> strips; ///< From top to bottom; each fits into the processor's cache.
    /// Whether the picture is smooth for the most part: neither flat nor noisy.
    bool isSmooth = false;
};

/// Decides from a few rows out of every strip.
PngPlan planPng(PngRows& rows);

} // namespace Platform
