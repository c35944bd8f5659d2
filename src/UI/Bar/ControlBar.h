#pragma once

#include "UI/Shared/Motion.h"
#include "UI/State/WorkbenchState.h"

#include <QRegion>
#include <QWidget>

namespace Lumenote {

class Capsule;
class CopyButton;
class DragOutButton;
class GlyphButton;
class StatusPill;
class ToolsCluster;
class UtilityCluster;

/// The commands of a workbench, in four surfaces below the card; while there is something to tell,
/// that takes their place. Presses between the surfaces go on to the parent, which moves the window
/// by them.
class ControlBar : public QWidget {
    Q_OBJECT

public:
    ControlBar(WorkbenchState& state, QWidget* parent);

    DragOutButton& dragOutButton();

    /// What is solid, in its own coordinates: one pill around all of the row, gaps included.
    QRect row() const;
    /// Its surfaces, without the gaps, as they are to be cut out where nothing blends windows.
    QRegion surfaces() const;

signals:
    void closeRequested();
    void rowChanged(); ///< As row() and surfaces() tell.

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void showStatus();
    void showPieces(bool isShown);
    void animateTools();
    void layOut();
    QList<Capsule*> pieces() const;

    WorkbenchState& m_state;
    Capsule* m_close;
    GlyphButton* m_closeButton;
    ToolsCluster* m_tools;
    UtilityCluster* m_utility;
    CopyButton* m_copy;
    StatusPill* m_status;
    double m_toolsWidth = 0; ///< On its way.
    double m_fromToolsWidth = 0;
    Motion::Run m_morph;
};

} // namespace Lumenote
