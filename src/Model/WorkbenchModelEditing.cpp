// How the annotations of a WorkbenchModel change.

#include "Model/WorkbenchModel.h"

#include <algorithm>

namespace Lumenote {

namespace {

bool holds(const QList<Annotation>& annotations, const QUuid& id)
{
    return std::any_of(annotations.cbegin(), annotations.cend(),
        [&id](const Annotation& annotation) { return annotation.id == id; });
}

} // namespace

bool WorkbenchModel::hasUnsavedWork() const
{
    return !annotations().isEmpty() || canUndo() || canRedo();
}

void WorkbenchModel::setActiveTool(const std::optional<CanvasTool>& tool)
{
    if (tool && !tool->isSelect())
        setSelectedAnnotationID(std::nullopt);
    if (tool == m_activeTool)
        return;
    m_activeTool = tool;
    emit activeToolChanged();
}

void WorkbenchModel::setSelectedAnnotationID(const std::optional<QUuid>& id)
{
    const auto selected = id && holds(annotations(), *id) ? id : std::nullopt;
    if (selected == m_selectedAnnotationID)
        return;
    m_selectedAnnotationID = selected;
    emit selectedAnnotationIDChanged();
}

void WorkbenchModel::addAnnotation(const Annotation& annotation)
{
    m_edits.add(annotation);
    annotationsWereAssigned();
    emit undoChanged();
}

void WorkbenchModel::beginAnnotationEdit()
{
    m_edits.beginGesture();
}

void WorkbenchModel::updateAnnotation(const Annotation& annotation)
{
    if (m_edits.update(annotation))
        annotationsWereAssigned();
}

void WorkbenchModel::endAnnotationEdit()
{
    if (m_edits.endGesture())
        emit undoChanged();
}

void WorkbenchModel::deleteSelectedAnnotation()
{
    if (!m_selectedAnnotationID)
        return;
    m_edits.remove(*m_selectedAnnotationID);
    annotationsWereAssigned();
    emit undoChanged();
}

void WorkbenchModel::undo()
{
    if (!m_edits.undo())
        return;
    annotationsWereAssigned();
    emit undoChanged();
}

void WorkbenchModel::redo()
{
    if (!m_edits.redo())
        return;
    annotationsWereAssigned();
    emit undoChanged();
}

/// What follows from every change of the annotations, wherever it came from.
void WorkbenchModel::annotationsWereAssigned()
{
    releaseCaches();
    setSelectedAnnotationID(m_selectedAnnotationID); // Which may be one that has gone.
    emit annotationsChanged();
}

} // namespace Lumenote
