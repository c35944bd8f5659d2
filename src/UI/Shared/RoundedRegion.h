#pragma once

#include <QRegion>

namespace Lumenote {

/// The whole pixels of a rounded rectangle: those whose middle lies in it. Built row by row, since
/// regions made of ellipses and polygons differ from one side to the other.
QRegion roundedRegion(const QRect& rect, int radius);

} // namespace Lumenote
