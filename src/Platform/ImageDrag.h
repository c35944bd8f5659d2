#pragma once

#include "Platform/Error.h"

#include <QByteArray>
#include <QFuture>
#include <QImage>
#include <QString>

#include <functional>

namespace Platform {

/// Drags of an image into other programs, which get it as bytes or as a file, as they like. Main
/// thread.
class ImageDrag {
public:
    struct Payload {
        QFuture<Result<QByteArray>> png; ///< May still be in the making.
        QString name; ///< A file name.
        QImage thumbnail; ///< Hangs at the pointer by its middle, a pixel for each point.
    };

    /// With an error, in words for the user, where there were bytes but no file could be made of
    /// them; they may have been taken all the same.
    using OnEnd = std::function<void(const Result<void>&)>;

    virtual ~ImageDrag() = default;

    /// Drags while the mouse button that is down now stays so, and comes back at the end: within it
    /// the event loop goes on, in which anything may happen to the widget that began the drag.
    /// @p onEnd is called once, perhaps later.
    virtual void begin(const Payload& payload, OnEnd onEnd) = 0;
};

} // namespace Platform
