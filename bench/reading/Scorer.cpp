#include "Scorer.h"

#include <QHash>
#include <queue>

#include <algorithm>
#include <tuple>
#include <unordered_map>
#include <vector>

namespace Lumenote::Bench {

using namespace Qt::StringLiterals;

double Score::errorPercent() const
{
    return characters == 0 ? 0 : 100.0 * double(errors) / double(characters);
}

double Score::lostPercent() const
{
    return pieces == 0 ? 0 : 100.0 * lost / pieces;
}

double Score::extraPercent() const
{
    return characters == 0 ? 0 : 100.0 * double(extra) / double(characters);
}

Score& Score::operator+=(const Score& other)
{
    characters += other.characters;
    errors += other.errors;
    extra += other.extra;
    pieces += other.pieces;
    lost += other.lost;
    return *this;
}

namespace Scorer {

namespace {
constexpr QChar lineEnd(u'\n');
constexpr QChar taken(u'\uffff'); ///< Where a piece was found before.
constexpr qsizetype shortPiece = 2;

bool isWrittenWithoutBlanks(QChar character)
{
    const QChar::Script script = character.script();
    return script == QChar::Script_Han || script == QChar::Script_Hiragana
        || script == QChar::Script_Katakana;
}

QChar withoutLooks(QChar character)
{
    switch (character.unicode()) {
    case u'\u2018':
    case u'\u2019':
    case u'\u201a':
    case u'\u201b':
        return u'\'';
    case u'\u201c':
    case u'\u201d':
    case u'\u201e':
    case u'\u201f':
        return u'"';
    case u'\u2010':
    case u'\u2011':
    case u'\u2013':
        return u'-';
    default:
        return character;
    }
}

/// As normalised(), but with line ends where blanks stand for them.
QString normalisedLines(const QString& text)
{
    QString result;
    bool isAfterBlank = false;
    bool isAfterLineEnd = false;
    for (const QChar character : text.normalized(QString::NormalizationForm_C)) {
        if (character.category() == QChar::Other_Format)
            continue;
        if (character.isSpace()) {
            isAfterBlank = true;
            isAfterLineEnd |= character == lineEnd || character == u'\f';
            continue;
        }
        const bool isJoined = !isAfterLineEnd && isWrittenWithoutBlanks(character)
            && !result.isEmpty() && isWrittenWithoutBlanks(result.back());
        if (isAfterBlank && !result.isEmpty() && !isJoined)
            result.append(isAfterLineEnd ? lineEnd : QChar(u' '));
        result.append(withoutLooks(character));
        isAfterBlank = isAfterLineEnd = false;
    }
    return result;
}

/// A part of the text read.
struct Match {
    qsizetype start = 0;
    qsizetype end = 0;
    int distance = 0;
};

/// The text read, of which more and more is taken.
class Text {
public:
    explicit Text(const QString& read)
        : m_characters(normalisedLines(read))
    {
    }

    qsizetype size() const { return m_characters.size(); }
    bool isTaken(qsizetype at) const { return m_characters[at] == taken; }

    QChar at(qsizetype position) const
    {
        const QChar character = m_characters[position];
        return character == lineEnd ? QChar(u' ') : character;
    }

    QString part(const Match& match) const
    {
        return m_characters.mid(match.start, match.end - match.start).replace(lineEnd, u' ');
    }

    bool isFree(const Match& match) const
    {
        return !m_characters.mid(match.start, match.end - match.start).contains(taken);
    }

    void take(const Match& match)
    {
        for (qsizetype i = match.start; i < match.end; ++i)
            m_characters[i] = taken;
    }

    qint64 leftOver() const
    {
        return std::ranges::count_if(m_characters,
            [](QChar character) { return character != taken && !character.isSpace(); });
    }

    /// How well the text can be cut before @p position: 2 at the end of a line, 1 at that of a
    /// word, 0 within a word.
    int boundary(qsizetype position) const
    {
        if (position == 0 || position == size())
            return 2;
        const QChar before = m_characters[position - 1];
        const QChar after = m_characters[position];
        if (before == lineEnd || after == lineEnd || before == taken || after == taken)
            return 2;
        return before.isLetterOrNumber() && after.isLetterOrNumber() ? 0 : 1;
    }

private:
    QString m_characters;
};

/// Finds a piece in a text with the bit-parallel edit distance of Myers, a word of 64
/// characters of the piece at a time.
class Search {
public:
    explicit Search(const QString& piece)
        : m_piece(piece)
        , m_words(size_t((piece.size() + 63) / 64))
        , m_none(m_words, 0)
    {
        for (qsizetype i = 0; i < piece.size(); ++i) {
            std::vector<quint64>& bits =
                m_bits.try_emplace(piece[i].unicode(), m_words, 0).first->second;
            bits[size_t(i / 64)] |= quint64(1) << (i % 64);
        }
    }

    /// The ends of the parts of @p text that are nearest to the piece, and their distance.
    int nearestEnds(const Text& text, std::vector<qsizetype>& ends)
    {
        int best = int(m_piece.size());
        reset();
        for (qsizetype i = 0; i < text.size(); ++i) {
            if (text.isTaken(i)) {
                reset();
                continue;
            }
            const auto found = m_bits.find(text.at(i).unicode());
            advance(found == m_bits.end() ? m_none : found->second);
            if (m_distance < best) {
                best = m_distance;
                ends.clear();
            }
            if (m_distance == best)
                ends.push_back(i + 1);
        }
        return best;
    }

private:
    void reset()
    {
        m_plus.assign(m_words, ~quint64(0));
        m_minus.assign(m_words, 0);
        m_distance = int(m_piece.size());
    }

    void advance(const std::vector<quint64>& equal)
    {
        int carry = 0;
        for (size_t w = 0; w < m_words; ++w)
            carry = advanceWord(w, equal[w], carry);
        m_distance += carry;
    }

    /// One word of a column: takes the difference at its upper edge, answers that at its lower.
    int advanceWord(size_t w, quint64 equal, int carry)
    {
        const quint64 isNegative = carry < 0 ? 1 : 0;
        const quint64 isPositive = carry > 0 ? 1 : 0;
        const quint64 plus = m_plus[w];
        const quint64 minus = m_minus[w];
        const quint64 vertical = equal | minus;
        const quint64 extended = equal | isNegative;
        const quint64 horizontal = (((extended & plus) + plus) ^ plus) | extended;
        quint64 rising = minus | ~(horizontal | plus);
        quint64 falling = plus & horizontal;
        const int top = w + 1 == m_words ? int((m_piece.size() - 1) % 64) : 63;
        const int out = int((rising >> top) & 1) - int((falling >> top) & 1);
        rising = (rising << 1) | isPositive;
        falling = (falling << 1) | isNegative;
        m_plus[w] = falling | ~(vertical | rising);
        m_minus[w] = rising & vertical;
        return out;
    }

    QString m_piece;
    size_t m_words;
    std::unordered_map<char16_t, std::vector<quint64>> m_bits;
    std::vector<quint64> m_none;
    std::vector<quint64> m_plus;
    std::vector<quint64> m_minus;
    int m_distance = 0;
};

/// Where a match that ends at @p end at @p distance begins; the best cut where there are several.
qsizetype startOf(const QString& piece, const Text& text, qsizetype end, int distance)
{
    const qsizetype length = piece.size();
    if (distance == 0)
        return end - length;
    std::vector<int> column(size_t(length) + 1);
    for (size_t i = 0; i < column.size(); ++i)
        column[i] = int(i);
    qsizetype best = end;
    int bestBoundary = -1;
    const auto consider = [&](qsizetype start) {
        if (column.back() == distance && text.boundary(start) > bestBoundary) {
            best = start;
            bestBoundary = text.boundary(start);
        }
    };
    consider(end);
    for (qsizetype start = end - 1; start >= 0 && end - start <= length + distance; --start) {
        if (text.isTaken(start))
            break;
        int diagonal = column[0]++;
        for (size_t i = 1; i < column.size(); ++i) {
            const bool isEqual = piece[length - qsizetype(i)] == text.at(start);
            const int changed = diagonal + (isEqual ? 0 : 1);
            diagonal = column[i];
            column[i] = std::min({changed, column[i] + 1, column[i - 1] + 1});
        }
        consider(start);
    }
    return best;
}

/// The part of @p text that is most like @p piece, cut at the ends of lines or words if it can.
Match nearest(const QString& piece, const Text& text)
{
    constexpr size_t manyEnds = 32;
    const Match none{0, 0, int(piece.size())};
    std::vector<qsizetype> ends;
    const int distance = Search(piece).nearestEnds(text, ends);
    if (distance > 0 && ends.size() > manyEnds)
        ends.resize(manyEnds);
    Match best = none;
    int bestBoundary = -1;
    for (const qsizetype end : ends) {
        const Match match{startOf(piece, text, end, distance), end, distance};
        const int first = text.boundary(match.start);
        const int last = text.boundary(match.end);
        if (piece.size() <= shortPiece && std::min(first, last) == 0)
            continue;
        if (first + last > bestBoundary) {
            best = match;
            bestBoundary = first + last;
        }
    }
    return best;
}

/// A piece in the queue for its text.
struct Claim {
    Match match;
    qsizetype length = 0;
    qsizetype index = 0;

    qsizetype gain() const { return length - 2 * qsizetype(match.distance); }

    bool operator<(const Claim& other) const
    {
        return std::tuple(gain(), length, -index)
            < std::tuple(other.gain(), other.length, -other.index);
    }
};
} // namespace

QString normalised(const QString& text)
{
    return normalisedLines(text).replace(lineEnd, u' ');
}

Score score(const QList<Piece>& pieces, const QString& read, QList<PieceReading>* readings)
{
    Text text(read);
    Score score;
    QList<PieceReading> all;
    std::priority_queue<Claim> queue;
    for (const Piece& piece : pieces) {
        const QString expected = normalised(piece.text);
        queue.push({nearest(expected, text), expected.size(), all.size()});
        all.append({.expected = expected, .nearest = {}});
        score.characters += expected.size();
        ++score.pieces;
    }
    while (!queue.empty()) {
        Claim claim = queue.top();
        queue.pop();
        PieceReading& reading = all[claim.index];
        if (!text.isFree(claim.match)) {
            claim.match = nearest(reading.expected, text);
            queue.push(claim);
            continue;
        }
        reading.nearest = text.part(claim.match);
        reading.isLost = claim.gain() < 0;
        reading.errors = reading.isLost ? int(claim.length) : claim.match.distance;
        if (!reading.isLost)
            text.take(claim.match);
        score.errors += reading.errors;
        score.lost += reading.isLost ? 1 : 0;
    }
    score.extra = text.leftOver();
    if (readings)
        *readings = all;
    return score;
}

} // namespace Scorer

} // namespace Lumenote::Bench
