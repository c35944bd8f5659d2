#pragma once

#include "Model/CaptureHistory.h"

#include <QWidget>

#include <functional>

class QLabel;
class QScrollArea;

namespace Lumenote {

class HistoryList;

/// The list of earlier captures, which lies over the capture. It is as high as its captures need,
/// up to what it is given, and sets its own size; the caller only moves it. It only tells what is
/// wished for.
///
/// Around its surface the widget has margins for its shadow. Presses there go on to the parent.
class HistorySidebar final : public QWidget {
    Q_OBJECT

public:
    /// The history outlives it; @p now is the clock from which ages count.
    HistorySidebar(CaptureHistory& history, QWidget* parent,
        std::function<QDateTime()> now = QDateTime::currentDateTimeUtc);

    /// The most that the surface may take, in points.
    void setMaxHeight(int height);

    static QMargins shadowMargins();

    QSize sizeHint() const override;

signals:
    void restoreRequested(const QUuid& id); ///< A capture is to be shown again.
    void deleteRequested(const QUuid& id); ///< A capture is to be deleted.
    void closeRequested();

protected:
    void paintEvent(QPaintEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

private:
    QRect surface() const;
    void addHeader();
    void addList(std::function<QDateTime()> now);
    void refresh();

    CaptureHistory& m_history;
    int m_maxHeight = QWIDGETSIZE_MAX;
    QWidget* m_header;
    QLabel* m_count;
    QScrollArea* m_scroller;
    HistoryList* m_list = nullptr;
};

} // namespace Lumenote
