#include "UI/Text/SpacedTextLayout.h"

#include <QTextBlock>
#include <QTextDocument>
#include <QTextLayout>
#include <QWidget>

#include <algorithm>

namespace Lumenote {

SpacedTextLayout::SpacedTextLayout(
    QTextDocument* document, const QWidget& viewport, const Spacing& spacing)
    : QPlainTextDocumentLayout(document)
    , m_viewport(viewport)
    , m_spacing(spacing)
{
}

/// The inherited function lays out what isn't yet, which would be without our spacing.
QRectF SpacedTextLayout::blockBoundingRect(const QTextBlock& block) const
{
    if (block.isValid() && block.layout()->lineCount() == 0)
        const_cast<SpacedTextLayout*>(this)->layOut(block);
    return QPlainTextDocumentLayout::blockBoundingRect(block).adjusted(
        0, 0, 0, m_spacing.betweenLines / 2);
}

void SpacedTextLayout::documentChanged(int position, int removed, int added)
{
    QPlainTextDocumentLayout::documentChanged(position, removed, added);
    // A change within one block is laid out at once.
    if (const auto block = document()->findBlock(position); block.isValid())
        block.layout()->clearLayout();
}

void SpacedTextLayout::layOut(QTextBlock block)
{
    auto& layout = *block.layout();
    layout.setTextOption(document()->defaultTextOption());
    const auto width = std::max(m_viewport.width() - m_spacing.left - m_spacing.right, 1.0);
    double top = m_spacing.betweenLines / 2;
    layout.beginLayout();
    for (auto line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLeadingIncluded(true);
        line.setLineWidth(width);
        line.setPosition({m_spacing.left, top});
        top += line.height() + m_spacing.betweenLines;
    }
    layout.endLayout();

    const auto lineCount = document()->lineCount();
    block.setLineCount(layout.lineCount());
    // Whoever is told asks for more blocks, which are laid out then.
    if (document()->lineCount() == lineCount || m_isAnnouncing)
        return;
    m_isAnnouncing = true;
    emit documentSizeChanged(documentSize());
    m_isAnnouncing = false;
}

} // namespace Lumenote
