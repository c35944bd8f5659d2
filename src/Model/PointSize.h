#pragma once

#include <QSizeF>

#include <optional>

namespace Lumenote {

/// The display size in points of a picture of @p pixels whose file tells @p dotsPerInch: 144 make a
/// point of two pixels. The pixels themselves where nothing is told, or nothing that can be used.
QSizeF pointSize(QSizeF pixels, std::optional<double> dotsPerInch);

} // namespace Lumenote
