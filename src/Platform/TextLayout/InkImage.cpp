#include "Platform/TextLayout/InkImage.h"

#include "Platform/TextLayout/Pixels.h"

#include <algorithm>
#include <cstdlib>

namespace Platform {

namespace {

/// A run this long of neighbours that differ by no more than this in any channel is a surface.
/// Letters of up to 34 px have no such runs; the vertical one is longer, for the stems.
constexpr int surfaceRunAcross = 28;
constexpr int surfaceRunDown = 56;
constexpr int surfaceStep = 3;

/// A surface this thin between two like ones is a rule or an underline: nothing stands on it.
constexpr int thickestRule = 3;
constexpr int likeColours = 24;
/// A rule goes on beyond a letter that crosses it: pieces this short, no further apart than this.
constexpr int shortestRulePiece = 4;
constexpr int widestRuleBreak = 16;

/// A narrow strip, such as the gutter with the line numbers, has no longer runs than these. They
/// count where no surface is near, if there are as many of them below each other.
constexpr int narrowRunAcross = 12;
constexpr int narrowRunDown = 3;
constexpr int farSurface = 64;

/// Between two unlike surfaces, no more than this is the edge between them.
constexpr int widestEdge = 10;

constexpr std::uint8_t openPixel = 0;
constexpr std::uint8_t surfacePixel = 1;
constexpr std::uint8_t rulePixel = 2;
constexpr std::uint8_t narrowPixel = 3;

/// Sets even[x] where a[x] and b[x] differ by at most surfaceStep in each channel.
void markEven(const Pixel* a, const Pixel* b, int count, std::uint8_t* even)
{
    for (int x = 0; x < count; ++x)
        even[x] = std::uint8_t(channelDistance(a[x], b[x]) <= surfaceStep);
}

struct Span {
    int left = 0;
    int right = 0;
};

/// Marks the surfaces and rules that run across the picture, row by row.
class AcrossSurfaces {
public:
    explicit AcrossSurfaces(const QImage& image)
        : m_image(image)
        , m_even(std::size_t(image.width()))
    {
    }

    void markRow(int y, std::uint8_t* marks)
    {
        const Pixel* row = pixelRow(m_image, y);
        markEven(row + 1, row, m_image.width() - 1, m_even.data() + 1);
        m_pieces.clear();
        m_rules.clear();
        int start = 0;
        for (int x = 1; x <= m_image.width(); ++x) {
            if (x < m_image.width() && m_even[std::size_t(x)])
                continue;
            if (x - start >= surfaceRunAcross) {
                markRun(y, {start, x}, marks);
            } else if (x - start >= shortestRulePiece) {
                if (x - start >= narrowRunAcross)
                    std::fill(marks + start, marks + x, narrowPixel);
                m_pieces.push_back({start, x});
            }
            start = x;
        }
        if (!m_rules.empty())
            continueRules(y, marks);
    }

private:
    void markRun(int y, Span run, std::uint8_t* marks)
    {
        if (isRule(y, run)) {
            std::fill(marks + run.left, marks + run.right, rulePixel);
            m_rules.push_back(run);
        } else {
            std::fill(marks + run.left, marks + run.right, surfacePixel);
        }
    }

    /// Whether @p run is thin in more places than it goes on above or below. Where letters touch
    /// it, neither can be seen.
    bool isRule(int y, Span run) const
    {
        constexpr int samples = 16;
        constexpr int fewestThin = 4;
        const int length = run.right - run.left;
        int thin = 0;
        int open = 0;
        for (int sample = 0; sample < samples; ++sample) {
            const int x = run.left + length * (2 * sample + 1) / (2 * samples);
            thin += isThinAt(x, y);
            open += goesOnAt(x, y, -1) || goesOnAt(x, y, 1);
        }
        return thin > open && thin >= fewestThin;
    }

    bool goesOnAt(int x, int y, int step) const
    {
        const Pixel colour = pixelRow(m_image, y)[x];
        for (int row = y + step; std::abs(row - y) <= thickestRule; row += step)
            if (row >= 0 && row < m_image.height()
                && channelDistance(pixelRow(m_image, row)[x], colour) > surfaceStep)
                return false;
        return true;
    }

    /// Whether like colours lie closely above and below, and a clearly different one here. The rows
    /// between may differ: the upper edge of an underline is often a mixture.
    bool isThinAt(int x, int y) const
    {
        const auto at = [&](int row) { return pixelRow(m_image, row)[x]; };
        const Pixel colour = at(y);
        for (int above = y - 1; above >= std::max(0, y - thickestRule); --above) {
            const int step = channelDistance(at(above), colour);
            if (step <= surfaceStep)
                continue;
            const int last = std::min(m_image.height() - 1, above + thickestRule + 1);
            for (int below = y + 1; below <= last; ++below) {
                const int unlikeness = channelDistance(at(above), at(below));
                const int contrast = std::min(step, channelDistance(at(below), colour));
                if (unlikeness <= likeColours && contrast > std::max(surfaceStep, 2 * unlikeness))
                    return true;
            }
        }
        return false;
    }

    /// Marks what is left of a rule that letters cross.
    void continueRules(int y, std::uint8_t* marks) const
    {
        const Pixel* row = pixelRow(m_image, y);
        for (const Span& piece : m_pieces) {
            const bool continues = std::any_of(m_rules.begin(), m_rules.end(), [&](Span rule) {
                return piece.left - rule.right <= widestRuleBreak
                    && rule.left - piece.right <= widestRuleBreak
                    && channelDistance(row[piece.left], row[rule.left]) <= 2 * surfaceStep;
            });
            if (continues && isRule(y, piece))
                std::fill(marks + piece.left, marks + piece.right, rulePixel);
        }
    }

    const QImage& m_image;
    std::vector<std::uint8_t> m_even;
    std::vector<Span> m_pieces;
    std::vector<Span> m_rules;
};

/// Marks surfaces that run down the picture, row by row: the length of the run that each
/// column is in is all that needs to be kept.
class DownwardSurfaces {
public:
    explicit DownwardSurfaces(int width)
        : m_even(std::size_t(width))
        , m_length(std::size_t(width), 1)
    {
    }

    void addRow(const Pixel* above, const Pixel* row, InkImage& marks, int y)
    {
        const int width = marks.width();
        markEven(row, above, width, m_even.data());
        std::uint8_t longest = 0;
        for (int x = 0; x < width; ++x) {
            const int length = m_even[std::size_t(x)] ? m_length[std::size_t(x)] + 1 : 1;
            // One past the threshold stands for all longer runs.
            m_length[std::size_t(x)] = std::uint8_t(std::min(length, surfaceRunDown + 1));
            longest = std::max(longest, m_length[std::size_t(x)]);
        }
        if (longest >= surfaceRunDown)
            mark(marks, y);
    }

private:
    void mark(InkImage& marks, int y) const
    {
        for (int x = 0; x < marks.width(); ++x) {
            const int length = m_length[std::size_t(x)];
            if (length < surfaceRunDown)
                continue;
            const int first = length > surfaceRunDown ? y : y - surfaceRunDown + 1;
            for (int row = first; row <= y; ++row)
                if (marks.row(row)[x] != rulePixel)
                    marks.row(row)[x] = surfacePixel;
        }
    }

    std::vector<std::uint8_t> m_even;
    std::vector<std::uint8_t> m_length;
};

/// The ink of a pixel between two surfaces, of which @p nearer is the nearer one. What is a
/// mixture of both is the edge between them, such as a rounded corner, and no ink.
int inkBetweenSurfaces(Pixel pixel, Pixel nearer, Pixel farther)
{
    if (channelDistance(nearer, farther) <= likeColours)
        return inkBetween(pixel, nearer);
    int along = 0;
    int square = 0;
    for (const int shift : {0, 8, 16}) {
        const int span = channelOf(farther, shift) - channelOf(nearer, shift);
        along += (channelOf(pixel, shift) - channelOf(nearer, shift)) * span;
        square += span * span;
    }
    const double share = std::clamp(double(along) / square, 0.0, 1.0);
    double distance = 0;
    for (const int shift : {0, 8, 16}) {
        const int from = channelOf(nearer, shift);
        const double mixed = from + share * (channelOf(farther, shift) - from);
        distance += std::abs(channelOf(pixel, shift) - mixed);
    }
    return int(distance / 3);
}

/// Turns marks into ink, in place: the background of an open pixel is the nearest surface
/// above or below it. A column is filled from one surface pixel up to the one before it.
class InkFiller {
public:
    InkFiller(const QImage& image, InkImage& marks)
        : m_image(image)
        , m_marks(marks)
        , m_lastSurface(std::size_t(image.width()), -1)
    {
    }

    /// Rows from the first to one beyond the last.
    void addRow(int y)
    {
        std::uint8_t* marks = y < m_image.height() ? m_marks.row(y) : nullptr;
        for (int x = 0; x < m_image.width(); ++x) {
            if (marks && marks[x] != surfacePixel)
                continue;
            if (y - m_lastSurface[std::size_t(x)] > 1)
                fillGap(x, m_lastSurface[std::size_t(x)], y);
            if (marks)
                marks[x] = 0;
            m_lastSurface[std::size_t(x)] = y;
        }
    }

private:
    /// A column without a surface for long is cut at its narrow ones.
    void fillGap(int x, int above, int below)
    {
        if (above >= 0 && below < m_image.height() && below - above <= farSurface) {
            fillBetween(x, above, below);
            return;
        }
        int last = above;
        for (int y = above + 1; y < below; ++y) {
            const int end = endOfNarrowSurface(x, y, below);
            if (end - y < narrowRunDown)
                continue;
            fillBetween(x, last, y);
            for (; y < end; ++y)
                m_marks.row(y)[x] = 0;
            last = --y;
        }
        fillBetween(x, last, below);
    }

    int endOfNarrowSurface(int x, int y, int below) const
    {
        int end = y;
        while (end < below && m_marks.row(end)[x] == narrowPixel
            && (end == y
                || channelDistance(pixelRow(m_image, end)[x], pixelRow(m_image, end - 1)[x])
                    <= surfaceStep))
            ++end;
        return end;
    }

    void fillBetween(int x, int above, int below)
    {
        const bool hasAbove = above >= 0;
        const bool hasBelow = below < m_image.height();
        const Pixel upper = pixelRow(m_image, hasAbove ? above : hasBelow ? below : 0)[x];
        const Pixel lower = hasBelow ? pixelRow(m_image, below)[x] : upper;
        for (int y = above + 1; y < below; ++y) {
            std::uint8_t& mark = m_marks.row(y)[x];
            if (mark == rulePixel || (!hasAbove && !hasBelow)) {
                mark = 0;
                continue;
            }
            const Pixel pixel = pixelRow(m_image, y)[x];
            if (below - above > widestEdge)
                mark = std::uint8_t(inkBetween(pixel, y - above <= below - y ? upper : lower));
            else
                mark =
                    std::uint8_t(y - above <= below - y ? inkBetweenSurfaces(pixel, upper, lower)
                                                        : inkBetweenSurfaces(pixel, lower, upper));
        }
    }

    const QImage& m_image;
    InkImage& m_marks;
    std::vector<int> m_lastSurface;
};

} // namespace

InkImage inkOf(const QImage& image, const std::stop_token& stop)
{
    static_assert(openPixel == 0, "a fresh image has no marks");
    InkImage marks(image.width(), image.height());
    AcrossSurfaces across(image);
    DownwardSurfaces downward(image.width());
    for (int y = 0; y < image.height(); ++y) {
        if (stop.stop_requested())
            return {};
        across.markRow(y, marks.row(y));
        if (y > 0)
            downward.addRow(pixelRow(image, y - 1), pixelRow(image, y), marks, y);
    }
    InkFiller filler(image, marks);
    for (int y = 0; y <= image.height(); ++y) {
        if (stop.stop_requested())
            return {};
        filler.addRow(y);
    }
    return marks;
}

} // namespace Platform
