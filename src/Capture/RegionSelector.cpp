#include "Capture/RegionSelector.h"

#include "Capture/DisplayCapture.h"
#include "Capture/ScreenGeometry.h"
#include "Capture/SelectionSession.h"
#include "Capture/SelectionWindow.h"
#include "Log.h"
#include "Platform/DisplayServer.h"
#include "Platform/OverlayKeyboard.h"
#include "Platform/Tasks.h"

#include <QPromise>
#include <QTimer>

#include <chrono>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace Lumenote::RegionSelector {

namespace {

using Answer = std::optional<CaptureTarget>;

constexpr auto closingDelay = std::chrono::milliseconds(200);

/// One running selection: the session, its overlays, and all that may end it. Deletes itself then.
class Picker final : public QObject {
public:
    Picker(
        Platform::DisplayServer& server, Platform::OverlayKeyboard& keyboard, std::stop_token stop);

    QFuture<Answer> begin();

private:
    struct Overlay {
        Platform::Screen screen;
        std::unique_ptr<SelectionWindow> window;
    };

    void makeOverlays();
    void connectSources();
    void showDisplays();
    void takeBackdrops();
    void showOverlays();
    void end();

    Platform::DisplayServer& m_server;
    Platform::OverlayKeyboard& m_keyboard;
    QPromise<Answer> m_promise;
    SelectionSession m_session;
    std::vector<Overlay> m_overlays;
    qsizetype m_backdropsToCome = 0;
    std::stop_callback<std::function<void()>> m_stop; ///< Goes first: it may call any time.
};

Picker::Picker(
    Platform::DisplayServer& server, Platform::OverlayKeyboard& keyboard, std::stop_token stop)
    : QObject(&server)
    , m_server(server)
    , m_keyboard(keyboard)
    , m_session({.candidates = [&server] { return DisplayCapture::capturableWindows(server); },
          .pointer =
              [&server] {
                  return ScreenGeometry::flipped(
                      server.pointerPosition(), ScreenGeometry::flipReference(server.screens()));
              }})
    , m_stop(std::move(stop), [this] {
        QMetaObject::invokeMethod(
            this, [this] { m_session.finish(std::nullopt); }, Qt::QueuedConnection);
    })
{
}

QFuture<Answer> Picker::begin()
{
    m_promise.start();
    m_keyboard.take();
    connectSources();
    makeOverlays();
    showDisplays();
    return m_promise.future();
}

void Picker::makeOverlays()
{
    const auto screens = m_server.screens();
    const auto frames = ScreenGeometry::globalFrames(screens);
    for (qsizetype i = 0; i < screens.size(); ++i)
        m_overlays.push_back({screens.at(i),
            std::make_unique<SelectionWindow>(
                frames.at(i), screens.at(i).backingScaleFactor, m_session)});
}

void Picker::connectSources()
{
    connect(&m_keyboard, &Platform::OverlayKeyboard::escapePressed, &m_session,
        [this] { m_session.finish(std::nullopt); });
    connect(&m_keyboard, &Platform::OverlayKeyboard::spacePressed, &m_session,
        &SelectionSession::toggleMode);
    connect(&m_server, &Platform::DisplayServer::screensChanged, &m_session, [this] {
        Log::write(
            Log::picker, QStringLiteral("display arrangement changed — cancelling the picker"));
        m_session.finish(std::nullopt);
    });
    connect(
        &m_server, &Platform::DisplayServer::compositorChanged, this, [this] { showDisplays(); });
    connect(&m_session, &SelectionSession::ended, this, &Picker::end);
}

/// Shows the overlays with the displays in them: through them, or as pictures.
void Picker::showDisplays()
{
    if (!m_server.hasCompositor()) {
        takeBackdrops();
        return;
    }
    for (const auto& overlay : m_overlays)
        overlay.window->setBackdrop({});
    showOverlays();
}

/// The overlays are shown once all pictures have come, so that none of them is in another's.
void Picker::takeBackdrops()
{
    m_backdropsToCome += static_cast<qsizetype>(m_overlays.size());
    for (const auto& overlay : m_overlays) {
        const auto& screen = overlay.screen;
        const auto pixels = screen.frame.size() * screen.backingScaleFactor;
        const auto picture = m_server.captureImage(Platform::DisplayFilter{screen.displayNumber},
            {.sourceRect = {{}, screen.frame.size()},
                .pixelSize = pixels.toSize(),
                .colorSpace = {}});
        Platform::whenFinished(picture, this,
            [this, window = overlay.window.get()](const Platform::Result<QImage>& backdrop) {
                if (m_session.hasEnded())
                    return;
                window->setBackdrop(
                    m_server.hasCompositor() ? QImage() : backdrop.value_or(QImage()));
                if (--m_backdropsToCome == 0)
                    showOverlays();
            });
    }
}

void Picker::showOverlays()
{
    for (const auto& overlay : m_overlays)
        overlay.window->show();
}

void Picker::end()
{
    m_server.disconnect(this);
    m_server.disconnect(&m_session);
    m_keyboard.disconnect(&m_session);
    m_keyboard.giveBack();
    for (const auto& overlay : m_overlays) {
        overlay.window->leaveSession();
        overlay.window->hide();
    }
    m_promise.addResult(m_session.target());
    m_promise.finish();
    // Out of the events of the overlays, and once a capture that follows is through: to free what
    // they hold takes the display server a while.
    if (m_session.target())
        QTimer::singleShot(closingDelay, this, &QObject::deleteLater);
    else
        deleteLater();
}

} // namespace

QFuture<Answer> selectTarget(
    Platform::DisplayServer& server, Platform::OverlayKeyboard& keyboard, std::stop_token stop)
{
    if (server.screens().isEmpty())
        return QtFuture::makeReadyFuture(Answer());
    auto* const picker = new Picker(server, keyboard, std::move(stop));
    return picker->begin();
}

} // namespace Lumenote::RegionSelector
