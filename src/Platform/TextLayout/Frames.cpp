#include "Platform/TextLayout/Frames.h"

#include "Platform/TextLayout/Boxes.h"

#include <algorithm>
#include <cstdlib>

namespace Platform {

namespace {

constexpr int leastFrame = 10;
/// How much taller than what stands between them the sides of a frame are; brackets are less.
constexpr double frameShare = 2.4;
constexpr int lowestSide = 16;
constexpr int widestFrame = 12; ///< In heights.

/// Whether the ink of @p component runs along the sides of its box, as no letter's does.
bool isOutline(const Components& components, const Component& component)
{
    constexpr int thickest = 2; // Pixels.
    constexpr double leastShare = 0.85;
    const QRect inner = component.box.adjusted(thickest, thickest, -thickest, -thickest);
    int inside = 0;
    for (const InkRun& run : components.runsOf(component))
        if (run.y >= inner.y() && run.y < bottomOf(inner))
            inside +=
                std::max(0, std::min(run.right, rightOf(inner)) - std::max(run.left, inner.x()));
    return inside <= (1 - leastShare) * component.area;
}

/// Which components are a frame in one piece: others stand inside it.
std::vector<bool> findWholeFrames(const Components& components, const std::vector<int>& letters)
{
    BoxIndex index;
    for (const int letter : letters)
        index.add(letter, components.items[std::size_t(letter)].box);
    std::vector<bool> isFrame(components.items.size());
    for (const int letter : letters) {
        const Component& component = components.items[std::size_t(letter)];
        const QRect& box = component.box;
        if (std::min(box.width(), box.height()) < leastFrame)
            continue;
        std::vector<int> inside;
        index.visit(box, [&](int other) {
            if (other != letter
                && box.contains(components.items[std::size_t(other)].box, /*proper=*/true))
                inside.push_back(other);
        });
        std::sort(inside.begin(), inside.end());
        inside.erase(std::unique(inside.begin(), inside.end()), inside.end());
        isFrame[std::size_t(letter)] =
            inside.size() >= 2 || (inside.size() == 1 && isOutline(components, component));
    }
    return isFrame;
}

bool isUpright(const QRect& box)
{
    return box.height() >= lowestSide && box.width() * 2 <= box.height();
}

/// Whether what stands inside is low enough beside the frame's sides, and in their middle, and has
/// letters: a comma between two tall ones ("l, l") is not, and the sign in "] = {" hasn't.
bool isLabelBetween(const QRect& side, const QRect& inside, int tallest)
{
    const int margin = side.height() / 5;
    return inside.height() * frameShare <= side.height() && tallest * 5 >= side.height()
        && inside.y() >= side.y() + margin && bottomOf(inside) <= bottomOf(side) - margin;
}

/// Marks the two sides of frames whose upper and lower edge are surfaces or rules, such as those of
/// a button: a pair as tall as each other, around what is much lower.
void findFrameSides(
    const Components& components, const std::vector<int>& marks, std::vector<bool>& isFrame)
{
    BoxIndex index;
    for (const int mark : marks)
        index.add(mark, components.items[std::size_t(mark)].box);
    for (const int mark : marks) {
        const QRect& left = components.items[std::size_t(mark)].box;
        if (!isUpright(left))
            continue;
        QRect right;
        int mate = -1;
        const auto visitRight = [&](int end, auto visitor) {
            index.visit({rightOf(left), left.y(), end - rightOf(left), left.height()}, [&](int at) {
                const QRect& box = components.items[std::size_t(at)].box;
                if (box.x() >= rightOf(left) && rightOf(box) <= end
                    && verticalOverlap(box, left) > 0)
                    visitor(at, box);
            });
        };
        visitRight(rightOf(left) + widestFrame * left.height(), [&](int at, const QRect& box) {
            const bool isAlike = isUpright(box) && std::abs(box.y() - left.y()) <= 1
                && std::abs(box.height() - left.height()) <= 1;
            if (isAlike && (mate < 0 || box.x() < right.x())) {
                mate = at;
                right = box;
            }
        });
        if (mate < 0)
            continue;
        QRect inside;
        int tallest = 0;
        visitRight(right.x(), [&](int, const QRect& box) {
            inside |= box;
            tallest = std::max(tallest, box.height());
        });
        if (isLabelBetween(left, inside, tallest))
            isFrame[std::size_t(mark)] = isFrame[std::size_t(mate)] = true;
    }
}

} // namespace

std::vector<bool> findFrames(
    const Components& components, const std::vector<int>& letters, const std::vector<int>& marks)
{
    std::vector<bool> isFrame = findWholeFrames(components, letters);
    std::vector<int> others = marks;
    std::erase_if(others, [&](int mark) { return isFrame[std::size_t(mark)]; });
    findFrameSides(components, others, isFrame);
    return isFrame;
}

} // namespace Platform
