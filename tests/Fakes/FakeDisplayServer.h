#pragma once

#include "Platform/DisplayServer.h"

#include <QColor>

#include <functional>
#include <optional>

namespace Fakes {

/// A desktop of coloured windows. What is asked is recorded, and answered at once, or later, or
/// with the error that is set.
class FakeDisplayServer final : public Platform::DisplayServer {
public:
    /// One display of the given size, scale 1 and number 1, and no window.
    explicit FakeDisplayServer(QSizeF displaySize = {1920, 1080});

    QList<Platform::Screen> screens() const override { return m_screens; }
    QPointF pointerPosition() const override { return pointer; }
    bool hasCompositor() const override { return m_hasCompositor; }
    bool isRecordingGranted() const override { return isGranted; }
    bool requestRecording() override;
    QFuture<Platform::Result<Platform::ShareableContent>> shareableContent(
        Platform::ListedWindows windows) override;
    QFuture<Platform::Result<QImage>> captureImage(const Platform::ContentFilter& filter,
        const Platform::CaptureConfiguration& configuration) override;

    /// Both tell of it, if it is a change.
    void setScreens(const QList<Platform::Screen>& screens);
    void setHasCompositor(bool hasCompositor);

    /// Behind those that are already there.
    void addWindow(const Platform::SharedWindow& window, const QColor& color);
    void closeWindow(quint32 id);

    /// From now on futures stay unfinished until answerAll(), which answers with what is so then.
    void holdAnswers() { m_holdsAnswers = true; }
    void answerAll();

    QPointF pointer; ///< y up.
    bool isGranted = true;
    QColor desktopColor = QColor(Qt::darkCyan);
    std::optional<Platform::Error> contentError;
    std::optional<Platform::Error> captureError;

    struct Capture {
        Platform::ContentFilter filter;
        Platform::CaptureConfiguration configuration;
    };
    QList<Platform::ListedWindows> contentRequests;
    QList<Capture> captures;
    int recordingRequests = 0;

private:
    struct PaintedWindow {
        Platform::SharedWindow window;
        QColor color;
    };

    template <typename T>
    QFuture<Platform::Result<T>> answer(std::function<Platform::Result<T>()> make);
    Platform::Result<Platform::ShareableContent> content(Platform::ListedWindows listed) const;
    Platform::Result<QImage> picture(const Capture& capture) const;
    Platform::Result<QImage> displayPicture(
        const Platform::DisplayFilter& filter, const Platform::CaptureConfiguration& how) const;
    Platform::Result<QImage> windowPicture(
        const Platform::WindowFilter& filter, const Platform::CaptureConfiguration& how) const;

    QList<Platform::Screen> m_screens;
    QList<PaintedWindow> m_windows; ///< Frontmost first.
    bool m_hasCompositor = true;
    bool m_holdsAnswers = false;
    QList<std::function<void()>> m_heldAnswers;
};

} // namespace Fakes
