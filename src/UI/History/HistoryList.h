#pragma once

#include "Model/CaptureHistory.h"

#include <QList>
#include <QWidget>

#include <functional>

namespace Lumenote {

class HistoryRow;

/// The rows of all captures, one below the other and as high as they need. A row stays the same as
/// long as its capture is in the history, so that it keeps the pointer and the keyboard.
class HistoryList : public QWidget {
    Q_OBJECT

public:
    /// The history outlives it; @p now is the clock.
    HistoryList(CaptureHistory& history, std::function<QDateTime()> now, QWidget* parent);

    void refreshAges();

signals:
    void restoreRequested(const QUuid& id); ///< A row was pressed.
    void deleteRequested(const QUuid& id); ///< A row's capture is to be deleted.
    void rowFocused(QWidget* row); ///< By the keyboard; it may have to be scrolled to.

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    void refreshRows();
    void refreshCurrent();
    HistoryRow* takeRow(const QUuid& id);
    HistoryRow* makeRow();
    void removeRows(const QList<HistoryRow*>& rows);
    void place();
    void focusRow(qsizetype index);

    CaptureHistory& m_history;
    const std::function<QDateTime()> m_now;
    QList<HistoryRow*> m_rows; ///< In the order of the history.
};

} // namespace Lumenote
