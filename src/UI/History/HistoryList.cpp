#include "UI/History/HistoryList.h"

#include "UI/History/HistoryMeasures.h"
#include "UI/History/HistoryRow.h"

#include <QKeyEvent>

#include <algorithm>
#include <utility>

namespace Lumenote {

HistoryList::HistoryList(CaptureHistory& history, std::function<QDateTime()> now, QWidget* parent)
    : QWidget(parent)
    , m_history(history)
    , m_now(std::move(now))
{
    setObjectName(QStringLiteral("historyList"));
    setAccessibleName(tr("Captures"));
    connect(&history, &CaptureHistory::entriesChanged, this, &HistoryList::refreshRows);
    connect(&history, &CaptureHistory::currentIDChanged, this, &HistoryList::refreshCurrent);
    refreshRows();
}

void HistoryList::refreshAges()
{
    const auto now = m_now();
    for (auto* const row : std::as_const(m_rows))
        row->setNow(now);
}

void HistoryList::refreshCurrent()
{
    for (auto* const row : std::as_const(m_rows))
        row->setCurrent(row->entryID() == m_history.currentID());
}

void HistoryList::refreshRows()
{
    QList<HistoryRow*> rows;
    for (const auto& entry : m_history.entries()) {
        auto* const known = takeRow(entry.id);
        auto* const row = known != nullptr ? known : makeRow();
        row->setEntry(entry);
        rows.append(row);
    }
    const auto gone = std::exchange(m_rows, rows);
    place();
    removeRows(gone);
    refreshAges();
    refreshCurrent();
}

HistoryRow* HistoryList::takeRow(const QUuid& id)
{
    const auto found = std::ranges::find(m_rows, id, &HistoryRow::entryID);
    if (found == m_rows.end())
        return nullptr;
    auto* const row = *found;
    m_rows.erase(found);
    return row;
}

HistoryRow* HistoryList::makeRow()
{
    auto* const row = new HistoryRow(this);
    connect(row, &QAbstractButton::clicked, this,
        [this, row] { emit restoreRequested(row->entryID()); });
    connect(row, &HistoryRow::deleteRequested, this,
        [this, row] { emit deleteRequested(row->entryID()); });
    connect(row, &HistoryRow::focusArrived, this, [this, row] { emit rowFocused(row); });
    return row;
}

/// From top to bottom, for the eye as well as for Tab.
void HistoryList::place()
{
    int top = HistoryMeasures::listPadding;
    const HistoryRow* above = nullptr;
    for (auto* const row : std::as_const(m_rows)) {
        row->move(HistoryMeasures::listPadding, top);
        row->show();
        top += row->height() + HistoryMeasures::rowSpacing;
        if (above != nullptr)
            setTabOrder(above->lastControl(), row);
        setTabOrder(row, row->lastControl());
        above = row;
    }
    const auto gap = m_rows.isEmpty() ? 0 : HistoryMeasures::rowSpacing;
    resize(width(), top - gap + HistoryMeasures::listPadding);
}

/// One that had the keyboard gives it to the row that stands in its place now. They are deleted
/// later, since it may be their own signal that leads here.
void HistoryList::removeRows(const QList<HistoryRow*>& rows)
{
    for (auto* const row : rows) {
        if (row->hasFocus() || row->lastControl()->hasFocus()) {
            const auto below = std::ranges::find_if(
                m_rows, [row](const auto* other) { return other->y() >= row->y(); });
            focusRow(std::distance(m_rows.begin(), below));
        }
        row->hide();
        row->deleteLater();
    }
}

void HistoryList::focusRow(qsizetype index)
{
    if (!m_rows.isEmpty())
        m_rows.at(std::clamp<qsizetype>(index, 0, m_rows.size() - 1))->setFocus(Qt::TabFocusReason);
}

void HistoryList::keyPressEvent(QKeyEvent* event)
{
    const auto focused = std::ranges::find_if(
        m_rows, [](const auto* row) { return row->hasFocus() || row->lastControl()->hasFocus(); });
    const auto index = std::distance(m_rows.begin(), focused);
    switch (event->key()) {
    case Qt::Key_Up:
        focusRow(index - 1);
        break;
    case Qt::Key_Down:
        focusRow(index + 1);
        break;
    case Qt::Key_Home:
        focusRow(0);
        break;
    case Qt::Key_End:
        focusRow(m_rows.size() - 1);
        break;
    default:
        event->ignore();
    }
}

} // namespace Lumenote
