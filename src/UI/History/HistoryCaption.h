#pragma once

#include <QString>

class QDateTime;
class QSize;

/// What the list of captures says of each of them.
namespace Lumenote::HistoryCaption {

/// How long before @p now, in one short unit: "5 min. ago". "just now" for less than a minute, and
/// for what is to come.
QString age(const QDateTime& date, const QDateTime& now);

QString dimensions(const QSize& pixelSize); ///< As "1920×1080".

/// The row's name for those who don't see it.
QString accessibleName(const QString& age, bool isCurrent);

} // namespace Lumenote::HistoryCaption
