#include "Boxes.h"

#include "Scorer.h"

#include <algorithm>
#include <iterator>

namespace Lumenote::Bench::Boxes {

namespace {
constexpr double leastCover = 0.6;
constexpr double leastHeightCover = 0.5;

double cover(const QRectF& one, const QRectF& other)
{
    const auto area = [](const QRectF& rect) { return rect.width() * rect.height(); };
    const double common = area(one.intersected(other));
    return common / (area(one) + area(other) - common);
}

double heightCover(const QRectF& one, const QRectF& other)
{
    const double common = std::min(one.bottom(), other.bottom()) - std::max(one.top(), other.top());
    return common / (one.height() + other.height() - common);
}

bool isText(const Piece& piece, const ReadLine& line)
{
    return Scorer::score({piece}, line.text).lost == 0;
}

bool isHit(const Piece& piece, const QList<Piece>& pieces, const ReadLine& line)
{
    if (!line.rect.contains(piece.rect.center()) || !isText(piece, line))
        return false;
    const auto isInLine = [&](const Piece& other) {
        return line.rect.contains(other.rect.center()) && isText(other, line);
    };
    return std::ranges::count_if(pieces, isInLine) > 1
        ? heightCover(piece.rect, line.rect) >= leastHeightCover
        : cover(piece.rect, line.rect) >= leastCover;
}
} // namespace

QList<ReadLine> parse(const QByteArray& output)
{
    QList<ReadLine> lines;
    for (const QByteArray& each : output.split('\n')) {
        const qsizetype tab = each.indexOf('\t');
        const QList<QByteArray> numbers = each.left(tab).split(' ');
        if (tab < 0 || numbers.size() != 4)
            continue;
        lines.append({{numbers[0].toDouble(), numbers[1].toDouble(), numbers[2].toDouble(),
                          numbers[3].toDouble()},
            QString::fromUtf8(each.mid(tab + 1))});
    }
    return lines;
}

QList<Piece> missed(const QList<Piece>& pieces, const QList<ReadLine>& lines)
{
    QList<Piece> missed;
    std::ranges::copy_if(pieces, std::back_inserter(missed), [&](const Piece& piece) {
        return std::ranges::none_of(
            lines, [&](const ReadLine& line) { return isHit(piece, pieces, line); });
    });
    return missed;
}

} // namespace Lumenote::Bench::Boxes
