#pragma once

#include "Model/TextSearch.h"

#include <QPlainTextEdit>

namespace Lumenote {

/// Text that can be selected and copied, but not changed. Keys that it has no use for go on to the
/// parent. It is transparent.
class SelectableTextArea : public QPlainTextEdit {
    Q_OBJECT

public:
    using Marks = QList<QList<TextSearch::Range>>; ///< For each line what is marked in it.

    explicit SelectableTextArea(QWidget* parent);

    /// The selection and the scroll position stay where the text is the same.
    void setText(const QString& text, const Marks& marks);

protected:
    bool event(QEvent* event) override;
    bool viewportEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    QMimeData* createMimeDataFromSelection() const override;

private:
    bool hasUseFor(const QKeyEvent& key) const;
    void paintBehindText(QPainter& painter, const QRect& dirty);
    void paintSelection(QPainter& painter, const QTextBlock& block, const QPointF& origin) const;
    void paintMarks(QPainter& painter, const QTextBlock& block, const QPointF& origin) const;
    QPointF besideText(const QPointF& position) const;

    QString m_text;
    Marks m_marks;
    bool m_isKeyboardVisible = false; ///< It came here by Tab.
};

} // namespace Lumenote
