#pragma once

#include <QImage>
#include <QList>
#include <QString>

namespace Lumenote::Bench {

/// What is on a screen of 3840 by 2160 pixels when it is captured.
struct ScreenPicture {
    QString name;
    bool isPhotographic = false; ///< Else surfaces, text and controls.
    QImage image; ///< RGB32, as an X11 capture gives it.
};

/// The same pixels on every machine with the same fonts.
QList<ScreenPicture> screenPictures();

} // namespace Lumenote::Bench
