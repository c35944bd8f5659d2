#include "UI/Bar/ControlBar.h"

#include "UI/Bar/BarLayout.h"
#include "UI/Bar/CopyButton.h"
#include "UI/Bar/StatusPill.h"
#include "UI/Bar/ToolsCluster.h"
#include "UI/Bar/UtilityCluster.h"
#include "UI/Shared/RoundedRegion.h"
#include "UI/Shared/Theme.h"
#include "UI/Shared/ToolTip.h"
#include "UI/Shared/Transitions.h"

#include <cmath>

namespace Lumenote {

namespace {

constexpr double arrivalScale = 0.97;
/// Surfaces begin so far below the card, which is where this bar begins.
constexpr int top =
    static_cast<int>(Theme::bottomBand - Theme::barHeight - Theme::barBottomPadding);

} // namespace

ControlBar::ControlBar(WorkbenchState& state, QWidget* parent)
    : QWidget(parent)
    , m_state(state)
    , m_close(new Capsule(this))
    , m_closeButton(new GlyphButton(QStringLiteral("close"), QStringLiteral("xmark"), m_close))
    , m_tools(new ToolsCluster(state, this))
    , m_utility(new UtilityCluster(state, this))
    , m_copy(new CopyButton(state, this))
    , m_status(new StatusPill(this))
    , m_morph(
          Motion::morph(),
          [this](double progress) {
              const auto wanted =
                  m_state.showsText() ? 0 : m_tools->wantedWidth(m_state.toolsExpanded());
              m_toolsWidth = m_fromToolsWidth + (wanted - m_fromToolsWidth) * progress;
              layOut();
          },
          this)
{
    setObjectName(QStringLiteral("controlBar"));
    setAccessibleName(tr("Controls"));
    m_close->setObjectName(QStringLiteral("closeCapsule"));
    setTip(*m_closeButton, tr("Close without copying (Esc)"));
    m_toolsWidth = m_tools->wantedWidth(state.toolsExpanded());
    m_status->hide();
    connect(m_closeButton, &QAbstractButton::clicked, this, &ControlBar::closeRequested);
    connect(&state, &WorkbenchState::toolsExpandedChanged, this, &ControlBar::animateTools);
    connect(&state, &WorkbenchState::showsTextChanged, this, &ControlBar::animateTools);
    connect(&state.model(), &WorkbenchModel::statusMessageChanged, this, &ControlBar::showStatus);
    connect(m_copy, &CopyButton::wantedWidthChanged, this, &ControlBar::layOut);
}

DragOutButton& ControlBar::dragOutButton()
{
    return m_utility->dragOutButton();
}

QList<Capsule*> ControlBar::pieces() const
{
    QList<Capsule*> shown;
    for (auto* const piece : QList<Capsule*>{m_close, m_tools, m_utility, m_copy, m_status})
        if (!piece->isHidden())
            shown.append(piece);
    return shown;
}

QRect ControlBar::row() const
{
    QRect row;
    for (const auto* const piece : pieces())
        row |= piece->surface();
    return row;
}

QRegion ControlBar::surfaces() const
{
    QRegion surfaces;
    for (const auto* const piece : pieces())
        surfaces += roundedRegion(piece->surface(), piece->surface().height() / 2);
    return surfaces;
}

/// The row and the message change places, unless one message follows the other.
void ControlBar::showStatus()
{
    const auto& message = m_state.model().statusMessage();
    const bool wasShown = !m_status->isHidden();
    if (message)
        m_status->setMessage(*message);
    if (message.has_value() != wasShown)
        showPieces(!message.has_value());
    layOut();
}

void ControlBar::showPieces(bool isShown)
{
    const auto before = pieces();
    for (auto* const piece : before)
        Transitions::leave(*piece, Motion::morph(), arrivalScale);
    for (auto* const piece : QList<Capsule*>{m_close, m_tools, m_utility, m_copy})
        piece->setVisible(isShown && (piece != m_tools || m_toolsWidth >= 1));
    m_status->setVisible(!isShown);
    layOut();
    const auto now = pieces();
    for (auto* const piece : now)
        Transitions::enter(*piece, Motion::morph(), arrivalScale);
}

void ControlBar::animateTools()
{
    m_fromToolsWidth = m_toolsWidth;
    m_morph.restart();
}

void ControlBar::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    layOut();
}

void ControlBar::layOut()
{
    const int toolsWidth = static_cast<int>(std::lround(m_toolsWidth));
    const bool hasTools = toolsWidth >= GlyphButton::side;
    const auto layout = BarLayout::of({.width = width(),
                                          .toolsWidth = hasTools ? toolsWidth : 0,
                                          .copyWidth = m_copy->wantedWidth()},
        top);
    m_close->setSurface(layout.close);
    m_tools->setSurface(layout.tools);
    m_tools->setVisible(hasTools && m_status->isHidden());
    m_utility->setSurface(layout.utility);
    m_copy->setSurface(layout.copy);
    m_status->setSurface(BarLayout::centred(width(), m_status->wantedWidth(), top));
    const auto inset = m_close->innerRect();
    m_closeButton->move(inset.center() - m_closeButton->rect().center());
    emit rowChanged();
}

} // namespace Lumenote
