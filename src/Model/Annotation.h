#pragma once

#include "Model/AnnotationTool.h"

#include <QPointF>
#include <QRectF>
#include <QUuid>

#include <array>
#include <optional>
#include <span>

namespace Lumenote {

/// A point by which an annotation is reshaped. The last two are the corners that neither `start`
/// nor `end` occupies, named after the fields their coordinates come from.
enum class AnnotationHandle { start, end, startXEndY, endXStartY };

inline constexpr std::array allAnnotationHandles{AnnotationHandle::start, AnnotationHandle::end,
    AnnotationHandle::startXEndY, AnnotationHandle::endXStartY};

/// One mark on a capture. All coordinates and distances are pixels of the captured image, from its
/// upper left corner, y down, whatever the size it is shown at.
struct Annotation {
    QUuid id = QUuid::createUuid(); ///< Kept through every move and reshaping.
    AnnotationTool tool = AnnotationTool::rectangle; ///< Never changes either.
    QPointF start; ///< Where the drag that made it began; the tail of an arrow.
    QPointF end; ///< Where that drag ended, perhaps left of or above `start`; the tip of an arrow.

    /// The area between `start` and `end`, whichever of them lies where.
    QRectF rect() const;

    /// What the annotation covers: for the censor tools exactly the whole pixels that are filled,
    /// which is `rect()` and at least two pixels around it; for the others `rect()`.
    QRectF hitRect() const;

    /// Whether a fresh drag made something big enough to keep, rather than being a click.
    bool exceedsMinimumSize() const;

    /// Whether the body is hit: an area up to @p tolerance around it, its inside included; an
    /// arrow within @p tolerance of its line.
    bool isHit(QPointF point, double tolerance) const;

    /// Both ends of an arrow, or all four corners.
    std::span<const AnnotationHandle> handles() const;
    QPointF point(AnnotationHandle handle) const;

    /// The first of `handles()` within @p tolerance of @p point, the limit included.
    std::optional<AnnotationHandle> handleAt(QPointF point, double tolerance) const;

    /// This annotation with one handle at @p point; the coordinates that the handle doesn't name
    /// stay. During a drag call it on the annotation as it was at the grab: steps would add up.
    Annotation reshaped(AnnotationHandle handle, QPointF point) const;

    /// This annotation shifted by @p offset. As for `reshaped`, the start is the one at the grab.
    Annotation moved(QPointF offset) const;

    /// To the last bit, where QPointF's own comparison is fuzzy.
    bool operator==(const Annotation& other) const;
};

/// The uppermost annotation hit at @p point. The last one of @p annotations lies on top.
std::optional<Annotation> topmostHit(
    std::span<const Annotation> annotations, QPointF point, double tolerance);

} // namespace Lumenote
