#pragma once

#include "Random.h"

#include <QImage>

namespace Lumenote::Bench {

/// A picture like a landscape out of focus: noise in several octaves, blurred lights, and a shade
/// that changes from the top to the bottom. @p lightness is 0 for night, 1 for noon.
QImage photograph(QSize size, Random& random, double lightness);

} // namespace Lumenote::Bench
