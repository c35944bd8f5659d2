#include "UI/Bar/UtilityCluster.h"

#include "Platform/DesktopWords.h"
#include "UI/Bar/BarLayout.h"
#include "UI/Shared/Spinner.h"
#include "UI/Shared/ToolTip.h"

#include <QMenu>

#include <array>

namespace Lumenote {

namespace {

constexpr double spinnerDiameter = 14;

QAction* addCommand(QMenu& menu, const QString& text, const QString& key)
{
    return menu.addAction(text + u'\t' + Platform::inDesktopWords(key));
}

} // namespace

UtilityCluster::UtilityCluster(WorkbenchState& state, QWidget* parent)
    : Capsule(parent)
    , m_state(state)
    , m_dragOut(new DragOutButton(this))
    , m_text(new GlyphButton(QStringLiteral("text"), {}, this))
    , m_more(new GlyphButton(QStringLiteral("more"), QStringLiteral("ellipsis"), this))
    , m_spinner(new Spinner(spinnerDiameter, m_text))
{
    setObjectName(QStringLiteral("utility"));
    setAccessibleName(tr("Image and text"));
    setTip(*m_dragOut, tr("Drag the image into another app (⌥-drag the capture does it too)"));
    setTip(*m_more, tr("More…"));
    m_spinner->move((GlyphButton::side - m_spinner->width()) / 2,
        (GlyphButton::side - m_spinner->height()) / 2);
    auto& model = state.model();
    connect(m_dragOut, &QAbstractButton::clicked, &model,
        [&model] { model.flash(tr("Drag this into another app")); });
    connect(m_text, &QAbstractButton::clicked, &state, &WorkbenchState::toggleText);
    connect(m_more, &QAbstractButton::clicked, this, &UtilityCluster::showMenu);
    connect(&model, &WorkbenchModel::recognitionChanged, this, &UtilityCluster::refreshTextButton);
    connect(&model, &WorkbenchModel::textChanged, this, &UtilityCluster::refreshTextButton);
    connect(&state, &WorkbenchState::showsTextChanged, this, &UtilityCluster::refreshTextButton);
    refreshTextButton();
}

void UtilityCluster::placeContents()
{
    const auto surface = innerRect();
    const std::array<QWidget*, 3> buttons{m_dragOut, m_text, m_more};
    const auto lefts = ClusterLayout::positions(QList<int>(buttons.size(), GlyphButton::side));
    const auto top = surface.top() + (surface.height() - GlyphButton::side) / 2;
    for (std::size_t i = 0; i < buttons.size(); ++i)
        buttons.at(i)->move(surface.left() + lefts.at(static_cast<qsizetype>(i)), top);
}

void UtilityCluster::refreshTextButton()
{
    const bool isReading = m_state.model().isRecognizing() && !m_state.showsText();
    m_spinner->setVisible(isReading);
    m_text->setActive(m_state.showsText());
    m_text->setEnabled(m_state.canToggleText());
    if (isReading)
        m_text->setGlyph({});
    else
        m_text->setGlyph(
            m_state.showsText() ? QStringLiteral("photo") : QStringLiteral("text.viewfinder"));
    setTip(*m_text, m_state.helpForTextButton());
}

void UtilityCluster::showMenu()
{
    auto* const menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->setObjectName(QStringLiteral("moreMenu"));
    fillMenu(*menu);
    menu->popup(m_more->mapToGlobal(QPoint(0, m_more->height() + 8)));
}

void UtilityCluster::fillMenu(QMenu& menu)
{
    auto& model = m_state.model();
    connect(addCommand(menu, tr("Save Image…"), QStringLiteral("⌘S")), &QAction::triggered, &model,
        &WorkbenchModel::saveImage);
    if (model.displayText().isEmpty())
        return;
    connect(addCommand(menu, tr("Copy Text"), QStringLiteral("⌥⌘C")), &QAction::triggered, &m_state,
        &WorkbenchState::copyText);
    connect(menu.addAction(tr("Copy Text as Code Block")), &QAction::triggered, &model,
        [&model] { model.copyText(true); });
}

} // namespace Lumenote
