#include "UI/History/HistoryMeasures.h"

#include <algorithm>
#include <numeric>

namespace Lumenote::HistoryMeasures {

namespace {

constexpr double leastThumbnailHeight = 40;
constexpr double mostThumbnailHeight = 108;
constexpr int unknownThumbnailHeight = 92;

} // namespace

int thumbnailHeight(const QSize& pixelSize)
{
    if (pixelSize.isEmpty())
        return unknownThumbnailHeight;
    const auto height =
        static_cast<double>(pixelSize.height()) / pixelSize.width() * thumbnailWidth;
    return qRound(std::clamp(height, leastThumbnailHeight, mostThumbnailHeight));
}

int rowHeight(const QSize& pixelSize)
{
    return thumbnailHeight(pixelSize) + 2 * rowPadding + captionGap + captionHeight;
}

int contentHeight(const QList<CaptureHistory::Entry>& entries)
{
    const auto rows = std::accumulate(entries.begin(), entries.end(), 0,
        [](int sum, const auto& entry) { return sum + rowHeight(entry.pixelSize); });
    const auto gaps = rowSpacing * std::max(static_cast<int>(entries.size()) - 1, 0);
    return headerHeight + 2 * listPadding + rows + gaps + lowerEdge;
}

} // namespace Lumenote::HistoryMeasures
