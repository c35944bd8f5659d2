#pragma once

#include <QList>
#include <QString>
#include <QStringList>

/// Looking for and counting words in the lines of a capture.
namespace Lumenote::TextSearch {

/// A piece of a line as it stands, in UTF-16 units. Never a part of what a reader takes for one
/// character: a letter with its accents, a sharp s found by an s, an emoji of several parts.
struct Range {
    qsizetype position = 0;
    qsizetype length = 0;

    bool operator==(const Range&) const = default;
};

/// A line in which the query occurs.
struct Match {
    qsizetype row = 0; ///< Its index in the lines.
    QList<Range> ranges; ///< Every place, from left to right; none where the query is empty.

    bool operator==(const Match&) const = default;
};

/// Lines to be searched again and again, at each key of a query that is being typed: they are made
/// ready for that by the first search.
class Index {
public:
    Index() = default;
    explicit Index(QStringList lines);

    /// The lines in which @p query occurs as it stands, whatever the case and the accents of either
    /// side; all of them where it is empty.
    QList<Match> matches(const QString& query);

private:
    class CharacterFolder;

    /// What is compared of a line, and where in the line that comes from.
    struct FoldedLine {
        QString text;
        QList<Range> sources; ///< Of each unit of the text; empty where it is the same unit.

        static FoldedLine byCharacters(const QString& line, CharacterFolder& folder);
        QList<Range> rangesOf(const QString& wanted) const;
    };

    void fold();

    QStringList m_lines;
    QList<FoldedLine> m_folded; ///< None until the first search.
};

/// The same for lines that are searched once.
QList<Match> matches(const QStringList& lines, const QString& query);

/// Runs of characters between Unicode whitespace.
qsizetype wordCount(const QString& line);

} // namespace Lumenote::TextSearch
