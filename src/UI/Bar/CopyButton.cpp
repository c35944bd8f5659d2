#include "UI/Bar/CopyButton.h"

#include "UI/Shared/FocusRing.h"
#include "UI/Shared/Glyphs.h"
#include "UI/Shared/Theme.h"
#include "UI/Shared/ToolTip.h"

#include <QEvent>
#include <QFontMetricsF>
#include <QPainter>

#include <cmath>

namespace Lumenote {

namespace {

namespace Metrics {
constexpr double tintOpacity = 0.8;
constexpr int padding = 16;
constexpr int glyphSide = 26; ///< The box of the drawing, which is half empty.
constexpr int glyphWidth = 16; ///< What is drawn of it.
constexpr int spacing = 5;
constexpr double fontSize = 13;
constexpr double hoverOpacity = 0.12;
constexpr double pressedOpacity = 0.22;
} // namespace Metrics

QFont labelFont()
{
    return Theme::font(Metrics::fontSize, QFont::Medium);
}

} // namespace

/// The button proper, which fills the surface.
class CopyButton::Label : public QAbstractButton {
public:
    explicit Label(QWidget* parent)
        : QAbstractButton(parent)
    {
        setObjectName(QStringLiteral("copy"));
        setFocusPolicy(Qt::TabFocus);
        setAttribute(Qt::WA_Hover);
    }

    int textWidth() const
    {
        return static_cast<int>(std::ceil(QFontMetricsF(labelFont()).horizontalAdvance(text())));
    }

protected:
    void paintEvent(QPaintEvent* /*event*/) override
    {
        QPainter painter(this);
        const auto radius = height() / 2.0;
        if (isDown() || underMouse()) {
            painter.setRenderHint(QPainter::Antialiasing);
            painter.setPen(Qt::NoPen);
            painter.setBrush(
                Theme::white(isDown() ? Metrics::pressedOpacity : Metrics::hoverOpacity));
            painter.drawRoundedRect(rect(), radius, radius);
        }
        QRectF glyph(0, 0, Metrics::glyphSide, Metrics::glyphSide);
        glyph.moveCenter(QPointF(Metrics::padding + Metrics::glyphWidth / 2.0, height() / 2.0));
        Glyphs::paint(painter, QStringLiteral("doc.on.clipboard"), glyph, Qt::white);
        painter.setPen(Qt::white);
        painter.setFont(labelFont());
        const auto left = Metrics::padding + Metrics::glyphWidth + Metrics::spacing;
        painter.drawText(rect().adjusted(left, 0, 0, 0), Qt::AlignLeft | Qt::AlignVCenter, text());
        if (hasFocus())
            FocusRing::paint(painter, rect(), radius);
    }

    bool event(QEvent* event) override
    {
        if (FocusRing::takesSpace(event))
            return true;
        return QAbstractButton::event(event);
    }
};

CopyButton::CopyButton(WorkbenchState& state, QWidget* parent)
    : Capsule(parent)
    , m_state(state)
    , m_label(new Label(this))
{
    setObjectName(QStringLiteral("copyCapsule"));
    setTint(Theme::accent(Metrics::tintOpacity));
    connect(m_label, &QAbstractButton::clicked, &state, &WorkbenchState::finish);
    connect(&state, &WorkbenchState::showsTextChanged, this, &CopyButton::refresh);
    refresh();
}

void CopyButton::refresh()
{
    const bool showsText = m_state.showsText();
    m_label->setText(showsText ? tr("Copy Text") : tr("Copy"));
    setTip(*m_label,
        showsText ? tr("Copy the extracted text (Return)")
                  : tr("Copy the finished image (Return or Space)"));
    emit wantedWidthChanged();
}

int CopyButton::wantedWidth() const
{
    return 2 * Metrics::padding + Metrics::glyphWidth + Metrics::spacing + m_label->textWidth();
}

void CopyButton::placeContents()
{
    m_label->setGeometry(innerRect());
}

} // namespace Lumenote
