#pragma once

#include "Capture/OverlayText.h"
#include "Capture/SelectionState.h"

#include <QColor>
#include <QList>
#include <QRectF>
#include <QRegion>

#include <optional>

namespace Lumenote {

/// What one overlay shows over its dimming, as plain values: made from the selection, compared to
/// find what has changed, and drawn. In points of the overlay, from its upper left corner, y down.
struct OverlayScene {
    /// Where the display shows through undimmed, and the frame around it.
    struct Hole {
        QRectF rect;
        double frameWidth = 0; ///< Outside of `rect`.
        QColor frameColor;

        QRectF outerRect() const;
        bool operator==(const Hole&) const = default;
    };

    /// A text on a rounded ground.
    struct Pill {
        QRectF rect;
        double radius = 0;
        QColor fill;
        OverlayText::Style style = OverlayText::Style::plain;
        QString text;
        QPointF textOrigin;
        QColor ink;

        bool operator==(const Pill&) const = default;
    };

    std::optional<Hole> hole;
    QList<Pill> pills;

    bool operator==(const OverlayScene&) const = default;
};

/// What the overlay of a display shows of @p state. @p frame is the display's, in the space of
/// selections; @p scale its pixels a point; @p accent marks windows.
OverlayScene overlayScene(
    const SelectionState& state, const QRectF& frame, double scale, const QColor& accent);

/// All that looks different in the two scenes.
QRegion changedArea(const OverlayScene& before, const OverlayScene& after);

} // namespace Lumenote
