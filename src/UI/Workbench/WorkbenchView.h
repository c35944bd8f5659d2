#pragma once

#include "Model/CaptureHistory.h"
#include "UI/Shared/Motion.h"
#include "UI/State/WorkbenchState.h"
#include "UI/Workbench/FloatingContent.h"

#include <QUuid>

namespace Platform {
class ImageDrag;
}

namespace Lumenote {

class CaptureFace;
class ControlBar;
class CornerButton;
class CornerCutter;
class ExtractedTextView;
class HistorySidebar;
class ToolTipController;
class ToolTipLayer;

/// All that a workbench window shows: the card with the capture or its text, what stands on the
/// card, the control bar below it, and the tips. It fills its window; the content is smaller by a
/// margin in which the card's shadow lies.
class WorkbenchView : public FloatingContent {
    Q_OBJECT

public:
    WorkbenchView(WorkbenchModel& model, CaptureHistory& history, Platform::ImageDrag& imageDrag,
        QWidget* window);

    WorkbenchState& state() { return m_state; }

    QRect cardRect() const override;
    /// The card, and a pill around the bar: its gaps move the window.
    QRegion inputRegion() const override;
    QRegion visibleRegion() const override;
    void setBlended(bool isBlended) override;
    void playEntrance() override;
    bool cancelGesture() override;

    /// Readies what is shown at @p size, the window's, before there is a window.
    void prepare(const QSize& size, double devicePixelRatio);

signals:
    void dismissRequested();
    void restoreRequested(const QUuid& id);

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void buildCard();
    void layOut();
    void swapFaces();
    void toggleSidebar();
    void openSidebar();
    void slideSidebar(double progress);
    void layOutSidebar();
    void refreshCornerButtons();
    void dragImageOut();

    WorkbenchModel& m_model;
    CaptureHistory& m_history;
    Platform::ImageDrag& m_imageDrag;
    WorkbenchState m_state;
    bool m_isBlended = true;
    QWidget* m_content;
    QWidget* m_card;
    CaptureFace* m_face;
    ExtractedTextView* m_text = nullptr; ///< While it is shown.
    CornerButton* m_copyAllText;
    CornerButton* m_historyButton;
    HistorySidebar* m_sidebar = nullptr; ///< While it is shown.
    CornerCutter* m_cutter;
    ControlBar* m_bar;
    ToolTipController* m_tips;
    ToolTipLayer* m_tipLayer;
    double m_slideAt = 0; ///< How much of the sidebar's way in it has come.
    double m_slideFrom = 0;
    Motion::Run m_slide;
};

} // namespace Lumenote
