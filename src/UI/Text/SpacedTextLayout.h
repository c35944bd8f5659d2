#pragma once

#include <QPlainTextDocumentLayout>

class QWidget;

namespace Lumenote {

/// Plain text with more room between its lines, and other margins beside it than above and below,
/// which Qt's own layout of plain text doesn't know. It lays out what is looked at only.
class SpacedTextLayout : public QPlainTextDocumentLayout {
    Q_OBJECT

public:
    struct Spacing { // In points.
        double betweenLines = 0; ///< Half of it above a line, half below.
        double left = 0;
        double right = 0;
    };

    /// Wraps @p document at the width of @p viewport, the widget that shows it.
    SpacedTextLayout(QTextDocument* document, const QWidget& viewport, const Spacing& spacing);

    QRectF blockBoundingRect(const QTextBlock& block) const override;

protected:
    void documentChanged(int position, int removed, int added) override;

private:
    void layOut(QTextBlock block);

    const QWidget& m_viewport;
    const Spacing m_spacing;
    bool m_isAnnouncing = false;
};

} // namespace Lumenote
