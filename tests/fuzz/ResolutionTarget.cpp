// Any bytes as a file that tells its resolution, and any number as one.

#include "Model/PointSize.h"
#include "Platform/ExifTags.h"
#include "Platform/ImageHeader.h"
#include "Platform/ImageResolution.h"
#include "Target.h"

#include <QBuffer>

#include <cmath>
#include <cstring>

namespace {

bool isUsable(double length)
{
    return std::isfinite(length) && length > 0;
}

/// Whatever the resolution, a picture is shown somewhere and keeps its shape.
void checkPoints(std::optional<double> dotsPerInch)
{
    const QSizeF pixels(8192, 4096);
    const auto points = Lumenote::pointSize(pixels, dotsPerInch);
    require(isUsable(points.width()) && isUsable(points.height()));
    require(points.width() <= pixels.width() * 100);
    require(std::abs(points.width() / points.height() - 2) < 1e-6);
}

void checkAnyNumber(const QByteArray& bytes)
{
    double number = 0;
    if (bytes.size() < qsizetype{sizeof(number)})
        return;
    std::memcpy(&number, bytes.constData(), sizeof(number));
    checkPoints(number);
    checkPoints(Platform::credibleDotsPerInch(number));
}

} // namespace

void tryBytes(const QByteArray& bytes)
{
    QBuffer file;
    file.setData(bytes);
    file.open(QIODevice::ReadOnly);
    const auto dotsPerInch = Platform::imageDotsPerInch(file);
    require(file.pos() == 0);
    require(!dotsPerInch || (isUsable(*dotsPerInch) && *dotsPerInch <= 100'000));
    checkPoints(dotsPerInch);
    checkAnyNumber(bytes);

    const Platform::ByteSource source(file);
    for (const auto& tags : {Platform::readExifTags(source), Platform::exifTags(source)})
        require(tags.orientation >= 1 && tags.orientation <= 8);
    Platform::gifSize(source);
    Platform::icoPngSize(source);
    Platform::comesRowByRow(source);
}
