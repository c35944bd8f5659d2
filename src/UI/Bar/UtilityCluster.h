#pragma once

#include "UI/Bar/DragOutButton.h"
#include "UI/Shared/Capsule.h"
#include "UI/State/WorkbenchState.h"

class QMenu;

namespace Lumenote {

class Spinner;

/// What leaves the workbench, and the way to the text.
class UtilityCluster : public Capsule {
    Q_OBJECT

public:
    UtilityCluster(WorkbenchState& state, QWidget* parent);

    DragOutButton& dragOutButton() { return *m_dragOut; }

protected:
    void placeContents() override;

private:
    void refreshTextButton();
    void showMenu();
    void fillMenu(QMenu& menu);

    WorkbenchState& m_state;
    DragOutButton* m_dragOut;
    GlyphButton* m_text;
    GlyphButton* m_more;
    Spinner* m_spinner; ///< On the text button.
};

} // namespace Lumenote
