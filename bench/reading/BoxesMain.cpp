// reading-boxes IMAGE: prints each line that the recogniser finds as "x y w h<TAB>text".

#include "Platform/Tesseract/TesseractRecognizer.h"

#include <QCoreApplication>
#include <QImage>

#include <cstdio>
#include <future>

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    const QImage image(QCoreApplication::arguments().value(1));
    if (image.isNull()) {
        std::fputs("reading-boxes: give me an image\n", stderr);
        return 64;
    }
    // The recogniser refuses to block the main thread.
    const auto lines = std::async(std::launch::async, [&image] {
        return Platform::TesseractRecognizer().recognize(image, {});
    }).get();
    if (!lines) {
        std::fprintf(stderr, "reading-boxes: %s\n", qPrintable(lines.error().message));
        return 1;
    }
    for (const Platform::TextObservation& line : *lines) {
        const QRectF box = line.boundingBox;
        const QString text = line.candidates.isEmpty() ? QString() : line.candidates.first().text;
        std::printf("%.1f %.1f %.1f %.1f\t%s\n", box.x(), box.y(), box.width(), box.height(),
            text.simplified().toUtf8().constData());
    }
}
