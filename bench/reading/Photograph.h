#pragma once

#include "Random.h"

#include <QImage>

namespace Lumenote::Bench {

/// A picture like a landscape out of focus: noise in several octaves, blurred lights, and a shade
/// that changes from the top to the bottom. @p lightness is 0 for night, 1 for noon.
QImage photograph(QSize size, Random& random, double lightness);

/// Puts the outlines of buildings before the lower half of @p image, with windows lit at random.
void addSkyline(QImage& image, Random& random);

} // namespace Lumenote::Bench
