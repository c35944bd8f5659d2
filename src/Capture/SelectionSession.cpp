#include "Capture/SelectionSession.h"

#include "Capture/DisplayCapture.h"
#include "Platform/Tasks.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace Lumenote {

namespace {

constexpr double smallestSide = 5; ///< Of a region, in points; less is a click.

QRectF rectBetween(QPointF a, QPointF b)
{
    return {std::min(a.x(), b.x()), std::min(a.y(), b.y()), std::abs(a.x() - b.x()),
        std::abs(a.y() - b.y())};
}

} // namespace

SelectionSession::SelectionSession(Sources sources, QList<CapturableWindow> candidates)
    : m_sources(std::move(sources))
    , m_candidates(std::move(candidates))
    , m_candidatesLoaded(!m_candidates.isEmpty())
{
}

void SelectionSession::beginDrag(QPointF point)
{
    m_anchor = point;
    m_state.selection.reset();
    emit stateChanged();
}

void SelectionSession::extendDrag(QPointF point)
{
    if (!m_anchor)
        return;
    m_state.selection = rectBetween(*m_anchor, point);
    emit stateChanged();
}

void SelectionSession::handleMouseDragged(QPointF point)
{
    if (mode() == SelectionMode::window)
        updateHover(point);
    else
        extendDrag(point);
}

void SelectionSession::handleMouseUp(QPointF point)
{
    if (mode() == SelectionMode::window) {
        const auto window = DisplayCapture::windowAt(point, m_candidates);
        finish(window ? std::optional<CaptureTarget>(WindowTarget{window->id}) : std::nullopt);
        return;
    }
    extendDrag(point);
    const auto& selection = m_state.selection;
    const bool isBigEnough =
        selection && selection->width() >= smallestSide && selection->height() >= smallestSide;
    finish(isBigEnough ? std::optional<CaptureTarget>(RegionTarget{*selection}) : std::nullopt);
}

void SelectionSession::updateHover(QPointF point)
{
    if (mode() != SelectionMode::window)
        return;
    const auto hit = DisplayCapture::windowAt(point, m_candidates);
    if (hit == m_state.hoveredWindow)
        return;
    m_state.hoveredWindow = hit;
    emit stateChanged();
}

void SelectionSession::toggleMode()
{
    const bool isRegion = mode() == SelectionMode::region;
    m_anchor.reset();
    m_state = {.mode = isRegion ? SelectionMode::window : SelectionMode::region};
    if (mode() == SelectionMode::window) {
        loadCandidatesIfNeeded();
        m_state.hoveredWindow = DisplayCapture::windowAt(m_sources.pointer(), m_candidates);
    }
    emit stateChanged();
}

void SelectionSession::loadCandidatesIfNeeded()
{
    if (std::exchange(m_candidatesLoaded, true))
        return;
    Platform::whenFinished(m_sources.candidates(), this,
        [this](const QList<CapturableWindow>& candidates) { takeCandidates(candidates); });
}

void SelectionSession::takeCandidates(const QList<CapturableWindow>& candidates)
{
    if (m_hasEnded)
        return;
    m_candidates = candidates;
    updateHover(m_sources.pointer());
    emit stateChanged();
}

void SelectionSession::finish(const std::optional<CaptureTarget>& target)
{
    if (std::exchange(m_hasEnded, true))
        return;
    m_target = target;
    emit ended();
}

} // namespace Lumenote
