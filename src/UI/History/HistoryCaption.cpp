#include "UI/History/HistoryCaption.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QSize>

#include <array>

namespace Lumenote::HistoryCaption {

namespace {

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(HistorySidebar)
};

struct Unit {
    qint64 seconds;
    const char* one;
    const char* many;
};

/// Months and years of their mean length.
constexpr std::array units{
    Unit{31'556'952, QT_TRANSLATE_NOOP("HistorySidebar", "%1 yr. ago"),
        QT_TRANSLATE_NOOP("HistorySidebar", "%1 yr. ago")},
    Unit{2'629'746, QT_TRANSLATE_NOOP("HistorySidebar", "%1 mo. ago"),
        QT_TRANSLATE_NOOP("HistorySidebar", "%1 mo. ago")},
    Unit{604'800, QT_TRANSLATE_NOOP("HistorySidebar", "%1 wk. ago"),
        QT_TRANSLATE_NOOP("HistorySidebar", "%1 wk. ago")},
    Unit{86'400, QT_TRANSLATE_NOOP("HistorySidebar", "%1 day ago"),
        QT_TRANSLATE_NOOP("HistorySidebar", "%1 days ago")},
    Unit{3'600, QT_TRANSLATE_NOOP("HistorySidebar", "%1 hr. ago"),
        QT_TRANSLATE_NOOP("HistorySidebar", "%1 hr. ago")},
    Unit{60, QT_TRANSLATE_NOOP("HistorySidebar", "%1 min. ago"),
        QT_TRANSLATE_NOOP("HistorySidebar", "%1 min. ago")},
};

} // namespace

QString age(const QDateTime& date, const QDateTime& now)
{
    const auto elapsed = date.secsTo(now);
    for (const auto& unit : units)
        if (const auto count = elapsed / unit.seconds; count > 0)
            return Texts::tr(count == 1 ? unit.one : unit.many).arg(count);
    return Texts::tr("just now");
}

QString dimensions(const QSize& pixelSize)
{
    return QStringLiteral("%1×%2").arg(pixelSize.width()).arg(pixelSize.height());
}

QString accessibleName(const QString& age, bool isCurrent)
{
    return (isCurrent ? Texts::tr("Current capture, %1") : Texts::tr("Capture from %1")).arg(age);
}

} // namespace Lumenote::HistoryCaption
