#include "Platform/TextLayout/Slivers.h"

#include "Platform/TextLayout/Pixels.h"

#include <algorithm>

namespace Platform {

namespace {

constexpr int smallestSliver = 8; ///< Pixels of ink.

/// How much of one side of a component is open: there the ink ends and the colour goes on.
class Side {
public:
    Side(const QImage& image, const InkImage& ink, int peak)
        : m_image(image)
        , m_ink(ink)
        , m_peak(peak)
    {
    }

    /// Compares a pixel with its neighbour on this side, if that one is outside.
    void look(QPoint inside, QPoint outside)
    {
        if (!m_ink.rect().contains(outside) || inkAt(inside) < strongInk * m_peak
            || inkAt(outside) * 2 >= inkAt(inside))
            return;
        ++m_strong;
        const int distance = channelDistance(
            pixelRow(m_image, inside.y())[inside.x()], pixelRow(m_image, outside.y())[outside.x()]);
        m_open += inkAt(outside) <= weakInk * m_peak && distance <= alike * m_peak ? 1 : 0;
    }

    bool isOpen() const { return m_strong >= shortestSide && m_open >= openShare * m_strong; }

private:
    static constexpr int shortestSide = 5;
    static constexpr double openShare = 0.6;
    // A letter's ink is its distance in colour from what is around it: it can't fall from strong to
    // weak with less change of colour than the difference of both.
    static constexpr double strongInk = 0.5;
    static constexpr double weakInk = 0.15;
    static constexpr double alike = 0.3;

    int inkAt(QPoint point) const { return m_ink.row(point.y())[point.x()]; }

    const QImage& m_image;
    const InkImage& m_ink;
    int m_peak;
    int m_strong = 0;
    int m_open = 0;
};

/// Whether a component is open on one of its long sides. The stems and arms of very large letters,
/// whose other strokes are surfaces, are open at their ends.
bool isSliver(const QImage& image, const InkImage& ink, std::span<const InkRun> runs,
    const Component& component)
{
    Side before(image, ink, component.peak);
    Side after(image, ink, component.peak);
    const bool isUpright = component.box.height() >= component.box.width();
    for (const InkRun& run : runs) {
        if (isUpright) {
            before.look({run.left, run.y}, {run.left - 1, run.y});
            after.look({run.right - 1, run.y}, {run.right, run.y});
            continue;
        }
        for (int x = run.left; x < run.right; ++x) {
            before.look({x, run.y}, {x, run.y - 1});
            after.look({x, run.y}, {x, run.y + 1});
        }
    }
    return before.isOpen() || after.isOpen();
}

/// Whether what stands on the left of a thin component and what stands on its right are surfaces of
/// unlike colours: then it is the edge between them.
bool isEdge(const QImage& image, const InkImage& ink, std::span<const InkRun> runs, const int peak)
{
    constexpr int thickestEdge = 3;
    constexpr double unlike = 0.5;
    constexpr double edgeShare = 0.6;
    const auto isUnlikeAt = [&](const InkRun& run, int distance) {
        const Pixel* row = pixelRow(image, run.y);
        return channelDistance(row[run.left - distance], row[run.right + distance - 1])
            >= unlike * peak;
    };
    // Close by there may be the soft edge of a letter's stroke.
    const auto edges = std::count_if(runs.begin(), runs.end(), [&](const InkRun& run) {
        return run.right - run.left <= thickestEdge && run.left > 1 && run.right + 1 < ink.width()
            && isUnlikeAt(run, 1) && isUnlikeAt(run, 2);
    });
    return double(edges) >= edgeShare * double(runs.size());
}

} // namespace

void dropSlivers(const QImage& image, Components& components, InkImage& ink)
{
    std::erase_if(components.items, [&](const Component& component) {
        const std::span<const InkRun> runs = components.runsOf(component);
        const bool isUpright = component.box.width() * 2 <= component.box.height();
        const bool isRim = component.area >= smallestSliver
            && (isSliver(image, ink, runs, component)
                || (isUpright && isEdge(image, ink, runs, component.peak)));
        if (!isRim)
            return false;
        for (const InkRun& run : runs)
            std::fill(ink.row(run.y) + run.left, ink.row(run.y) + run.right, std::uint8_t(0));
        return true;
    });
}

} // namespace Platform
