#pragma once

#include "Harness/PaintedWindow.h"

#include <QSize>

#include <memory>
#include <vector>

namespace Lumenote::Bench {

/// Windows of other programs that lie on and beside each other, all over a screen.
std::vector<std::unique_ptr<Harness::PaintedWindow>> otherWindows(QSize screenSize);

} // namespace Lumenote::Bench
