// Any bytes as a capture to be surveyed: never a crash, and a thumbnail of the wanted size or none.

#include "Platform/PngThumbnail.h"
#include "Target.h"

#include <QBuffer>

#include <algorithm>

void tryBytes(const QByteArray& bytes)
{
    constexpr qint64 mostPixels = 4'000'000; // More takes time, and finds nothing else.
    QBuffer file;
    file.setData(bytes);
    file.open(QIODevice::ReadOnly);
    const auto png = Platform::readPlainPng(file);
    if (!png || qint64{png->size.width()} * png->size.height() > mostPixels)
        return;
    require(!png->size.isEmpty());
    const QSize size(std::max(1, png->size.width() / 7), std::max(1, png->size.height() / 7));
    const auto thumbnail = Platform::shrunkPng(file, *png, size);
    require(thumbnail.isNull() || thumbnail.size() == size);
}
