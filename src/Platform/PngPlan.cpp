#include "Platform/PngPlan.h"

#include <algorithm>

namespace Platform {

namespace {

constexpr int sampledRows = 3;

/// Glyphs come again, and are found again only where they are left as they are. What changes gently
/// is told better by its differences. Measured on screens and photographs: where those that aren't
/// zero exceed this on average, it is glyphs.
constexpr quint64 largestGentleDifference = 25;

int rowsOfStrip(const PngRows& rows)
{
    constexpr size_t bytes = 512UL * 1024;
    constexpr size_t mostRows = 64;
    return static_cast<int>(std::clamp(bytes / rows.rowBytes(), size_t{1}, mostRows));
}

PngFilter bestFilter(const PngSample& sample)
{
    const auto smallest = std::ranges::min_element(sample.differences);
    if (*smallest >= largestGentleDifference * sample.changedBytes)
        return PngFilter::none;
    return pngDifferenceFilters.at(static_cast<size_t>(smallest - sample.differences.begin()));
}

} // namespace

PngPlan planPng(PngRows& rows)
{
    PngPlan plan;
    quint64 bytes = 0;
    quint64 changedBytes = 0;
    const int count = rowsOfStrip(rows);
    for (int first = 0; first < rows.height(); first += count) {
        PngStrip strip{.first = first, .count = std::min(count, rows.height() - first)};
        const int sampled = std::min(sampledRows, strip.count);
        const auto sample = rows.sample(first + (strip.count - sampled) / 2, sampled);
        strip.filter = bestFilter(sample);
        plan.strips.push_back(strip);
        bytes += sample.bytes;
        changedBytes += sample.changedBytes;
    }
    const auto unfiltered = std::ranges::count(plan.strips, PngFilter::none, &PngStrip::filter);
    const bool isFlat = changedBytes * 50 < bytes || unfiltered * 5 > std::ssize(plan.strips) * 2;
    const bool isNoisy = changedBytes * 2 > bytes;
    plan.isSmooth = !isFlat && !isNoisy;
    return plan;
}

} // namespace Platform
