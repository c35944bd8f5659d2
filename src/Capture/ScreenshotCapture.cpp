#include "Capture/ScreenshotCapture.h"

#include "Capture/DisplayCapture.h"
#include "Capture/RegionSelector.h"
#include "Capture/ScreenGeometry.h"
#include "Platform/Tasks.h"

#include <QPromise>

#include <memory>
#include <utility>

namespace Lumenote::ScreenshotCapture {

namespace {

using Promise = std::shared_ptr<QPromise<CaptureOutcome>>;

Promise started()
{
    auto promise = std::make_shared<QPromise<CaptureOutcome>>();
    promise->start();
    return promise;
}

void answer(const Promise& promise, const CaptureOutcome& outcome)
{
    promise->addResult(outcome);
    promise->finish();
}

CaptureOutcome outcome(const CaptureResult& result)
{
    if (result)
        return *result;
    return result.error();
}

QFuture<CaptureResult> capture(Platform::DisplayServer& server, const CaptureTarget& target)
{
    if (const auto* const region = std::get_if<RegionTarget>(&target))
        return DisplayCapture::capture(server, region->rect);
    return DisplayCapture::capture(server, std::get<WindowTarget>(target).id);
}

/// Answers with the outcome of the capture.
void captureAndAnswer(
    Platform::DisplayServer& server, const CaptureTarget& target, const Promise& promise)
{
    Platform::whenFinished(capture(server, target), &server,
        [promise](const CaptureResult& result) { answer(promise, outcome(result)); });
}

} // namespace

QFuture<CaptureOutcome> captureInteractive(
    Platform::DisplayServer& server, Platform::OverlayKeyboard& keyboard, std::stop_token stop)
{
    const auto promise = started();
    Platform::whenFinished(RegionSelector::selectTarget(server, keyboard, std::move(stop)), &server,
        [promise, &server](const std::optional<CaptureTarget>& target) {
            if (target)
                captureAndAnswer(server, *target, promise);
            else
                answer(promise, CaptureCancelled());
        });
    return promise->future();
}

QFuture<CaptureOutcome> captureFullScreen(
    Platform::DisplayServer& server, const Platform::Screen& screen)
{
    const auto promise = started();
    const double reference = ScreenGeometry::flipReference(server.screens());
    captureAndAnswer(
        server, RegionTarget{ScreenGeometry::flipped(screen.frame, reference)}, promise);
    return promise->future();
}

} // namespace Lumenote::ScreenshotCapture
