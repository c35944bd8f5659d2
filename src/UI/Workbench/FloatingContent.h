#pragma once

#include <QRegion>
#include <QWidget>

namespace Lumenote {

/// What fills a floating window: something that stands in a transparent margin, in which its shadow
/// lies.
class FloatingContent : public QWidget {
    Q_OBJECT

public:
    using QWidget::QWidget;

    static QMargins shadowMargins(); ///< Between the window's edges and what floats.

    virtual QRect cardRect() const = 0; ///< By whose edges the window is resized.
    virtual QRegion inputRegion() const = 0; ///< What takes the pointer.
    virtual QRegion visibleRegion() const = 0; ///< What is seen where nothing blends windows.

    /// Whether the window is blended with what is below it, or cut out by a mask.
    virtual void setBlended(bool isBlended) = 0;

    virtual void playEntrance() { }

    /// Gives up a gesture that is under way; false where there is none.
    virtual bool cancelGesture() { return false; }

signals:
    void shapeChanged(); ///< As the regions tell.
};

} // namespace Lumenote
