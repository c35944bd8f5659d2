#pragma once

#include <QPixmap>

class QImage;
class QSize;

namespace Lumenote {

/// @p picture as a row shows it: filling @p size, which is in points, on a dark plate with rounded
/// corners. The plate alone for a null picture.
QPixmap historyThumbnail(const QImage& picture, const QSize& size, double devicePixelRatio);

} // namespace Lumenote
