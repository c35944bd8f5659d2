#include "UI/State/WorkbenchState.h"

namespace Lumenote {

WorkbenchState::WorkbenchState(WorkbenchModel& model, QObject* parent)
    : QObject(parent)
    , m_model(model)
{
    connect(&model, &WorkbenchModel::activeToolChanged, this, &WorkbenchState::followActiveTool);
    connect(&model, &WorkbenchModel::activeToolChanged, this, &WorkbenchState::layoutChanged);
    connect(&model, &WorkbenchModel::statusMessageChanged, this, &WorkbenchState::layoutChanged);
    for (const auto change :
        {&WorkbenchState::showsTextChanged, &WorkbenchState::toolsExpandedChanged,
            &WorkbenchState::showsHistoryChanged, &WorkbenchState::hoveringCaptureChanged})
        connect(this, change, this, &WorkbenchState::layoutChanged);
}

bool WorkbenchState::isDrawingToolActive() const
{
    return m_model.activeTool() && !m_model.activeTool()->isSelect();
}

void WorkbenchState::followActiveTool()
{
    const auto& tool = m_model.activeTool();
    if (!tool)
        return;
    if (tool->isSelect())
        setToolsExpanded(true);
    else
        setShowsHistory(false);
}

void WorkbenchState::setToolsExpanded(bool isExpanded)
{
    if (isExpanded == m_toolsExpanded)
        return;
    m_toolsExpanded = isExpanded;
    emit toolsExpandedChanged();
}

void WorkbenchState::setShowsHistory(bool showsHistory)
{
    if (showsHistory == m_showsHistory)
        return;
    m_showsHistory = showsHistory;
    emit showsHistoryChanged();
}

void WorkbenchState::setHoveringCapture(bool isHovering)
{
    if (isHovering == m_hoveringCapture)
        return;
    m_hoveringCapture = isHovering;
    emit hoveringCaptureChanged();
}

void WorkbenchState::toggleTools()
{
    setToolsExpanded(!m_toolsExpanded);
    if (!m_toolsExpanded)
        m_model.setActiveTool(std::nullopt);
}

void WorkbenchState::toggleTool(const CanvasTool& tool)
{
    const bool isInHand = m_model.activeTool() == tool;
    m_model.setActiveTool(isInHand ? std::nullopt : std::optional(tool));
}

void WorkbenchState::toggleText()
{
    m_model.setActiveTool(std::nullopt);
    m_showsText = !m_showsText;
    if (!m_showsText)
        m_model.setTextQuery({});
    emit showsTextChanged();
}

bool WorkbenchState::canToggleText() const
{
    return m_showsText || m_model.isRecognizing() || m_model.recognitionFailed()
        || !m_model.displayText().isEmpty();
}

QString WorkbenchState::helpForTextButton() const
{
    if (m_showsText)
        return tr("Back to the capture (⌘T)");
    if (m_model.recognitionFailed())
        return tr("Text recognition didn't finish (⌘T to retry)");
    if (m_model.isRecognizing() && m_model.awaitingModels())
        return tr("Vision is building its text models — once per install, and again after a macOS "
                  "update; this capture is waiting on that");
    if (m_model.isRecognizing())
        return tr("Extracting text from the capture (⌘T to watch)");
    return tr("Show the extracted text (⌘T)");
}

void WorkbenchState::finish()
{
    if (m_showsText && !m_model.displayText().isEmpty())
        m_model.copyText(false);
    else
        m_model.copyImage();
}

void WorkbenchState::copyText()
{
    if (m_showsText)
        m_model.copyText(false);
    else
        m_model.copyRecognizedText();
}

} // namespace Lumenote
