#pragma once

#include "Model/Annotation.h"

#include <QList>

#include <optional>

namespace Lumenote {

/// The annotations of one capture, and their undo history: whole snapshots, which share what didn't
/// change. Operations that say so answer whether the annotations were assigned.
class AnnotationEdits {
public:
    using Snapshot = QList<Annotation>; ///< In stacking order, the last on top.

    static constexpr qsizetype undoLimit = 100;

    const Snapshot& annotations() const { return m_annotations; }
    bool canUndo() const { return !m_undoStack.isEmpty(); }
    bool canRedo() const { return !m_redoStack.isEmpty(); }
    qsizetype undoDepth() const { return m_undoStack.size(); }

    /// Puts @p annotation on top, as one undo step.
    void add(const Annotation& annotation);

    /// Removes what has @p id, as one undo step.
    void remove(const QUuid& id);

    /// Opens a gesture, which is one undo step however many changes it makes. Where one is open
    /// already, that goes on.
    void beginGesture();

    /// Replaces the annotation of the same id in its place in the stack; false where there is none.
    bool update(const Annotation& annotation);

    /// Closes the gesture; true when it changed something and so made an undo step.
    bool endGesture();

    /// False, and nothing changes, where there is nothing to undo or redo, and in the middle of a
    /// gesture, whose step would come to lie behind what was undone.
    bool undo();
    bool redo();

private:
    void pushUndo(const Snapshot& snapshot);
    void commit(const Snapshot& annotations);

    Snapshot m_annotations;
    QList<Snapshot> m_undoStack; ///< Oldest first.
    QList<Snapshot> m_redoStack;
    std::optional<Snapshot> m_editBaseline; ///< The annotations when the open gesture began.
};

} // namespace Lumenote
