#pragma once

#include "Model/Annotation.h"
#include "Platform/Error.h"

#include <QByteArray>
#include <QFuture>
#include <QImage>
#include <QList>

#include <future>

namespace Lumenote {

/// A capture with its annotations as a PNG file, rendered and encoded once, on a thread of its own,
/// however many ask for it. A value: copies share the work and what comes of it.
class FinalImage {
public:
    using Png = Platform::Result<QByteArray>;

    /// None.
    FinalImage() = default;
    /// Starts the work; what happens to the annotations afterwards doesn't reach into it.
    FinalImage(const QImage& capture, const QList<Annotation>& annotations);

    bool isNone() const { return !m_bytes.valid(); }

    /// For threads with an event loop.
    QFuture<Png> png() const { return m_png; }

    /// The same for all others: blocks until it is there. Any thread.
    const Png& waitForPng() const { return m_bytes.get(); }

    /// Whether its making has ended, and not well.
    bool hasFailed() const { return m_png.isFinished() && !isNone() && !m_png.result(); }

    /// Whether making the image failed with @p error, and not encoding it.
    static bool isUnrendered(const Platform::Error& error);

private:
    QFuture<Png> m_png;
    std::shared_future<Png> m_bytes;
};

} // namespace Lumenote
