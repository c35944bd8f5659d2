#include "UI/Text/SelectableTextArea.h"

#include "UI/Shared/FocusRing.h"
#include "UI/Shared/SlimScrollBar.h"
#include "UI/Shared/Theme.h"
#include "UI/Text/SpacedTextLayout.h"
#include "UI/Text/TextRangeRects.h"

#include <QKeyEvent>
#include <QMimeData>
#include <QMouseEvent>
#include <QPainter>
#include <QTextBlock>
#include <QTextDocumentFragment>

#include <algorithm>
#include <array>
#include <cmath>

namespace Lumenote {

namespace {

namespace Metrics {
constexpr double fontSize = 12.5;
constexpr double lineSpacing = 4;
constexpr double inset = 18; ///< Beside the text.
constexpr double verticalInset = 8;
constexpr double markOpacity = 0.45;
constexpr double markRadius = 2;
constexpr double selectionOpacity = 0.8;
constexpr double lineEndWidth = 6; ///< Of a selected end of a line.
constexpr double ringMargin = 2;
constexpr int barEndMargin = 12; ///< Below it is a corner of the card.
} // namespace Metrics

constexpr Qt::TextInteractionFlags selectable =
    Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard;
constexpr std::array navigationKeys{Qt::Key_Left, Qt::Key_Right, Qt::Key_Down, Qt::Key_Up,
    Qt::Key_Home, Qt::Key_End, Qt::Key_PageUp, Qt::Key_PageDown};

/// The selection is painted here, between the lines as well.
QPalette colours(QPalette palette)
{
    palette.setColor(QPalette::Base, Qt::transparent);
    palette.setColor(QPalette::Text, Qt::white);
    palette.setColor(QPalette::Highlight, Qt::transparent);
    palette.setColor(QPalette::HighlightedText, Qt::white);
    return palette;
}

QRectF withSpacing(const QRectF& rect)
{
    return rect.adjusted(0, -Metrics::lineSpacing / 2, 0, Metrics::lineSpacing / 2);
}

} // namespace

SelectableTextArea::SelectableTextArea(QWidget* parent)
    : QPlainTextEdit(parent)
{
    setObjectName(QStringLiteral("extractedText"));
    setAccessibleName(tr("Extracted text"));
    setReadOnly(true);
    setTextInteractionFlags(selectable);
    setUndoRedoEnabled(false);
    setFrameShape(NoFrame);
    setFont(Theme::monospacedFont(Metrics::fontSize));
    setPalette(colours(palette()));
    viewport()->setAutoFillBackground(false);
    setWordWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    setVerticalScrollBar(new SlimScrollBar(Metrics::barEndMargin, this));

    document()->setDocumentMargin(Metrics::verticalInset);
    const SpacedTextLayout::Spacing spacing{.betweenLines = Metrics::lineSpacing,
        .left = Metrics::inset,
        .right = Metrics::inset - SlimScrollBar::thickness};
    document()->setDocumentLayout(new SpacedTextLayout(document(), *viewport(), spacing));
    // What is painted reaches beyond the lines, of which Qt repaints only these.
    connect(this, &QPlainTextEdit::selectionChanged, viewport(), qOverload<>(&QWidget::update));
}

void SelectableTextArea::setText(const QString& text, const Marks& marks)
{
    m_marks = marks;
    if (text != m_text) {
        m_text = text;
        setPlainText(text);
    }
    viewport()->update();
}

/// Only plain text: the letters are white here, which they mustn't be elsewhere.
QMimeData* SelectableTextArea::createMimeDataFromSelection() const
{
    auto* const data = new QMimeData;
    data->setText(textCursor().selection().toPlainText());
    return data;
}

// Keys

bool SelectableTextArea::hasUseFor(const QKeyEvent& key) const
{
    return key.matches(QKeySequence::SelectAll)
        || (key.matches(QKeySequence::Copy) && textCursor().hasSelection());
}

bool SelectableTextArea::event(QEvent* event)
{
    if (event->type() == QEvent::ShortcutOverride) {
        event->setAccepted(hasUseFor(*static_cast<QKeyEvent*>(event)));
        return event->isAccepted();
    }
    const bool isHandled = QPlainTextEdit::event(event);
    if (event->type() == QEvent::Paint && m_isKeyboardVisible && hasFocus()) {
        QPainter painter(this);
        const auto margin = Metrics::ringMargin;
        FocusRing::paintOnDark(painter, QRectF(rect()).adjusted(margin, margin, -margin, -margin),
            Theme::cardRadius - margin);
    }
    return isHandled;
}

void SelectableTextArea::keyPressEvent(QKeyEvent* event)
{
    const bool isOwn = event->modifiers().testFlag(Qt::ControlModifier)
        || std::ranges::find(navigationKeys, event->key()) != navigationKeys.end();
    if (isOwn)
        QPlainTextEdit::keyPressEvent(event);
    else
        event->ignore();
}

/// A click shows by itself where the keyboard is. Qt shows a caret where the text can be selected
/// by keys at the moment when it gets the focus.
void SelectableTextArea::focusInEvent(QFocusEvent* event)
{
    if (event->reason() == Qt::MouseFocusReason)
        m_isKeyboardVisible = false;
    else if (event->reason() == Qt::TabFocusReason || event->reason() == Qt::BacktabFocusReason)
        m_isKeyboardVisible = true;
    if (!m_isKeyboardVisible)
        setTextInteractionFlags(Qt::TextSelectableByMouse);
    QPlainTextEdit::focusInEvent(event);
    setTextInteractionFlags(selectable);
    update();
}

// Mouse

/// Qt takes what is between two lines for the end of the upper one: a drag across would flicker.
bool SelectableTextArea::viewportEvent(QEvent* event)
{
    switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseMove:
        break;
    default:
        return QPlainTextEdit::viewportEvent(event);
    }
    const auto& mouse = *static_cast<QMouseEvent*>(event);
    QMouseEvent onLine(mouse.type(), besideText(mouse.position()), mouse.scenePosition(),
        mouse.globalPosition(), mouse.button(), mouse.buttons(), mouse.modifiers(),
        mouse.pointingDevice());
    onLine.setTimestamp(mouse.timestamp());
    const bool isHandled = QPlainTextEdit::viewportEvent(&onLine);
    event->setAccepted(onLine.isAccepted());
    return isHandled;
}

/// @p position or, where that is between two lines, the nearest point on one of them.
QPointF SelectableTextArea::besideText(const QPointF& position) const
{
    if (!viewport()->rect().contains(position.toPoint()))
        return position;
    auto top = contentOffset().y();
    for (auto block = firstVisibleBlock(); block.isValid(); block = block.next()) {
        const auto height = blockBoundingRect(block).height();
        if (position.y() < top + height) {
            const auto pitch = height / std::max(block.layout()->lineCount(), 1);
            const auto lineTop = top + pitch * std::floor((position.y() - top) / pitch);
            const auto half = Metrics::lineSpacing / 2;
            return {
                position.x(), std::clamp(position.y(), lineTop + half, lineTop + pitch - half - 1)};
        }
        top += height;
    }
    return position;
}

// Painting

void SelectableTextArea::paintEvent(QPaintEvent* event)
{
    {
        QPainter painter(viewport());
        paintBehindText(painter, event->rect());
    }
    QPlainTextEdit::paintEvent(event);
}

void SelectableTextArea::paintBehindText(QPainter& painter, const QRect& dirty)
{
    auto origin = contentOffset();
    for (auto block = firstVisibleBlock(); block.isValid() && origin.y() <= dirty.bottom();
         block = block.next()) {
        const auto height = blockBoundingRect(block).height();
        if (origin.y() + height >= dirty.top()) {
            paintSelection(painter, block, origin);
            paintMarks(painter, block, origin);
        }
        origin.ry() += height;
    }
}

void SelectableTextArea::paintSelection(
    QPainter& painter, const QTextBlock& block, const QPointF& origin) const
{
    const auto cursor = textCursor();
    const int start = std::max(cursor.selectionStart() - block.position(), 0);
    const int end = std::min(cursor.selectionEnd() - block.position(), block.length());
    if (start >= end)
        return;
    auto rects = rectsOf({start, end - start}, *block.layout());
    if (end == block.length()) {
        const auto last = block.layout()->lineAt(block.layout()->lineCount() - 1);
        const auto text = last.naturalTextRect();
        rects.append({text.right(), text.top(), Metrics::lineEndWidth, text.height()});
    }
    for (const auto& rect : std::as_const(rects))
        painter.fillRect(
            withSpacing(rect.translated(origin)), Theme::accent(Metrics::selectionOpacity));
}

void SelectableTextArea::paintMarks(
    QPainter& painter, const QTextBlock& block, const QPointF& origin) const
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(Theme::accent(Metrics::markOpacity));
    for (const auto& range : m_marks.value(block.blockNumber()))
        for (const auto& rect : rectsOf(range, *block.layout()))
            painter.drawRoundedRect(
                rect.translated(origin), Metrics::markRadius, Metrics::markRadius);
    painter.restore();
}

} // namespace Lumenote
