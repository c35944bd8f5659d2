// Captures the screen and writes it as a PNG file, as plainly as can be: what remains of such a
// command is the encoder.

#include "Platform/PngEncoder.h"

#include <QFile>

#include <xcb/xcb.h>

#include <cstdlib>
#include <memory>

int main(int argc, char** argv)
{
    if (argc != 2)
        qFatal("usage: screen-to-png FILE");
    const std::unique_ptr<xcb_connection_t, decltype(&xcb_disconnect)> connection(
        xcb_connect(nullptr, nullptr), xcb_disconnect);
    if (xcb_connection_has_error(connection.get()) != 0)
        qFatal("No display");
    const auto* screen = xcb_setup_roots_iterator(xcb_get_setup(connection.get())).data;
    const auto cookie = xcb_get_image(connection.get(), XCB_IMAGE_FORMAT_Z_PIXMAP, screen->root, 0,
        0, screen->width_in_pixels, screen->height_in_pixels, ~0U);
    const std::unique_ptr<xcb_get_image_reply_t, decltype(&std::free)> reply(
        xcb_get_image_reply(connection.get(), cookie, nullptr), std::free);
    if (!reply)
        qFatal("The screen can't be read");
    const QImage image(xcb_get_image_data(reply.get()), screen->width_in_pixels,
        screen->height_in_pixels, QImage::Format_RGB32);
    const auto png = Platform::encodePng(image, 72);
    QFile file(QString::fromLocal8Bit(argv[1]));
    if (!png || !file.open(QIODevice::WriteOnly) || file.write(*png) != png->size())
        qFatal("Cannot write %s", argv[1]);
}
