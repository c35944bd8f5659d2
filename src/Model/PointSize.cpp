#include "Model/PointSize.h"

#include <cmath>

namespace Lumenote {

namespace {

constexpr double dotsPerInchOfPoints = 72;

/// Pixels of a point, to the hundredth: files hold whole dots per metre, which makes 143.99 of 144.
double scaleOf(double dotsPerInch)
{
    return std::round(dotsPerInch / dotsPerInchOfPoints * 100) / 100;
}

} // namespace

QSizeF pointSize(QSizeF pixels, std::optional<double> dotsPerInch)
{
    const auto scale = scaleOf(dotsPerInch.value_or(0));
    return std::isfinite(scale) && scale > 0 ? pixels / scale : pixels;
}

} // namespace Lumenote
