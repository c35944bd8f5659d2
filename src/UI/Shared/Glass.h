#pragma once

#include "UI/Shared/Shadow.h"

#include <QColor>

#include <optional>

class QPainter;
class QRectF;

/// The surfaces that float: dark glass, as clear as the desktop allows. Main thread.
namespace Lumenote::Glass {

/// What is behind the glass of a window.
enum class Backing {
    opaque, ///< Nothing: the desktop can't blend windows.
    translucent, ///< The desktop as it is, which must not make what stands on the glass illegible.
    blurred, ///< The desktop, blurred by its compositor.
};

Backing backing();
void setBacking(Backing backing); ///< For all windows; they have to be painted anew.

/// Below every surface.
const Shadow& shadow();

/// A surface that fills @p rect with fully rounded ends, @p tint over the glass where there is one.
void paintCapsule(QPainter& painter, const QRectF& rect, const std::optional<QColor>& tint = {});

} // namespace Lumenote::Glass
