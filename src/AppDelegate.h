#pragma once

#include "Capture/CaptureOutcome.h"
#include "HotKeyManager.h"
#include "HotKeyShortcut.h"
#include "Model/CaptureHistory.h"
#include "WorkbenchPresenter.h"

#include <QObject>

#include <functional>
#include <stop_token>

namespace Platform {
class Alerts;
class ApplicationActivation;
class DisplayServer;
class FloatingWindows;
class HotKeyRegistrar;
class ImageDrag;
class KeyboardLayout;
class OverlayKeyboard;
class Pasteboard;
class SavePanel;
class UserDefaults;
} // namespace Platform

namespace Lumenote {

class OCRService;

/// The shell of the desktop program: it owns the hot key, the history and the workbenches, and
/// leads from the press of a key to a capture that is open in its window. Main thread.
class AppDelegate : public QObject {
    Q_OBJECT

public:
    /// The real things behind the interfaces, all of which outlive the delegate.
    struct Services {
        OCRService& ocr;
        Platform::Alerts& alerts;
        Platform::ApplicationActivation& activation;
        Platform::DisplayServer& displayServer;
        Platform::FloatingWindows& floatingWindows;
        Platform::HotKeyRegistrar& hotKeyRegistrar;
        Platform::ImageDrag& imageDrag;
        Platform::KeyboardLayout& keyboardLayout;
        Platform::OverlayKeyboard& overlayKeyboard;
        Platform::Pasteboard& pasteboard;
        Platform::SavePanel& savePanel;
        Platform::UserDefaults& userDefaults;
    };

    AppDelegate(const CaptureStore& store, const Services& services);
    ~AppDelegate() override;

    /// Takes in the history, takes the hot key and warms the recogniser up.
    void finishLaunching();

    /// Lets the user pick what to capture, unless a capture is running already.
    void captureSelection();

    /// Captures the display under the pointer, unless a capture is running already.
    void captureFullScreen();

    /// Lets nothing be lost where the process ends without destroying this.
    void finishWriting() { m_history.finishWriting(); }

    const CaptureHistory& history() const { return m_history; }
    WorkbenchPresenter& presenter() { return m_presenter; }
    bool isCapturing() const { return m_isCapturing; }
    bool hotKeyUnavailable() const { return m_hotKeyUnavailable; }
    bool screenRecordingDenied() const { return m_screenRecordingDenied; }

private:
    /// Runs @p capture if the user lets us record the screen, and otherwise says why not.
    void captureIfAllowed(const std::function<QFuture<CaptureOutcome>()>& capture);
    void handle(const CaptureOutcome& outcome);
    void take(const CapturedImage& captured);
    void fail(CaptureError error);
    void endCapture() { m_isCapturing = false; }

    const Services m_services;
    const WorkbenchModel::Services m_modelServices;
    CaptureHistory m_history;
    WorkbenchPresenter m_presenter;
    HotKeyManager m_hotKey;
    HotKeyShortcut m_shortcut;
    std::stop_source m_selection; ///< Ends a selection that is still up when the program quits.
    bool m_isCapturing = false; ///< Until the outcome is handled, its alert included.
    bool m_hotKeyUnavailable = false;
    bool m_screenRecordingDenied = false;
};

} // namespace Lumenote
