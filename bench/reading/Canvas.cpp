#include "Canvas.h"

#include <QFontMetricsF>
#include <QHash>
#include <QRawFont>

#include <algorithm>
#include <array>
#include <cmath>

namespace Lumenote::Bench {

using namespace Qt::StringLiterals;

namespace {
/// Fonts that turn "!=" into another sign; the expected text would be a matter of taste.
bool joinsSigns(const QFont& font)
{
    return font.family() == "Fira Code"_L1 || font.family() == "JetBrains Mono"_L1;
}

void drawText(QPainter& painter, QPointF baseline, const QString& text, const QFont& font)
{
    painter.setFont(font);
    if (!joinsSigns(font)) {
        painter.drawText(baseline, text);
        return;
    }
    const double advance = Canvas::width(u"m"_s, font);
    for (qsizetype i = 0; i < text.size(); ++i)
        painter.drawText(baseline + QPointF(double(i) * advance, 0), text.mid(i, 1));
}

bool hasGlyphs(const QString& text, const QFont& font)
{
    static QHash<QString, QRawFont> rawFonts;
    const QString key = font.key();
    if (!rawFonts.contains(key))
        rawFonts.insert(key, QRawFont::fromFont(font));
    const QList<uint> characters = text.toUcs4();
    return std::ranges::all_of(
        characters, [&](uint character) { return rawFonts[key].supportsCharacter(character); });
}

/// The filter that spreads the light of a stripe over its neighbours, against hard fringes.
constexpr std::array stripeFilter{1, 2, 3, 2, 1};
constexpr int stripeFilterSum = 9;

int stripeCoverage(const uchar* mask, int width, int stripe)
{
    int sum = 0;
    for (int tap = 0; tap < int(stripeFilter.size()); ++tap) {
        const int at = stripe + tap - int(stripeFilter.size()) / 2;
        if (at >= 0 && at < width)
            sum += stripeFilter[tap] * mask[at];
    }
    return sum / stripeFilterSum;
}

int mixed(int back, int front, int coverage)
{
    return (back * (255 - coverage) + front * coverage) / 255;
}
} // namespace

Canvas::Canvas(double scale, Rendering rendering)
    : m_scale(scale)
    , m_rendering(rendering)
{
}

void Canvas::begin(QSizeF size, const QColor& background)
{
    const QSize pixels = (size * m_scale).toSize();
    m_size = size;
    m_image = QImage(pixels, QImage::Format_RGB32);
    if (m_image.isNull())
        qFatal("No memory for a picture of %d x %d", pixels.width(), pixels.height());
    m_image.fill(background);
    m_painter = std::make_unique<QPainter>(&m_image);
    m_painter->setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
    m_painter->scale(m_scale, m_scale);
}

QImage Canvas::takeImage()
{
    m_painter.reset();
    return std::move(m_image);
}

double Canvas::width(const QString& text, const QFont& font)
{
    return QFontMetricsF(font).horizontalAdvance(text);
}

double Canvas::centredBaseline(const QRectF& box, const QFont& font)
{
    return std::round(box.center().y() + QFontMetricsF(font).capHeight() / 2);
}

void Canvas::note(QPointF baseline, const QString& text, const QFont& font)
{
    if (!hasGlyphs(text, font))
        m_faults.append(font.family() + u" has not all glyphs of "_s + text);
    const QRectF logical = QFontMetricsF(font).tightBoundingRect(text).translated(baseline);
    if (!area().contains(logical))
        m_faults.append(text + u" leaves the picture"_s);
    const QRectF rect(logical.topLeft() * m_scale, logical.size() * m_scale);
    for (const Piece& other : std::as_const(m_pieces)) {
        if (other.rect.adjusted(1, 1, -1, -1).intersects(rect))
            m_faults.append(text + u" overlaps "_s + other.text);
    }
    m_pieces.append({text.simplified(), rect});
}

void Canvas::paint(QPointF baseline, const QString& text, const QFont& font, const QColor& colour)
{
    if (m_rendering == Rendering::subpixel) {
        paintSubpixel(baseline, text, font, colour);
        return;
    }
    m_painter->setPen(colour);
    drawText(*m_painter, baseline, text, font);
}

void Canvas::paintSubpixel(
    QPointF baseline, const QString& text, const QFont& font, const QColor& colour)
{
    constexpr int margin = 3;
    const QFontMetricsF metrics(font);
    const QRectF logical(baseline.x(), baseline.y() - metrics.ascent(),
        metrics.horizontalAdvance(text), metrics.height());
    const QRect box = QRectF(logical.topLeft() * m_scale, logical.size() * m_scale)
                          .toAlignedRect()
                          .adjusted(-margin, -margin, margin, margin)
                          .intersected(m_image.rect());

    QImage mask(box.width() * 3, box.height(), QImage::Format_RGB32);
    mask.fill(Qt::black);
    QPainter maskPainter(&mask);
    maskPainter.scale(3, 1);
    maskPainter.translate(-box.topLeft());
    maskPainter.scale(m_scale, m_scale);
    maskPainter.setPen(Qt::white);
    drawText(maskPainter, baseline, text, font);
    maskPainter.end();
    mask.convertTo(QImage::Format_Grayscale8);

    QImage patch = m_image.copy(box);
    for (int y = 0; y < patch.height(); ++y) {
        const uchar* stripes = mask.constScanLine(y);
        auto* pixels = reinterpret_cast<QRgb*>(patch.scanLine(y));
        for (int x = 0; x < patch.width(); ++x) {
            const auto coverage = [&](int channel) {
                return stripeCoverage(stripes, mask.width(), 3 * x + channel);
            };
            pixels[x] = qRgb(mixed(qRed(pixels[x]), colour.red(), coverage(0)),
                mixed(qGreen(pixels[x]), colour.green(), coverage(1)),
                mixed(qBlue(pixels[x]), colour.blue(), coverage(2)));
        }
    }
    m_painter->save();
    m_painter->resetTransform();
    m_painter->drawImage(box.topLeft(), patch);
    m_painter->restore();
}

double Canvas::write(QPointF baseline, const QString& text, const QFont& font, const QColor& colour)
{
    note(baseline, text, font);
    paint(baseline, text, font, colour);
    return width(text, font);
}

double Canvas::writeRuns(QPointF baseline, const QList<Run>& runs, const QFont& font)
{
    QString text;
    for (const Run& run : runs) {
        paint(baseline + QPointF(width(text, font), 0), run.text, font, run.colour);
        text += run.text;
    }
    note(baseline, text, font);
    return width(text, font);
}

void Canvas::writeIn(const QRectF& box, Qt::Alignment alignment, const QString& text,
    const QFont& font, const QColor& colour)
{
    const double textWidth = width(text, font);
    double left = box.left();
    if (alignment & Qt::AlignRight)
        left = box.right() - textWidth;
    else if (alignment & Qt::AlignHCenter)
        left = std::round(box.center().x() - textWidth / 2);
    if (left < box.left() || left + textWidth > box.right() + 1)
        m_faults.append(text + u" is too wide for its box"_s);
    write({left, centredBaseline(box, font)}, text, font, colour);
}

void Canvas::shade(QPointF baseline, const QString& text, const QFont& font, const QColor& colour)
{
    m_painter->setPen(colour);
    drawText(*m_painter, baseline, text, font);
}

QStringList wrapped(const QString& text, const QFont& font, double width)
{
    QStringList lines;
    QString line;
    for (const QString& word : text.split(u' ')) {
        const QString longer = line.isEmpty() ? word : line + u' ' + word;
        if (!line.isEmpty() && Canvas::width(longer, font) > width) {
            lines.append(line);
            line = word;
        } else {
            line = longer;
        }
    }
    if (!line.isEmpty())
        lines.append(line);
    return lines;
}

} // namespace Lumenote::Bench
