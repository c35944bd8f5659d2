#include "Model/TextSearch.h"

#include <algorithm>

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

} // namespace

QStringList linesMatching(const QStringList& lines, const QString& query)
{
    if (query.isEmpty())
        return lines;
    const auto wanted = folded(query);
    QStringList matching;
    std::copy_if(lines.cbegin(), lines.cend(), std::back_inserter(matching),
        [&wanted](const QString& line) { return folded(line).contains(wanted); });
    return matching;
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
