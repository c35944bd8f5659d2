#include "UI/Shared/RoundedRegion.h"

#include <algorithm>
#include <cmath>

namespace Lumenote {

QRegion roundedRegion(const QRect& rect, int radius)
{
    const int corner = std::min({radius, rect.width() / 2, rect.height() / 2});
    QRegion region(rect.adjusted(0, corner, 0, -corner));
    for (int row = 0; row < corner; ++row) {
        const auto fromCentre = corner - (row + 0.5);
        const auto reach = std::sqrt(corner * corner - fromCentre * fromCentre);
        const auto inset = corner - static_cast<int>(std::lround(reach));
        const int width = rect.width() - 2 * inset;
        region += QRect(rect.left() + inset, rect.top() + row, width, 1);
        region += QRect(rect.left() + inset, rect.bottom() - row, width, 1);
    }
    return region;
}

} // namespace Lumenote
