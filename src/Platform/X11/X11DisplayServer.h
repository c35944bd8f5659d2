#pragma once

#include "Platform/DisplayServer.h"

#include <QHash>
#include <QSet>
#include <QTimer>

#include <chrono>
#include <memory>

class QScreen;
class QWindow;

namespace Platform {

class ApplicationNames;

namespace X11 {
class Session;
struct DisplayPlace;
class OwnFrames;
struct OwnWindows;
} // namespace X11

/// The display server by the X protocol. Reading the screen is granted where the server trusts us,
/// and there is no way to ask for it.
class X11DisplayServer final : public DisplayServer {
    Q_OBJECT

public:
    /// Takes a session that was opened before the application connected Qt to the same server.
    explicit X11DisplayServer(std::unique_ptr<X11::Session> session);
    ~X11DisplayServer() override;

    QList<Screen> screens() const override;
    QPointF pointerPosition() const override; ///< Asks the server, as Qt does.
    bool hasCompositor() const override;
    bool isRecordingGranted() const override;
    bool requestRecording() override { return isRecordingGranted(); }
    QFuture<Result<ShareableContent>> shareableContent(ListedWindows windows) override;
    QFuture<Result<QImage>> captureImage(
        const ContentFilter& filter, const CaptureConfiguration& configuration) override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    struct HiddenWindow {
        QRect pixels;
        std::chrono::steady_clock::time_point when;
    };

    QFuture<Result<QImage>> captureDisplay(
        const DisplayFilter& filter, const CaptureConfiguration& configuration);
    void watchScreen(QScreen* screen);
    void takeFacts();
    void announceChanges();
    void noteShown(QWindow& window);
    void noteHidden(const QWindow& window);
    QList<X11::DisplayPlace> places() const;
    X11::OwnWindows ownWindows() const;

    std::unique_ptr<X11::Session> m_session;
    std::shared_ptr<ApplicationNames> m_names; ///< These two are the session's thread's.
    std::shared_ptr<X11::OwnFrames> m_ownFrames;
    QHash<QString, quint32> m_numbers; ///< Of displays, by name.
    QTimer m_settling; ///< Runs while an arrangement may still be changing.
    QList<Screen> m_announcedScreens;
    bool m_announcedCompositor = false;
    QSet<const QWindow*> m_framed; ///< Those shown, whose frames are known.
    QList<HiddenWindow> m_hiddenWindows; ///< The oldest first.
};

} // namespace Platform
