#pragma once

#include "Capture/CaptureTarget.h"
#include "Capture/SelectionState.h"

#include <QFuture>
#include <QList>
#include <QObject>
#include <QPointF>

#include <functional>

namespace Lumenote {

/// One picking of a region or a window, across all displays: what the overlays share. It takes
/// gestures, without knowing where they come from, and ends exactly once. All points are in the
/// global space of selections. Main thread.
class SelectionSession final : public QObject {
    Q_OBJECT

public:
    /// What the session asks for when it needs it.
    struct Sources {
        std::function<QFuture<QList<CapturableWindow>>()> candidates; ///< Frontmost first.
        std::function<QPointF()> pointer; ///< Where it is now.
    };

    /// Without @p candidates they are asked for once, when window mode is first entered.
    explicit SelectionSession(Sources sources, QList<CapturableWindow> candidates = {});

    const SelectionState& state() const { return m_state; }
    SelectionMode mode() const { return m_state.mode; }
    bool hasEnded() const { return m_hasEnded; }
    /// What was picked, once the session has ended; nothing where the user has cancelled.
    const std::optional<CaptureTarget>& target() const { return m_target; }

    void beginDrag(QPointF point);
    void handleMouseDragged(QPointF point);
    /// Ends the session: with what was picked, or with nothing after a mere click.
    void handleMouseUp(QPointF point);
    void updateHover(QPointF point);
    /// Abandons a drag.
    void toggleMode();

    /// The one end; later calls do nothing.
    void finish(const std::optional<CaptureTarget>& target);

signals:
    void stateChanged();
    /// Comes once; nothing changes after it.
    void ended();

private:
    void extendDrag(QPointF point);
    void loadCandidatesIfNeeded();
    void takeCandidates(const QList<CapturableWindow>& candidates);

    const Sources m_sources;
    QList<CapturableWindow> m_candidates;
    bool m_candidatesLoaded; ///< Or being loaded.
    std::optional<QPointF> m_anchor; ///< Where the drag began.
    SelectionState m_state;
    bool m_hasEnded = false;
    std::optional<CaptureTarget> m_target;
};

} // namespace Lumenote
