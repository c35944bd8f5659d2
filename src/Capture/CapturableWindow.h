#pragma once

#include "Platform/Geometry.h"

#include <QRectF>
#include <QString>

namespace Lumenote {

/// A window that the user can pick.
struct CapturableWindow {
    quint32 id = 0; ///< As in Platform::SharedWindow.
    QRectF frame; ///< Points, global: origin at the upper left corner of the first display, y down.
    QString title; ///< Empty where it has none.
    QString application; ///< Empty where it isn't known.

    /// What stands beside the window while the pointer is over it.
    QString label() const
    {
        return title.isEmpty() ? application : application + QStringLiteral(" — ") + title;
    }

    bool operator==(const CapturableWindow& other) const
    {
        return id == other.id && Platform::isSame(frame, other.frame) && title == other.title
            && application == other.application;
    }
};

} // namespace Lumenote
