#include "UI/Text/FilterField.h"

#include "UI/Shared/FocusRing.h"
#include "UI/Shared/GlyphButton.h"
#include "UI/Shared/Glyphs.h"
#include "UI/Shared/Theme.h"
#include "UI/Shared/ToolTip.h"

#include <QKeyEvent>
#include <QPainter>

namespace Lumenote {

namespace {

namespace Metrics {
constexpr int height = 24;
constexpr int padding = 8;
constexpr int spacing = 5;
constexpr int textWidth = 110;
constexpr int glyphSide = 12; ///< What the drawing of a glyph takes; its box is larger.
constexpr double glyphBox = 23;
constexpr int clearSide = 18;
constexpr int styleMargin = 2; ///< Of a line edit, beside what is set.
constexpr double fontSize = 12;
constexpr double fillOpacity = 0.12;
constexpr double glyphOpacity = 0.7;
constexpr double promptOpacity = 0.5;
} // namespace Metrics

QPalette colours(QPalette palette)
{
    palette.setColor(QPalette::Base, Qt::transparent);
    palette.setColor(QPalette::Text, Qt::white);
    palette.setColor(QPalette::PlaceholderText, Theme::white(Metrics::promptOpacity));
    palette.setColor(QPalette::Highlight, Theme::accent());
    palette.setColor(QPalette::HighlightedText, Qt::white);
    return palette;
}

} // namespace

FilterField::FilterField(QWidget* parent)
    : QLineEdit(parent)
{
    setObjectName(QStringLiteral("filterField"));
    setAccessibleName(tr("Filter"));
    setPlaceholderText(tr("Filter"));
    setFrame(false);
    setFont(Theme::font(Metrics::fontSize));
    setPalette(colours(palette()));
    const auto beside = Metrics::padding + Metrics::glyphSide + Metrics::spacing;
    setTextMargins(beside - Metrics::styleMargin, 0, beside - Metrics::styleMargin, 0);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    addClearButton();
}

QSize FilterField::sizeHint() const
{
    const auto beside = Metrics::padding + Metrics::glyphSide + Metrics::spacing;
    return {2 * beside + Metrics::textWidth, Metrics::height};
}

void FilterField::addClearButton()
{
    auto* const button = new GlyphButton(
        QStringLiteral("clearFilterButton"), QStringLiteral("xmark.circle.fill"), this);
    const auto margin = (Metrics::height - Metrics::clearSide) / 2;
    button->setGeometry(sizeHint().width() - Metrics::clearSide - margin - 1, margin,
        Metrics::clearSide, Metrics::clearSide);
    button->setGlyphSide(Metrics::glyphBox);
    button->setCursor(Qt::ArrowCursor);
    button->hide();
    setTip(*button, tr("Clear the filter"));
    connect(button, &QAbstractButton::clicked, this, [this] {
        setFocus();
        setText({});
    });
    connect(this, &QLineEdit::textChanged, button,
        [button](const QString& text) { button->setVisible(!text.isEmpty()); });
}

void FilterField::paintEvent(QPaintEvent* event)
{
    const auto radius = height() / 2.0;
    {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        painter.setBrush(Theme::white(Metrics::fillOpacity));
        painter.drawRoundedRect(rect(), radius, radius);
        QRectF box(0, 0, Metrics::glyphBox, Metrics::glyphBox);
        box.moveCenter({Metrics::padding + Metrics::glyphSide / 2.0, radius});
        Glyphs::paint(
            painter, QStringLiteral("magnifyingglass"), box, Theme::white(Metrics::glyphOpacity));
    }
    QLineEdit::paintEvent(event);
    if (hasFocus()) {
        QPainter painter(this);
        FocusRing::paintOnDark(painter, rect(), radius);
    }
}

bool FilterField::hasUseFor(const QKeyEvent& key) const
{
    if (key.matches(QKeySequence::Copy))
        return hasSelectedText();
    if (key.matches(QKeySequence::Undo))
        return isUndoAvailable();
    if (key.matches(QKeySequence::Redo))
        return isRedoAvailable();
    return true;
}

bool FilterField::event(QEvent* event)
{
    if (event->type() == QEvent::ShortcutOverride && !hasUseFor(*static_cast<QKeyEvent*>(event))) {
        event->ignore();
        return false;
    }
    return QLineEdit::event(event);
}

} // namespace Lumenote
