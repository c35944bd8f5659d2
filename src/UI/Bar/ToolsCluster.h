#pragma once

#include "UI/Shared/Capsule.h"
#include "UI/Shared/GlyphButton.h"
#include "UI/State/WorkbenchState.h"

#include <QList>

#include <functional>

namespace Lumenote {

/// The button that opens the row of tools, and the row.
class ToolsCluster : public Capsule {
    Q_OBJECT

public:
    ToolsCluster(WorkbenchState& state, QWidget* parent);

    /// Of the surface, with the tools open or not.
    int wantedWidth(bool isExpanded) const;

protected:
    void placeContents() override;
    void paintEvent(QPaintEvent* event) override;

private:
    struct Tool {
        GlyphButton* button; ///< Null for a divider.
        std::function<bool()> isActive;
    };

    void addToggle();
    void addTool(const CanvasTool& tool, const char* glyph, const QString& title);
    void addDivider() { m_tools.append(Tool{nullptr, {}}); }
    GlyphButton* addButton(const char* glyph, const QString& name, const QString& tip);
    void refresh();
    QList<int> widths() const;

    WorkbenchState& m_state;
    GlyphButton* m_toggle;
    GlyphButton* m_undo;
    GlyphButton* m_redo;
    QList<Tool> m_tools; ///< In their order, the toggle left out.
};

} // namespace Lumenote
