#include "Model/AnnotationEdits.h"

#include <algorithm>
#include <utility>

namespace Lumenote {

void AnnotationEdits::add(const Annotation& annotation)
{
    auto annotations = m_annotations;
    annotations.append(annotation);
    commit(annotations);
}

void AnnotationEdits::remove(const QUuid& id)
{
    auto annotations = m_annotations;
    annotations.removeIf([&id](const Annotation& annotation) { return annotation.id == id; });
    commit(annotations);
}

void AnnotationEdits::beginGesture()
{
    if (!m_editBaseline)
        m_editBaseline = m_annotations;
}

bool AnnotationEdits::update(const Annotation& annotation)
{
    const auto hasId = [&annotation](const Annotation& other) { return other.id == annotation.id; };
    const auto found = std::find_if(m_annotations.cbegin(), m_annotations.cend(), hasId);
    if (found == m_annotations.cend())
        return false;
    m_annotations.replace(found - m_annotations.cbegin(), annotation);
    return true;
}

bool AnnotationEdits::endGesture()
{
    const auto baseline = std::exchange(m_editBaseline, std::nullopt);
    if (!baseline || *baseline == m_annotations)
        return false;
    pushUndo(*baseline);
    m_redoStack.clear();
    return true;
}

bool AnnotationEdits::undo()
{
    if (m_editBaseline || m_undoStack.isEmpty())
        return false;
    m_redoStack.append(m_annotations);
    m_annotations = m_undoStack.takeLast();
    return true;
}

bool AnnotationEdits::redo()
{
    if (m_editBaseline || m_redoStack.isEmpty())
        return false;
    pushUndo(m_annotations);
    m_annotations = m_redoStack.takeLast();
    return true;
}

void AnnotationEdits::pushUndo(const Snapshot& snapshot)
{
    m_undoStack.append(snapshot);
    if (m_undoStack.size() > undoLimit)
        m_undoStack.removeFirst();
}

void AnnotationEdits::commit(const Snapshot& annotations)
{
    pushUndo(m_annotations);
    m_redoStack.clear();
    m_annotations = annotations;
}

} // namespace Lumenote
