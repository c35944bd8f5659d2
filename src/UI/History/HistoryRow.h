#pragma once

#include "Model/CaptureHistory.h"

#include <QAbstractButton>
#include <QPixmap>

namespace Lumenote {

class GlyphButton;

/// One capture of the list, to be brought back by a click, Return or Space, and to be deleted by
/// the button that it shows below the pointer and with the keyboard, or by the Delete key.
class HistoryRow : public QAbstractButton {
    Q_OBJECT

public:
    explicit HistoryRow(QWidget* parent);

    void setEntry(const CaptureHistory::Entry& entry);
    const QUuid& entryID() const { return m_entry.id; }
    void setCurrent(bool isCurrent); ///< It is the capture on show.
    void setNow(const QDateTime& now); ///< From which its age counts.

    QSize sizeHint() const override;
    QWidget* lastControl() const; ///< The last that Tab reaches in it.

signals:
    void deleteRequested();
    void focusArrived(); ///< By the keyboard.

protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;
    bool event(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void updateCaption();
    void updateDeleteButton();
    const QPixmap& thumbnail(double devicePixelRatio);
    void paintPlate(QPainter& painter) const;
    void paintCaption(QPainter& painter) const;

    struct Shown { // Of the entry.
        QUuid id;
        QImage thumbnail;
        QDateTime capturedAt;
        QSize pixelSize;
    };

    Shown m_entry;
    bool m_isCurrent = false;
    QDateTime m_now;
    QString m_age;
    QPixmap m_thumbnail; ///< As it is painted; null until then.
    GlyphButton* m_delete;
};

} // namespace Lumenote
