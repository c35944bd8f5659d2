#pragma once

#include "UI/Shared/Motion.h"

#include <functional>

class QWidget;

/// Widgets that come and go. What moves is a picture of the widget, made once.
namespace Lumenote::Transitions {

/// Lets @p widget, which must be visible, grow from @p fromScale and become opaque. @p onEnd is
/// called once it stands as it is; never where the widget goes before.
void enter(QWidget& widget, const Motion::Timing& timing, double fromScale,
    std::function<void()> onEnd = {});

/// What enter() paints is out of date.
void refresh(QWidget& widget);

/// Leaves a picture of @p widget in its place, above its siblings, which fades and shrinks to
/// @p toScale. The widget itself may be hidden or deleted right away.
void leave(QWidget& widget, const Motion::Timing& timing, double toScale);

} // namespace Lumenote::Transitions
