#pragma once

#include "Platform/X11/OwnFrames.h"
#include "Platform/X11/Server.h"
#include "Platform/X11/WindowTree.h"

#include <QImage>
#include <QList>
#include <QRect>

#include <memory>
#include <vector>

namespace Platform::X11 {

/// The windows of this program, as far as this program itself knows.
struct OwnWindows {
    ClientIDs ids; ///< Of the connection that makes them.
    std::shared_ptr<OwnFrames> frames; ///< As far as they are known. Never null.
    std::vector<xcb_window_t> newlyShown; ///< Whose frames may not be known yet.
    /// Where a compositor may still show some that were hidden a moment ago: it fades them out, or
    /// hasn't got to it. Pixels of the root.
    QList<QRect> recentlyHidden;
};

/// What a rectangle of the root, in its pixels, shows without our windows: opaque, of @p imageSize,
/// black where @p source has no pixels. Where one of them covers it, or the shadow that a
/// compositor may give it, that area is drawn anew from the windows below.
Result<QImage> captureRegion(Server& server, const QRect& source, QSize imageSize,
    const OwnWindows& ownWindows, bool hasCompositor);

} // namespace Platform::X11
