#pragma once

#include <QtGlobal>

#include <array>
#include <span>

namespace Platform {

/// What is done to a row before it is compressed, by the numbers of the PNG standard.
enum class PngFilter : uchar { none, sub, up, average, paeth };

/// Those that leave differences to neighbours.
inline constexpr std::array pngDifferenceFilters{
    PngFilter::sub, PngFilter::up, PngFilter::average, PngFilter::paeth};

/// Filters @p row, of 8 bits a channel, into @p out. Above the first row are zeros.
void filterPngRow(
    std::span<uchar> out, const uchar* row, const uchar* above, size_t channels, PngFilter filter);

/// Makes a filtered row of whole pixels with three channels what it was. False where there is no
/// such filter.
bool unfilterPngRow(std::span<uchar> row, const uchar* above, PngFilter filter);

} // namespace Platform
