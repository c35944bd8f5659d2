#include "UI/Bar/ToolsCluster.h"

#include "UI/Bar/BarLayout.h"
#include "UI/Shared/Theme.h"
#include "UI/Shared/ToolTip.h"

#include <QPainter>

#include <span>
#include <utility>

namespace Lumenote {

namespace {

namespace Metrics {
constexpr int dividerHeight = 16;
constexpr double dividerOpacity = 0.2;
} // namespace Metrics

struct ToolLook {
    const char* glyph;
    const char* title;
};

ToolLook look(AnnotationTool tool)
{
    switch (tool) {
    case AnnotationTool::rectangle:
        return {"rectangle", QT_TR_NOOP("Box")};
    case AnnotationTool::arrow:
        return {"arrow.up.right", QT_TR_NOOP("Arrow")};
    case AnnotationTool::highlight:
        return {"highlighter", QT_TR_NOOP("Highlight")};
    case AnnotationTool::blackout:
        return {"eye.slash", QT_TR_NOOP("Black Out")};
    case AnnotationTool::whiteout:
        return {"eraser", QT_TR_NOOP("White Out")};
    }
    return {};
}

} // namespace

ToolsCluster::ToolsCluster(WorkbenchState& state, QWidget* parent)
    : Capsule(parent)
    , m_state(state)
{
    setObjectName(QStringLiteral("tools"));
    setAccessibleName(tr("Annotation tools"));
    m_toggle = new GlyphButton(
        QStringLiteral("toolsToggle"), QStringLiteral("pencil.tip.crop.circle"), this);
    connect(m_toggle, &QAbstractButton::clicked, &state, &WorkbenchState::toggleTools);
    addTool(CanvasTool::select(), "cursorarrow", tr("Select & Move"));
    for (const auto& group : {std::span<const AnnotationTool>(AnnotationTools::drawing),
             std::span<const AnnotationTool>(AnnotationTools::censor)}) {
        addDivider();
        for (const auto tool : group)
            addTool(CanvasTool::draw(tool), look(tool).glyph, tr(look(tool).title));
    }
    addDivider();
    m_undo = addButton("arrow.uturn.backward", QStringLiteral("undo"), tr("Undo (⌘Z)"));
    m_redo = addButton("arrow.uturn.forward", QStringLiteral("redo"), tr("Redo (⇧⌘Z)"));
    auto& model = state.model();
    connect(m_undo, &QAbstractButton::clicked, &model, &WorkbenchModel::undo);
    connect(m_redo, &QAbstractButton::clicked, &model, &WorkbenchModel::redo);
    connect(&model, &WorkbenchModel::undoChanged, this, &ToolsCluster::refresh);
    connect(&model, &WorkbenchModel::activeToolChanged, this, &ToolsCluster::refresh);
    connect(&state, &WorkbenchState::toolsExpandedChanged, this, &ToolsCluster::refresh);
    refresh();
}

GlyphButton* ToolsCluster::addButton(const char* glyph, const QString& name, const QString& tip)
{
    auto* const button = new GlyphButton(name, QString::fromLatin1(glyph), this);
    setTip(*button, tip);
    m_tools.append(Tool{button, {}});
    return button;
}

void ToolsCluster::addTool(const CanvasTool& tool, const char* glyph, const QString& title)
{
    const auto name =
        tool.isSelect() ? QStringLiteral("select") : AnnotationTools::rawValue(*tool.drawn);
    auto* const button = addButton(glyph, name, title);
    button->setCheckable(true); // For those who are told rather than shown.
    connect(button, &QAbstractButton::clicked, this, [this, tool] {
        m_state.toggleTool(tool);
        refresh(); // A click has turned the check mark over, whatever became of the tool.
    });
    m_tools.last().isActive = [this, tool] { return m_state.model().activeTool() == tool; };
}

void ToolsCluster::refresh()
{
    const bool isExpanded = m_state.toolsExpanded();
    m_toggle->setActive(isExpanded);
    setTip(*m_toggle, isExpanded ? tr("Close tools") : tr("Annotate or censor"));
    for (const auto& tool : std::as_const(m_tools))
        if (tool.isActive) {
            tool.button->setActive(tool.isActive());
            tool.button->setChecked(tool.isActive());
        }
    m_undo->setEnabled(m_state.model().canUndo());
    m_redo->setEnabled(m_state.model().canRedo());
}

QList<int> ToolsCluster::widths() const
{
    QList<int> widths{GlyphButton::side};
    for (const auto& tool : m_tools)
        widths.append(tool.button != nullptr ? GlyphButton::side : ClusterLayout::divider);
    return widths;
}

int ToolsCluster::wantedWidth(bool isExpanded) const
{
    return ClusterLayout::width(isExpanded ? widths() : QList<int>{GlyphButton::side});
}

void ToolsCluster::placeContents()
{
    const auto surface = innerRect();
    const auto lefts = ClusterLayout::positions(widths());
    const auto top = surface.top() + (surface.height() - GlyphButton::side) / 2;
    m_toggle->move(surface.left() + lefts.constFirst(), top);
    for (qsizetype i = 0; i < m_tools.size(); ++i) {
        auto* const button = m_tools.at(i).button;
        if (button == nullptr)
            continue;
        const auto left = lefts.at(i + 1);
        button->move(surface.left() + left, top);
        button->setVisible(left + GlyphButton::side <= surface.width());
    }
}

void ToolsCluster::paintEvent(QPaintEvent* event)
{
    Capsule::paintEvent(event);
    QPainter painter(this);
    const auto surface = innerRect();
    const auto lefts = ClusterLayout::positions(widths());
    for (qsizetype i = 0; i < m_tools.size(); ++i)
        if (m_tools.at(i).button == nullptr && lefts.at(i + 1) < surface.width())
            painter.fillRect(surface.left() + lefts.at(i + 1),
                surface.center().y() - Metrics::dividerHeight / 2 + 1, ClusterLayout::divider,
                Metrics::dividerHeight, Theme::white(Metrics::dividerOpacity));
}

} // namespace Lumenote
