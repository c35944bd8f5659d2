#include "Model/TextSearch.h"

#include <QHash>
#include <QStringView>
#include <QTextBoundaryFinder>

#include <algorithm>
#include <utility>

namespace Lumenote::TextSearch {

namespace {

/// Marks that a reader would call an accent: those attached to, struck through, above or below a
/// letter, and the points of Hebrew and Arabic. The marks of Indic scripts and of kana, which make
/// another letter, are none. Canonical combining classes of the Unicode Standard, table 4-3.
bool isAccent(QChar character)
{
    const auto combiningClass = character.combiningClass();
    return combiningClass == 1 || (combiningClass >= 10 && combiningClass <= 36)
        || combiningClass >= 200;
}

/// What compares equal when only case and accents differ. Composed again, since a syllable of
/// Hangul must not be found in another that begins alike; in upper case, which unlike Qt's case
/// folding takes a sharp s for two.
QString folded(const QString& text)
{
    auto letters = text.normalized(QString::NormalizationForm_D);
    letters.removeIf(isAccent);
    return letters.normalized(QString::NormalizationForm_C).toUpper();
}

bool isAscii(QChar character)
{
    return character.unicode() < 0x80;
}

bool isAscii(const QString& text)
{
    return std::all_of(text.cbegin(), text.cend(), [](QChar unit) { return isAscii(unit); });
}

qsizetype endOf(const Range& range)
{
    return range.position + range.length;
}

} // namespace

/// Folds what a reader takes for one character. Most are a single unit, of which a page has few
/// different ones.
class Index::CharacterFolder {
public:
    void appendFolded(QStringView character, QString& text)
    {
        const auto first = character.front();
        if (character.size() > 1)
            text += folded(character.toString());
        else if (isAscii(first))
            text += first.toUpper();
        else
            text += foldedUnit(first);
    }

private:
    const QString& foldedUnit(QChar unit)
    {
        const auto known = m_units.find(unit);
        return known != m_units.end() ? *known : *m_units.insert(unit, folded(QString(unit)));
    }

    QHash<QChar, QString> m_units;
};

Index::Index(QStringList lines)
    : m_lines(std::move(lines))
{
}

QList<Match> Index::matches(const QString& query)
{
    const auto wanted = folded(query);
    if (!wanted.isEmpty() && m_folded.isEmpty())
        fold();
    QList<Match> matches;
    for (qsizetype row = 0; row < m_lines.size(); ++row) {
        auto ranges = wanted.isEmpty() ? QList<Range>() : m_folded.at(row).rangesOf(wanted);
        if (wanted.isEmpty() || !ranges.isEmpty())
            matches.append(Match{.row = row, .ranges = std::move(ranges)});
    }
    return matches;
}

void Index::fold()
{
    CharacterFolder folder;
    m_folded.reserve(m_lines.size());
    for (const auto& line : std::as_const(m_lines))
        m_folded.append(isAscii(line) ? FoldedLine{.text = line.toUpper(), .sources = {}}
                                      : FoldedLine::byCharacters(line, folder));
}

Index::FoldedLine Index::FoldedLine::byCharacters(const QString& line, CharacterFolder& folder)
{
    FoldedLine result;
    result.text.reserve(line.size());
    result.sources.reserve(line.size());
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, line);
    bool isUnitForUnit = true;
    qsizetype start = 0;
    for (auto end = finder.toNextBoundary(); end >= 0; end = finder.toNextBoundary()) {
        folder.appendFolded(QStringView(line).sliced(start, end - start), result.text);
        while (result.sources.size() < result.text.size())
            result.sources.append({.position = start, .length = end - start});
        isUnitForUnit = isUnitForUnit && result.text.size() == end && end - start == 1;
        start = end;
    }
    if (isUnitForUnit)
        result.sources = {};
    return result;
}

QList<Range> Index::FoldedLine::rangesOf(const QString& wanted) const
{
    QList<Range> ranges;
    for (auto start = text.indexOf(wanted); start >= 0;
         start = text.indexOf(wanted, start + wanted.size())) {
        Range range{.position = start, .length = wanted.size()};
        if (!sources.isEmpty()) {
            range.position = sources.at(start).position;
            range.length = endOf(sources.at(start + wanted.size() - 1)) - range.position;
        }
        // Two may share a character that is several letters.
        if (!ranges.isEmpty() && range.position < endOf(ranges.constLast()))
            ranges.last().length = endOf(range) - ranges.constLast().position;
        else
            ranges.append(range);
    }
    return ranges;
}

QList<Match> matches(const QStringList& lines, const QString& query)
{
    return Index(lines).matches(query);
}

qsizetype wordCount(const QString& line)
{
    qsizetype count = 0;
    bool isInWord = false;
    for (const auto character : line) {
        const bool isPartOfWord = !character.isSpace();
        if (isPartOfWord && !isInWord)
            ++count;
        isInWord = isPartOfWord;
    }
    return count;
}

} // namespace Lumenote::TextSearch
