#include "Platform/TextLayout/TextLines.h"

#include "Platform/TextLayout/Boxes.h"
#include "Platform/TextLayout/Cells.h"
#include "Platform/TextLayout/DisjointSets.h"
#include "Platform/TextLayout/Frames.h"
#include "Platform/TextLayout/Quantiles.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <optional>

namespace Platform {

namespace {

constexpr int shortestLetter = 4;
constexpr int tallestLetter = 64;
/// Letters that touch make one component; a whole touching word is at most this wide.
constexpr int widestLetterShare = 24;
constexpr double widestWordGap = 1.05; // Of the letter height.
/// The widest gap inside a line, in heights of the letters beside it.
constexpr double widestGap = 1.5;
/// How much taller than a letter the next one may be: "a" beside "d", and beside "|" or "(".
constexpr double tallestNeighbour = 1.8;
constexpr double tallestBracket = 2.6;
/// A lone shape beside letters that is taller, in heights of theirs, is no letter but an icon.
constexpr double tallestPicture = 1.5;

enum class Shape {
    letter, ///< Starts and carries a line.
    bar, ///< "l", "|", or the side of a frame: joins a line of its height, starts none.
    mark, ///< A dot, comma, quote or dash: joins a line.
    other, ///< A rule, a frame or a picture.
};

/// Whether @p component is a filled box, such as a bullet or a cursor. A small "m" may have ink all
/// over as well, but weak ink between its strokes.
bool isBlock(const Component& component)
{
    const int width = component.box.width();
    const int height = component.box.height();
    return std::min(width, height) >= 8 && width < 3 * height && height < 3 * width
        && component.area >= 0.9 * width * height
        && double(component.ink) >= 0.75 * component.area * component.peak;
}

Shape shapeOf(const Component& component)
{
    const int width = component.box.width();
    const int height = component.box.height();
    if (isBlock(component))
        return Shape::other;
    if (height > tallestLetter || width > widestLetterShare * height)
        return height < shortestLetter && width <= 40 ? Shape::mark : Shape::other;
    if (height < shortestLetter)
        return Shape::mark;
    if (height >= 5 * width && width <= 4)
        return Shape::bar;
    return Shape::letter;
}

bool standSideBySide(const QRect& a, const QRect& b)
{
    const QRect& taller = a.height() >= b.height() ? a : b;
    const int shorter = std::min(a.height(), b.height());
    const bool isNarrow = taller.width() * 2 <= taller.height();
    return verticalOverlap(a, b) * 20 >= 13 * shorter
        && taller.height() <= (isNarrow ? tallestBracket : tallestNeighbour) * shorter;
}

/// Joins each letter with its nearest neighbour to the right.
std::vector<std::vector<int>> chainLetters(
    const Components& components, const std::vector<int>& letters)
{
    BoxIndex index;
    for (const int letter : letters)
        index.add(letter, components.items[std::size_t(letter)].box);

    DisjointSets sets(components.items.size());
    for (const int letter : letters) {
        const QRect box = components.items[std::size_t(letter)].box;
        const int reach = int(std::lround(widestGap * tallestBracket * box.height())) + 1;
        int nearest = -1;
        int nearestGap = reach;
        index.visit({box.x(), box.y(), box.width() + reach, box.height()}, [&](int other) {
            const QRect& next = components.items[std::size_t(other)].box;
            if (other == letter || next.x() < box.x() || !standSideBySide(box, next))
                return;
            const int gap = horizontalGap(box, next);
            if (gap > widestGap * std::max(box.height(), next.height()))
                return;
            if (gap <= 0)
                sets.join(letter, other);
            else if (gap < nearestGap) {
                nearestGap = gap;
                nearest = other;
            }
        });
        if (nearest >= 0)
            sets.join(letter, nearest);
    }

    std::map<int, std::vector<int>> chains;
    for (const int letter : letters)
        chains[sets.find(letter)].push_back(letter);
    std::vector<std::vector<int>> found;
    found.reserve(chains.size());
    for (auto& [root, chain] : chains)
        found.push_back(std::move(chain));
    return found;
}

QRect boxOf(const Components& components, const std::vector<int>& members)
{
    QRect box;
    for (const int member : members)
        box = box.united(components.items[std::size_t(member)].box);
    return box;
}

/// Finds the baseline of @p line, and the height from ascender to descender from what of both the
/// line shows. The shares are those of common screen fonts: x-height 0.55, capitals 0.75.
void measureLetters(const Components& components, TextLine& line)
{
    std::vector<int> heights;
    std::vector<int> bottoms;
    int top = bottomOf(line.box);
    int bottom = line.box.y();
    for (const int member : line.components) {
        const Component& component = components.items[std::size_t(member)];
        if (shapeOf(component) != Shape::letter)
            continue;
        const QRect& box = component.box;
        heights.push_back(box.height());
        bottoms.push_back(bottomOf(box));
        top = std::min(top, box.y());
        bottom = std::max(bottom, bottomOf(box));
    }
    line.letterHeight = line.box.height();
    line.baseline = bottomOf(line.box);
    if (heights.empty())
        return;
    const int typical = medianOf(heights);
    line.baseline = medianOf(bottoms);
    const bool hasAscender = line.baseline - top > 1.2 * typical;
    const bool hasDescender = bottom - line.baseline > 0.15 * typical;
    line.letterHeight = bottom - top;
    if (!hasDescender)
        line.letterHeight /= hasAscender ? 0.78 : 0.68;
    else if (!hasAscender)
        line.letterHeight /= 0.85;
}

TextLine lineOf(const Components& components, std::vector<int> members)
{
    TextLine line;
    line.box = boxOf(components, members);
    line.components = std::move(members);
    measureLetters(components, line);
    return line;
}

/// Whether @p piece, a mark or a low chain of letters such as "..." or "-", is so close to
/// @p line that it belongs to it.
bool belongsTo(const QRect& piece, const TextLine& line)
{
    const int height = line.box.height();
    const int middle = piece.y() + piece.height() / 2;
    return middle >= line.box.y() - height * 45 / 100
        && middle < bottomOf(line.box) + height * 35 / 100
        && piece.height() <= 1.3 * line.letterHeight && piece.width() <= 4 * height
        && horizontalGap(piece, line.box) <= std::max(height, int(line.letterHeight));
}

int distanceTo(const QRect& piece, const TextLine& line)
{
    return std::max(0, horizontalGap(line.box, piece))
        + 2 * std::max(0, -verticalOverlap(line.box, piece));
}

/// Adds the pieces to the lines that they stand in or beside, nearest first, until none finds
/// a line any more: "- -" reaches its line one dash after the other. What belongs to no line
/// is answered.
std::vector<std::vector<int>> attachPieces(const Components& components,
    std::vector<std::vector<int>> pieces, std::vector<TextLine>& lines)
{
    constexpr int mostRounds = 6;
    for (int round = 0; round < mostRounds && !pieces.empty(); ++round) {
        BoxIndex index;
        for (std::size_t line = 0; line < lines.size(); ++line) {
            const QRect& box = lines[line].box;
            const int reach = std::max(box.height(), int(lines[line].letterHeight));
            index.add(int(line), box.adjusted(-reach, -reach / 2, reach, reach / 2));
        }
        std::vector<std::pair<int, int>> attached;
        for (std::size_t piece = 0; piece < pieces.size(); ++piece) {
            const QRect box = boxOf(components, pieces[piece]);
            int nearest = -1;
            int nearestDistance = 1 << 20;
            index.visit(box, [&](int candidate) {
                const TextLine& line = lines[std::size_t(candidate)];
                if (belongsTo(box, line) && distanceTo(box, line) < nearestDistance) {
                    nearestDistance = distanceTo(box, line);
                    nearest = candidate;
                }
            });
            if (nearest >= 0)
                attached.emplace_back(nearest, int(piece));
        }
        if (attached.empty())
            break;
        for (const auto& [line, piece] : attached) {
            TextLine& owner = lines[std::size_t(line)];
            std::vector<int>& members = pieces[std::size_t(piece)];
            owner.box = owner.box.united(boxOf(components, members));
            owner.components.insert(owner.components.end(), members.begin(), members.end());
            members.clear();
        }
        std::erase_if(pieces, [](const std::vector<int>& piece) { return piece.empty(); });
    }
    return pieces;
}

/// Whether @p end, the first or last component of @p line, is an icon: taller than letters on both
/// sides, standing off, and neither as narrow as a bracket nor a word of letters that touch.
bool isIconBeside(const Component& end, const TextLine& line, int gap)
{
    const QRect& box = end.box;
    const double ascender = line.baseline - 0.75 * line.letterHeight;
    const bool isWord =
        box.width() > 1.5 * box.height() && end.area < 0.6 * box.width() * box.height();
    return gap >= 0.35 * line.letterHeight && box.width() * 2 > box.height() && !isWord
        && box.y() <= ascender + 1 && bottomOf(box) >= line.baseline + 0.1 * line.letterHeight;
}

/// Takes icons off both ends of a line whose components stand from left to right.
void dropIcons(const Components& components, TextLine& line)
{
    const auto at = [&](std::size_t index) -> const Component& {
        return components.items[std::size_t(line.components[index])];
    };
    const auto gapAfter = [&](std::size_t index) {
        return at(index + 1).box.x() - rightOf(at(index).box);
    };
    constexpr std::size_t fewestLetters = 3;
    const std::size_t before = line.components.size();
    while (line.components.size() > fewestLetters && isIconBeside(at(0), line, gapAfter(0)))
        line.components.erase(line.components.begin());
    while (line.components.size() > fewestLetters) {
        const std::size_t last = line.components.size() - 1;
        if (!isIconBeside(at(last), line, gapAfter(last - 1)))
            break;
        line.components.pop_back();
    }
    if (line.components.size() != before)
        line = lineOf(components, std::move(line.components));
}

/// Moves the chains that are mere marks beside taller lines ("...", or the dash of a large face)
/// from @p lines to @p pieces.
void takeLowChains(std::vector<TextLine>& lines, std::vector<std::vector<int>>& pieces)
{
    BoxIndex index;
    for (std::size_t line = 0; line < lines.size(); ++line) {
        const QRect& box = lines[line].box;
        const int height = box.height();
        index.add(int(line), box.adjusted(-height, -height / 2, height, height / 2));
    }
    std::vector<bool> isLow(lines.size());
    for (std::size_t line = 0; line < lines.size(); ++line) {
        const TextLine& low = lines[line];
        index.visit(low.box, [&](int other) {
            const TextLine& tall = lines[std::size_t(other)];
            if (low.box.height() * 2 <= tall.box.height() + 1
                && tall.components.size() > low.components.size() && belongsTo(low.box, tall))
                isLow[line] = true;
        });
    }
    std::vector<TextLine> kept;
    for (std::size_t line = 0; line < lines.size(); ++line) {
        if (isLow[line])
            pieces.push_back(std::move(lines[line].components));
        else
            kept.push_back(std::move(lines[line]));
    }
    lines = std::move(kept);
}

/// Whether two lines stand in one row.
bool areInOneRow(const TextLine& a, const TextLine& b)
{
    const int shorter = std::min(a.box.height(), b.box.height());
    const int taller = std::max(a.box.height(), b.box.height());
    return verticalOverlap(a.box, b.box) * 10 >= 6 * shorter && taller <= 2.2 * shorter;
}

/// Whether two lines stand in one row, no further apart than words do. The longer one tells the
/// size of their letters.
bool areOneLine(const TextLine& a, const TextLine& b)
{
    const int shorter = std::min(a.box.height(), b.box.height());
    const bool isALonger = a.components.size() >= b.components.size();
    const TextLine& longer = isALonger ? a : b;
    const TextLine& other = isALonger ? b : a;
    const bool isPicture = other.components.size() == 1
        && other.box.height() > tallestPicture * longer.letterHeight
        && other.box.width() * 2 > other.box.height();
    return !isPicture && areInOneRow(a, b)
        && horizontalGap(a.box, b.box)
        <= std::max(1.1 * shorter, widestWordGap * longer.letterHeight);
}

/// Joins those of @p lines that are one for @p areOne, which takes the numbers of two.
template <typename AreOne>
std::vector<TextLine> mergeNeighbours(
    const Components& components, const std::vector<TextLine>& lines, AreOne areOne)
{
    BoxIndex index;
    for (std::size_t line = 0; line < lines.size(); ++line)
        index.add(int(line), lines[line].box);
    DisjointSets sets(lines.size());
    for (std::size_t line = 0; line < lines.size(); ++line) {
        const QRect& box = lines[line].box;
        const int reach = int(2 * lines[line].letterHeight);
        index.visit(box.adjusted(-reach, 0, reach, 0), [&](int other) {
            if (other != int(line) && areOne(line, std::size_t(other)))
                sets.join(int(line), other);
        });
    }
    std::map<int, std::vector<int>> groups;
    for (std::size_t line = 0; line < lines.size(); ++line) {
        std::vector<int>& group = groups[sets.find(int(line))];
        group.insert(group.end(), lines[line].components.begin(), lines[line].components.end());
    }
    std::vector<TextLine> merged;
    merged.reserve(groups.size());
    for (auto& [root, members] : groups)
        merged.push_back(lineOf(components, std::move(members)));
    return merged;
}

/// The middles of the letters of @p line, from left to right.
std::vector<double> middlesOf(const Components& components, const TextLine& line)
{
    std::vector<double> middles;
    for (const int member : line.components) {
        const Component& component = components.items[std::size_t(member)];
        const Shape shape = shapeOf(component);
        if (shape == Shape::letter || shape == Shape::bar)
            middles.push_back(component.box.x() + component.box.width() / 2.0);
    }
    std::sort(middles.begin(), middles.end());
    return middles;
}

std::optional<Cells> cellsAt(const std::vector<double>& middles)
{
    if (middles.size() < 2)
        return std::nullopt;
    std::vector<double> steps;
    for (std::size_t next = 1; next < middles.size(); ++next)
        steps.push_back(middles[next] - middles[next - 1]);
    return cellsOf(middles, medianOf(std::move(steps)));
}

/// Whether the letters at @p middles stand in @p cells as well.
bool standIn(const Cells& cells, const std::vector<double>& middles)
{
    constexpr double widestOffset = 0.35;
    constexpr double agreeingShare = 0.6;
    const auto agreeing = std::count_if(middles.begin(), middles.end(),
        [&](double middle) { return cells.offsetOf(middle) <= widestOffset; });
    return double(agreeing) >= agreeingShare * double(middles.size());
}

/// A few letters, such as "{" or "++i)", may all stand above or below their baseline.
bool areOnOneBaseline(const TextLine& a, const TextLine& b)
{
    constexpr std::size_t fewLetters = 4;
    return std::min(a.components.size(), b.components.size()) <= fewLetters
        || std::abs(a.baseline - b.baseline) <= 1;
}

/// Joins lines in a typewriter face that two or three blanks have torn apart, as after a sentence.
std::vector<TextLine> mergeTypewritten(const Components& components, std::vector<TextLine> lines)
{
    constexpr double widestBlanks = 3.8; // In cells, with the room around the letters.
    std::vector<std::vector<double>> middles;
    std::vector<std::optional<Cells>> cells;
    for (const TextLine& line : lines) {
        middles.push_back(middlesOf(components, line));
        cells.push_back(cellsAt(middles.back()));
    }
    const auto goesOn = [&](std::size_t line, std::size_t other) {
        const int gap = horizontalGap(lines[line].box, lines[other].box);
        return cells[line] && gap > 0 && gap <= widestBlanks * cells[line]->pitch
            && standIn(*cells[line], middles[other]);
    };
    return mergeNeighbours(components, lines, [&](std::size_t a, std::size_t b) {
        return areOnOneBaseline(lines[a], lines[b]) && areInOneRow(lines[a], lines[b])
            && (goesOn(a, b) || goesOn(b, a));
    });
}

} // namespace

std::vector<TextLine> textLinesOf(const Components& components)
{
    std::vector<int> letters;
    std::vector<std::vector<int>> pieces;
    for (std::size_t item = 0; item < components.items.size(); ++item) {
        const Shape shape = shapeOf(components.items[item]);
        if (shape == Shape::letter)
            letters.push_back(int(item));
        else if (shape != Shape::other)
            pieces.push_back({int(item)});
    }

    std::vector<int> marks = letters;
    for (const std::vector<int>& piece : pieces)
        marks.push_back(piece.front());
    const std::vector<bool> isFrame = findFrames(components, letters, marks);
    std::erase_if(letters, [&](int letter) { return isFrame[std::size_t(letter)]; });
    std::erase_if(
        pieces, [&](const std::vector<int>& piece) { return isFrame[std::size_t(piece.front())]; });

    std::vector<TextLine> lines;
    for (std::vector<int>& chain : chainLetters(components, letters))
        lines.push_back(lineOf(components, std::move(chain)));
    takeLowChains(lines, pieces);
    attachPieces(components, std::move(pieces), lines);
    // Marks have brought some lines close enough to be one: `a :: b`.
    lines = mergeNeighbours(components, lines,
        [&](std::size_t a, std::size_t b) { return areOneLine(lines[a], lines[b]); });
    lines = mergeTypewritten(components, std::move(lines));
    for (TextLine& line : lines) {
        std::sort(line.components.begin(), line.components.end(), [&](int a, int b) {
            return components.items[std::size_t(a)].box.x()
                < components.items[std::size_t(b)].box.x();
        });
        dropIcons(components, line);
    }
    return lines;
}

} // namespace Platform
