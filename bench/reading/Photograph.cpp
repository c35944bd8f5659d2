#include "Photograph.h"

#include <QColor>
#include <QPainter>
#include <QRadialGradient>

#include <cmath>
#include <vector>

namespace Lumenote::Bench {

namespace {
/// Noise that is smooth between the points of a grid.
class Octave {
public:
    Octave(double cell, Random& random)
        : m_cell(cell)
        , m_values(size_t(side) * side)
    {
        for (double& value : m_values)
            value = random.unit();
    }

    double at(double x, double y) const
    {
        const double gx = x / m_cell;
        const double gy = y / m_cell;
        const int x0 = int(gx);
        const int y0 = int(gy);
        const double fx = smooth(gx - x0);
        const double fy = smooth(gy - y0);
        const double upper = std::lerp(value(x0, y0), value(x0 + 1, y0), fx);
        const double lower = std::lerp(value(x0, y0 + 1), value(x0 + 1, y0 + 1), fx);
        return std::lerp(upper, lower, fy);
    }

private:
    static constexpr int side = 61;

    static double smooth(double t) { return t * t * (3 - 2 * t); }
    double value(int x, int y) const { return m_values[(y % side) * side + x % side]; }

    double m_cell;
    std::vector<double> m_values;
};

void addLights(QImage& image, Random& random)
{
    QPainter painter(&image);
    painter.setPen(Qt::NoPen);
    for (int i = 0; i < 14; ++i) {
        const QPointF centre(random.below(image.width()), random.below(image.height()));
        const double radius = random.between(10, 30) / 300.0 * image.width();
        QRadialGradient gradient(centre, radius);
        const QColor colour = QColor::fromHsv(random.below(360), 110, 220);
        gradient.setColorAt(0, QColor(colour.red(), colour.green(), colour.blue(), 90));
        gradient.setColorAt(1, QColor(colour.red(), colour.green(), colour.blue(), 0));
        painter.setBrush(gradient);
        painter.drawEllipse(centre, radius, radius);
    }
}
} // namespace

QImage photograph(QSize size, Random& random, double lightness)
{
    const std::vector<Octave> octaves{
        {240, random}, {110, random}, {47, random}, {19, random}, {7, random}, {2.6, random}};
    const int hue = random.below(360);
    QImage image(size, QImage::Format_RGB32);
    for (int y = 0; y < size.height(); ++y) {
        auto* pixels = reinterpret_cast<QRgb*>(image.scanLine(y));
        const double sky = 1 - double(y) / size.height();
        for (int x = 0; x < size.width(); ++x) {
            double sum = 0;
            double weight = 0.5;
            for (const Octave& octave : octaves) {
                sum += weight * octave.at(x, y);
                weight *= 0.58;
            }
            const double value =
                std::clamp(lightness * (0.35 + 0.35 * sky + 0.5 * (sum - 0.4)), 0.0, 1.0);
            const double tint = octaves[0].at(y, x);
            pixels[x] = QColor::fromHsvF(float(std::fmod(hue / 360.0 + 0.25 * tint, 1.0)),
                float(0.25 + 0.35 * tint), float(value))
                            .rgb();
        }
    }
    addLights(image, random);
    return image;
}

void addSkyline(QImage& image, Random& random)
{
    constexpr int storey = 9;
    constexpr int windowStep = 7;
    QPainter painter(&image);
    for (int left = 0; left < image.width();) {
        const int width = random.between(24, 70);
        const int top = image.height() / 2 + random.below(image.height() / 3);
        painter.fillRect(
            left, top, width, image.height(), QColor::fromHsv(220, 60, random.between(20, 45)));
        for (int y = top + 4; y < image.height() - storey; y += storey) {
            for (int x = left + 4; x < left + width - windowStep; x += windowStep) {
                if (random.isLuckyIn(4))
                    painter.fillRect(x, y, 4, 5, QColor(0xf0, 0xd0, 0x80, random.between(90, 230)));
            }
        }
        left += width + random.below(6);
    }
}

} // namespace Lumenote::Bench
