#pragma once

#include <QString>
#include <QStringList>

/// Looking for and counting words in the lines of a capture.
namespace Lumenote::TextSearch {

/// The lines in which @p query occurs as it stands, whatever the case and the accents of either
/// side; all of them where it is empty.
QStringList linesMatching(const QStringList& lines, const QString& query);

/// Runs of characters between Unicode whitespace.
qsizetype wordCount(const QString& line);

} // namespace Lumenote::TextSearch
