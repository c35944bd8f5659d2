#pragma once

#include "Platform/DisplayServer.h"
#include "Platform/Tasks.h"
#include "Stopwatch.h"

namespace Lumenote::Bench {

/// Another display server, with the times when it was asked and when it has answered.
class WatchedDisplayServer final : public Platform::DisplayServer {
public:
    struct Answer {
        Clock::time_point asked;
        Clock::time_point came; ///< In the main thread.
        double time() const { return milliseconds(came - asked); }
    };

    explicit WatchedDisplayServer(DisplayServer& server)
        : m_server(server)
    {
        connect(&server, &DisplayServer::screensChanged, this, &DisplayServer::screensChanged);
        connect(
            &server, &DisplayServer::compositorChanged, this, &DisplayServer::compositorChanged);
    }

    Answer lastListing; ///< Of windows and displays.
    Answer lastCapture;

    QList<Platform::Screen> screens() const override { return m_server.screens(); }
    QPointF pointerPosition() const override { return m_server.pointerPosition(); }
    bool hasCompositor() const override { return m_server.hasCompositor(); }
    bool isRecordingGranted() const override { return m_server.isRecordingGranted(); }
    bool requestRecording() override { return m_server.requestRecording(); }
    QFuture<Platform::Result<Platform::ShareableContent>> shareableContent(
        Platform::ListedWindows windows) override
    {
        lastListing.asked = Clock::now();
        return watched(m_server.shareableContent(windows), lastListing);
    }
    QFuture<Platform::Result<QImage>> captureImage(const Platform::ContentFilter& filter,
        const Platform::CaptureConfiguration& configuration) override
    {
        lastCapture.asked = Clock::now();
        return watched(m_server.captureImage(filter, configuration), lastCapture);
    }

private:
    template <typename T>
    QFuture<T> watched(const QFuture<T>& future, Answer& answer)
    {
        Platform::whenFinished(future, this, [&answer](const T&) { answer.came = Clock::now(); });
        return future;
    }

    DisplayServer& m_server;
};

} // namespace Lumenote::Bench
