#pragma once

#include "Model/CaptureHistory.h"

/// How large the list of captures and its parts are, in points.
namespace Lumenote::HistoryMeasures {

inline constexpr int sidebarWidth = 216;
inline constexpr int headerHeight = 38; ///< Its last point is a divider.
inline constexpr int lowerEdge = 1; ///< Below the rows.
inline constexpr int listPadding = 10;
inline constexpr int rowSpacing = 6;
inline constexpr int rowPadding = 6;
inline constexpr int rowWidth = sidebarWidth - 2 * listPadding;
inline constexpr int thumbnailWidth = rowWidth - 2 * rowPadding;
inline constexpr int captionGap = 5; ///< Between the thumbnail and the caption.
inline constexpr int captionHeight = 13;

/// That of the capture at a row's width, but neither a line nor a tower.
int thumbnailHeight(const QSize& pixelSize);
int rowHeight(const QSize& pixelSize);

/// Of the whole sidebar, as if there were room for all of it.
int contentHeight(const QList<CaptureHistory::Entry>& entries);

} // namespace Lumenote::HistoryMeasures
