#pragma once

#include "Model/StoredText.h"

#include <QColorSpace>
#include <QImage>
#include <QUuid>

/// What the recording program stores, and its watcher expects, of a capture: all of it follows from
/// the UUID.
namespace RecordedCapture {

inline QImage picture(const QUuid& id)
{
    QImage image(120, 80, QImage::Format_RGB32);
    auto state = id.data1;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            image.setPixel(x, y, 0xff000000 | ((state = state * 1664525 + 1013904223) >> 8));
    image.setColorSpace(QColorSpace::SRgb);
    return image;
}

/// The first and the second text of a capture differ, as those of two recognitions may.
inline Lumenote::StoredText text(const QUuid& id, int which)
{
    const auto line = id.toString() + QString::number(which);
    return {.lines = QList<Lumenote::StoredText::Line>(50, {.text = line})};
}

} // namespace RecordedCapture
