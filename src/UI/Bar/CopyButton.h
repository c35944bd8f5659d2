#pragma once

#include "UI/Shared/Capsule.h"
#include "UI/State/WorkbenchState.h"

#include <QAbstractButton>

namespace Lumenote {

/// The primary action: a capsule of the accent colour that copies what the face shows.
class CopyButton : public Capsule {
    Q_OBJECT

public:
    CopyButton(WorkbenchState& state, QWidget* parent);

    int wantedWidth() const; ///< Of the surface.

signals:
    void wantedWidthChanged();

protected:
    void placeContents() override;

private:
    class Label;

    void refresh();

    WorkbenchState& m_state;
    Label* m_label;
};

} // namespace Lumenote
