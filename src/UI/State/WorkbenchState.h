#pragma once

#include "Model/WorkbenchModel.h"

#include <QObject>

namespace Lumenote {

/// What a workbench shows of its document, and what its commands do. Knows no widget; all about the
/// capture itself is the model's.
class WorkbenchState : public QObject {
    Q_OBJECT

public:
    WorkbenchState(WorkbenchModel& model, QObject* parent);

    WorkbenchModel& model() const { return m_model; }

    bool showsText() const { return m_showsText; } ///< The text face instead of the capture.
    bool toolsExpanded() const { return m_toolsExpanded; }
    bool showsHistory() const { return m_showsHistory; }
    bool hoveringCapture() const { return m_hoveringCapture; } ///< The pointer is over the face.
    bool isDrawingToolActive() const;
    bool isStatusShown() const { return m_model.statusMessage().has_value(); }

    void setShowsHistory(bool showsHistory);
    void setHoveringCapture(bool isHovering);

    /// Closing the tools puts down the one in the hand.
    void toggleTools();
    /// Takes @p tool into the hand, or puts it down where it is there.
    void toggleTool(const CanvasTool& tool);

    /// To the text face and back. Neither the tool nor the filter survives the trip.
    void toggleText();
    bool canToggleText() const;
    QString helpForTextButton() const;

    /// The primary command: copies what the face shows, the text or the finished image.
    void finish();
    /// What the face shows of the text, or all of it.
    void copyText();

signals:
    void showsTextChanged();
    void toolsExpandedChanged();
    void showsHistoryChanged();
    void hoveringCaptureChanged();
    void layoutChanged(); ///< Any of these, the tool in the hand, or the status message.

private:
    void followActiveTool();
    void setToolsExpanded(bool isExpanded);

    WorkbenchModel& m_model;
    bool m_showsText = false;
    bool m_toolsExpanded = false;
    bool m_showsHistory = false;
    bool m_hoveringCapture = false;
};

} // namespace Lumenote
