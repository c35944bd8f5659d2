#include "Photograph.h"
#include "Scenes.h"
#include "Widgets.h"

namespace Lumenote::Bench::Scenes {

using namespace Qt::StringLiterals;
using namespace Widgets;

namespace {
void beginPhotograph(Page& page, QSizeF size, double lightness)
{
    page.canvas.begin(size, Qt::black);
    page.canvas.painter().drawImage(
        page.canvas.area(), photograph(size.toSize(), page.random, lightness));
}

/// Bright text with a soft dark shadow.
void writeShadowed(Page& page, QPointF baseline, const QString& text, const QFont& font)
{
    for (const QPointF offset : {QPointF(0, 1), QPointF(1, 1), QPointF(1, 0), QPointF(1, 2)})
        page.canvas.shade(baseline + offset, text, font, QColor(0, 0, 0, 110));
    page.canvas.write(baseline, text, font, Qt::white);
}
} // namespace

void captionBar(Page& page)
{
    const double u = page.unit();
    beginPhotograph(page, {48 * u, 28 * u}, 1.0);
    const QRectF bar(0, 22 * u, 48 * u, 6 * u);
    page.canvas.painter().fillRect(bar, QColor(0, 0, 0, 165));
    page.canvas.write(
        {1.5 * u, 24.6 * u}, page.texts.one("captions"), page.look.ui(1.4, QFont::Bold), Qt::white);
    page.canvas.write({1.5 * u, 26.8 * u}, page.texts.one("captions"), page.look.ui(0.95),
        QColor(0xdd, 0xdd, 0xdd));
    const QString date = page.texts.longDate();
    const QRectF chip(u, u, Canvas::width(date, page.look.ui(0.9)) + 1.4 * u, 2 * u);
    page.canvas.painter().fillRect(chip, QColor(255, 255, 255, 200));
    page.canvas.writeIn(chip, Qt::AlignHCenter, date, page.look.ui(0.9), QColor(0x22, 0x22, 0x22));
}

void photoTitle(Page& page)
{
    const double u = page.unit();
    beginPhotograph(page, {52 * u, 30 * u}, 0.75);
    const QString title = page.texts.one("captions");
    QFont large = page.look.ui(1, QFont::Bold);
    large.setPixelSize(
        int(std::min(44.0, large.pixelSize() * 44 * u / Canvas::width(title, large))));
    writeShadowed(page, {3 * u, 12 * u}, title, large);
    writeShadowed(
        page, {3 * u, 15.4 * u}, page.texts.one("captions"), page.look.ui(1.3, QFont::DemiBold));
    const QString button = page.texts.one("buttons");
    box(page, {3 * u, 18 * u, buttonWidth(page, button), rowHeight(page)}, Qt::white, 4);
    page.canvas.writeIn({3 * u, 18 * u, buttonWidth(page, button), rowHeight(page)},
        Qt::AlignHCenter, button, page.look.ui(1, QFont::Medium), QColor(0x21, 0x21, 0x21));
}

void gradientCard(Page& page)
{
    const double u = page.unit();
    page.canvas.begin({42 * u, 22 * u}, Qt::black);
    QLinearGradient gradient(0, 0, 42 * u, 22 * u);
    const int hue = page.random.below(360);
    gradient.setColorAt(0, QColor::fromHsv(hue, 200, 150));
    gradient.setColorAt(1, QColor::fromHsv((hue + 70) % 360, 180, 190));
    page.canvas.painter().fillRect(page.canvas.area(), gradient);
    const TextPair card = page.texts.pair("cards");
    page.canvas.write({2 * u, 5 * u}, card.first, page.look.ui(2.2, QFont::Bold), Qt::white);
    paragraph(page, {2 * u, 8.4 * u}, 37 * u, card.second, page.look.ui(1.1), Qt::white);
    page.canvas.write(
        {2 * u, 14 * u}, page.texts.price(), page.look.ui(2, QFont::Light), Qt::white);
    page.canvas.write({2 * u, 18.4 * u}, page.texts.one("sentences").section(u' ', 0, 4),
        page.look.ui(1), QColor(0xee, 0xee, 0xee));
}

void playerOverlay(Page& page)
{
    const double u = page.unit();
    beginPhotograph(page, {50 * u, 28 * u}, 0.5);
    QLinearGradient shade(0, 18 * u, 0, 28 * u);
    shade.setColorAt(0, QColor(0, 0, 0, 0));
    shade.setColorAt(1, QColor(0, 0, 0, 210));
    page.canvas.painter().fillRect(QRectF(0, 18 * u, 50 * u, 10 * u), shade);
    writeShadowed(
        page, {1.5 * u, 2.6 * u}, page.texts.one("captions"), page.look.ui(1.15, QFont::DemiBold));
    progressBar(page, {1.5 * u, 24.2 * u, 47 * u, 0.35 * u}, 0.37);
    const QString left = page.texts.time();
    page.canvas.write(
        {4 * u, 26.8 * u}, left + u" / "_s + page.texts.time(), page.look.ui(0.95), Qt::white);
    const QPointF corner(1.6 * u, 25.8 * u);
    page.canvas.painter().setPen(Qt::NoPen);
    page.canvas.painter().setBrush(Qt::white);
    page.canvas.painter().drawPolygon(
        QPolygonF{corner, corner + QPointF(u, 0.6 * u), corner + QPointF(0, 1.2 * u)});
    const QString quality = u"1080p"_s;
    writeShadowed(page, {44 * u, 26.8 * u}, quality, page.look.ui(0.95, QFont::Bold));
}

void photoGrid(Page& page)
{
    const double u = page.unit();
    const QSizeF cell(19 * u, 13 * u);
    page.canvas.begin({3 * cell.width(), 2 * (cell.height() + 2.4 * u)}, page.look.theme.window);
    for (int i = 0; i < 6; ++i) {
        const QPointF slot = gridCell(i, 3);
        const QPointF corner(
            slot.x() * cell.width(), std::round(slot.y() * (cell.height() + 2.4 * u)));
        const QRectF picture(corner + QPointF(4, 4), cell - QSizeF(8, 8));
        page.canvas.painter().drawImage(
            picture, photograph(picture.size().toSize(), page.random, 0.45 + 0.1 * i));
        writeShadowed(page, picture.bottomLeft() + QPointF(0.7 * u, -0.8 * u),
            page.texts.one("folders"), page.look.ui(0.95, QFont::DemiBold));
        page.canvas.write({corner.x() + 0.6 * u, corner.y() + cell.height() + 1.3 * u},
            u"IMG_%1.jpg"_s.arg(page.random.between(1000, 9999)), page.look.ui(0.9),
            page.look.theme.secondary);
    }
}

void skyline(Page& page)
{
    const double u = page.unit();
    const QSizeF size(54 * u, 30 * u);
    page.canvas.begin(size, Qt::black);
    QImage city = photograph(size.toSize(), page.random, 0.55);
    addSkyline(city, page.random);
    page.canvas.painter().drawImage(page.canvas.area(), city);
    writeShadowed(page, {2 * u, 4 * u}, page.texts.one("captions"), page.look.ui(1.8, QFont::Bold));
    writeShadowed(page, {2 * u, 6.6 * u}, page.texts.one("captions"), page.look.ui(1.1));
    writeShadowed(
        page, {2 * u, 24 * u}, page.texts.one("captions"), page.look.ui(1.5, QFont::DemiBold));
    writeShadowed(page, {2 * u, 26.4 * u}, page.texts.longDate(), page.look.ui(1.1));
}

void brightPhoto(Page& page)
{
    const double u = page.unit();
    beginPhotograph(page, {46 * u, 24 * u}, 1.45);
    const QColor ink(0x14, 0x14, 0x1c);
    page.canvas.write(
        {2 * u, 5 * u}, page.texts.one("captions"), page.look.serif(2.2, QFont::Bold), ink);
    page.canvas.write({2 * u, 8 * u}, page.texts.one("captions"), page.look.ui(1.1), ink);
    page.canvas.write({2 * u, 10.4 * u}, page.texts.price(), page.look.ui(1.3, QFont::Bold), ink);
    page.canvas.write({2 * u, 22 * u}, page.texts.one("captions"), page.look.ui(1), ink);
}

void desktop(Page& page)
{
    const double u = page.unit();
    beginPhotograph(page, {60 * u, 36 * u}, 0.6);
    page.canvas.painter().fillRect(QRectF(0, 0, 60 * u, 2 * u), QColor(0, 0, 0, 190));
    const QRectF bar(0, 0, 60 * u, 2 * u);
    page.canvas.writeIn(bar.adjusted(u, 0, 0, 0), Qt::AlignLeft, page.texts.one("actions"),
        page.look.ui(0.95, QFont::Bold), Qt::white);
    page.canvas.writeIn(bar, Qt::AlignHCenter, page.texts.longDate() + u' ' + page.texts.time(),
        page.look.ui(0.95, QFont::Bold), Qt::white);
    page.canvas.writeIn(bar.adjusted(0, 0, -u, 0), Qt::AlignRight, page.texts.percent(),
        page.look.ui(0.95), Qt::white);
    for (int i = 0; i < 6; ++i) {
        const QPointF slot = gridCell(i, 3).transposed();
        const QPointF corner((1 + slot.x() * 14) * u, (4 + slot.y() * 9) * u);
        icon(page, {corner.x() + 4 * u, corner.y(), 4 * u, 4 * u}, i, Qt::white);
        const QString name = page.texts.one(i % 2 == 0 ? "folders" : "files");
        const QFont font = page.look.ui(0.95, QFont::Medium);
        writeShadowed(page,
            {std::round(corner.x() + 6 * u - Canvas::width(name, font) / 2), corner.y() + 6.2 * u},
            name, font);
    }
    const QRectF window(32 * u, 10 * u, 26 * u, 18 * u);
    frame(page, window, page.look.theme.surface, 6);
    page.canvas.write({window.left() + 2 * u, window.top() + 3 * u}, page.texts.one("headings"),
        page.look.ui(1.3, QFont::Bold), page.look.theme.text);
    paragraph(page, {window.left() + 2 * u, window.top() + 6 * u}, window.width() - 4 * u,
        page.texts.one("sentences") + u' ' + page.texts.one("sentences"), page.look.ui(),
        page.look.theme.text);
    const QString text = page.texts.one("buttons");
    button(page,
        {window.left() + 2 * u, window.bottom() - 3.4 * u, buttonWidth(page, text),
            rowHeight(page)},
        text, ButtonStyle::accent);
}

} // namespace Lumenote::Bench::Scenes
