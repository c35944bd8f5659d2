#include "Pictures.h"

#include "../reading/Photograph.h"
#include "../reading/Scenes.h"

#include <QLinearGradient>

#include <algorithm>
#include <array>
#include <span>

namespace Lumenote::Bench {

using namespace Qt::StringLiterals;

namespace {
constexpr QSize screen(3840, 2160);

struct Drawing {
    const char* name;
    void (*draw)(Page& page);
};

constexpr std::array dialogs{
    Drawing{"editor", Scenes::editor},
    Drawing{"settings", Scenes::settings},
    Drawing{"file-list", Scenes::fileList},
    Drawing{"chat", Scenes::chat},
    Drawing{"dashboard", Scenes::dashboard},
    Drawing{"compiler-output", Scenes::compilerOutput},
    Drawing{"mail-list", Scenes::mailList},
    Drawing{"spreadsheet", Scenes::spreadsheet},
    Drawing{"article", Scenes::article},
    Drawing{"form", Scenes::form},
    Drawing{"search-results", Scenes::searchResults},
};

constexpr std::array photographs{Drawing{"photo-grid", Scenes::photoGrid}};

QImage drawn(const QString& name, int look, double scale, void (*draw)(Page& page))
{
    Random random(seedOf(name));
    Texts texts({Language::english}, Split::tuning, random);
    const Look chosen = lookNumber(look, Split::tuning);
    Canvas canvas(scale, chosen.rendering);
    Page page{canvas, chosen, texts, random};
    draw(page);
    return canvas.takeImage();
}

/// Sensors don't see two pixels of one sky alike.
void addGrain(QImage& image, Random& random, int strength)
{
    for (int y = 0; y < image.height(); ++y) {
        auto* pixels = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (int x = 0; x < image.width(); ++x) {
            const auto grained = [&](int value) {
                return std::clamp(value + random.between(-strength, strength), 0, 255);
            };
            pixels[x] = qRgb(
                grained(qRed(pixels[x])), grained(qGreen(pixels[x])), grained(qBlue(pixels[x])));
        }
    }
}

QImage cameraPicture(const QString& name)
{
    Random random(seedOf(name));
    auto image = photograph(screen, random, 0.8);
    addGrain(image, random, 2);
    return image;
}

QImage gradientWallpaper()
{
    QImage image(screen, QImage::Format_RGB32);
    QLinearGradient gradient({0, 0}, QPointF(0, screen.height()));
    gradient.setColorAt(0, QColor(0x20, 0x40, 0x70));
    gradient.setColorAt(1, QColor(0x70, 0x90, 0xb0));
    QPainter(&image).fillRect(image.rect(), gradient);
    return image;
}

/// Lays so many of @p windows over @p wallpaper, which shows between them.
QImage desktop(QImage wallpaper, std::span<const Drawing> windows, int count)
{
    constexpr double scale = 1.5;
    Random random(seedOf(u"desktop"_s));
    QPainter painter(&wallpaper);
    for (int i = 0; i < count; ++i) {
        const auto& each = windows[size_t(i) % windows.size()];
        const QImage window = drawn(QString::fromLatin1(each.name), i, scale, each.draw);
        const QPoint corner(random.below(std::max(1, screen.width() - window.width())),
            random.below(std::max(1, screen.height() - window.height())));
        for (int ring = 24; ring > 0; --ring) // The shadow.
            painter.fillRect(window.rect().translated(corner).adjusted(-ring, -ring, ring, ring),
                QColor(0, 0, 0, 4));
        painter.drawImage(corner, window);
    }
    painter.end();
    return wallpaper;
}

/// Four full screens of text side by side.
QImage quarters(int look)
{
    constexpr std::array scenes{
        Drawing{"dense-editor", Scenes::denseEditor},
        Drawing{"dense-document", Scenes::denseDocument},
        Drawing{"dense-mixed", Scenes::denseMixed},
        Drawing{"another-mixed", Scenes::denseMixed},
    };
    QImage image(screen, QImage::Format_RGB32);
    image.fill(Qt::black);
    QPainter painter(&image);
    for (int i = 0; i < int(scenes.size()); ++i) {
        const auto& each = scenes.at(size_t(i));
        painter.drawImage(i % 2 * screen.width() / 2, i / 2 * screen.height() / 2,
            drawn(QString::fromLatin1(each.name), look + i, 1, each.draw));
    }
    painter.end();
    return image;
}

} // namespace

QList<ScreenPicture> screenPictures()
{
    return {
        {u"editor"_s, false, drawn(u"editor"_s, 2, 1, Scenes::denseEditor4k)},
        {u"document"_s, false, drawn(u"document"_s, 0, 1, Scenes::denseDocument4k)},
        {u"document at 2x"_s, false, drawn(u"document-2x"_s, 4, 2, Scenes::denseDocumentDoubled)},
        {u"subpixel text"_s, false, drawn(u"subpixel"_s, 3, 1, Scenes::denseDocument4k)},
        {u"four screens"_s, false, quarters(3)},
        {u"dialogs"_s, false, desktop(gradientWallpaper(), dialogs, 24)},
        {u"photographs in windows"_s, true, desktop(gradientWallpaper(), photographs, 6)},
        {u"noisy wallpaper"_s, true, desktop(cameraPicture(u"wallpaper"_s), dialogs, 6)},
        {u"photograph"_s, true, cameraPicture(u"photograph"_s)},
    };
}

} // namespace Lumenote::Bench
