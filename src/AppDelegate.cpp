#include "AppDelegate.h"

#include "Capture/ScreenGeometry.h"
#include "Capture/ScreenRecordingPermission.h"
#include "Capture/ScreenshotCapture.h"
#include "OCR/OCRService.h"
#include "Platform/Alerts.h"
#include "Platform/ApplicationActivation.h"
#include "Platform/DisplayServer.h"
#include "Platform/Tasks.h"

namespace Lumenote {

namespace {

QString explanation(CaptureError error)
{
    switch (error) {
    case CaptureError::windowGone:
        return AppDelegate::tr("The window closed before it could be captured.");
    case CaptureError::noDisplay:
        return AppDelegate::tr("That display is no longer available to capture. If a display was "
                               "just connected or disconnected, try again.");
    default:
        return AppDelegate::tr(
            "macOS didn't return an image. Try again — if it keeps happening, check Screen "
            "Recording in System Settings › Privacy & Security.");
    }
}

} // namespace

AppDelegate::AppDelegate(const CaptureStore& store, const Services& services)
    : m_services(services)
    , m_modelServices{.ocr = &services.ocr,
          .pasteboard = &services.pasteboard,
          .savePanel = &services.savePanel}
    , m_history(store, m_modelServices)
    , m_presenter({.desktop = {.activation = services.activation,
                       .displayServer = services.displayServer,
                       .floatingWindows = services.floatingWindows},
          .history = m_history,
          .imageDrag = services.imageDrag})
    , m_hotKey(services.hotKeyRegistrar, services.keyboardLayout)
    , m_shortcut(HotKeyShortcut::load(services.userDefaults))
{
}

AppDelegate::~AppDelegate()
{
    m_selection.request_stop();
}

void AppDelegate::finishLaunching()
{
    m_history.loadPersisted();
    m_hotKey.onHotKey = [this] { captureSelection(); };
    m_hotKey.onLost = [this] { m_hotKeyUnavailable = !m_hotKey.registerShortcut(m_shortcut); };
    m_hotKeyUnavailable = !m_hotKey.registerShortcut(m_shortcut);
    m_screenRecordingDenied = !m_services.displayServer.isRecordingGranted();
    m_services.ocr.warmUp();
}

void AppDelegate::captureSelection()
{
    captureIfAllowed([this] {
        m_presenter.dismissAll();
        return ScreenshotCapture::captureInteractive(
            m_services.displayServer, m_services.overlayKeyboard, m_selection.get_token());
    });
}

void AppDelegate::captureFullScreen()
{
    const auto screens = m_services.displayServer.screens();
    if (screens.isEmpty())
        return;
    captureIfAllowed([this, screens] {
        const auto pointed =
            ScreenGeometry::screenUnderPointer(screens, m_services.displayServer.pointerPosition());
        return ScreenshotCapture::captureFullScreen(
            m_services.displayServer, pointed.value_or(screens.constFirst()));
    });
}

void AppDelegate::captureIfAllowed(const std::function<QFuture<CaptureOutcome>()>& capture)
{
    using Permission = ScreenRecordingPermission::Outcome;
    if (m_isCapturing)
        return;
    const auto permission =
        ScreenRecordingPermission::request(m_services.userDefaults, m_services.displayServer);
    m_screenRecordingDenied = permission != Permission::granted;
    if (permission == Permission::promptShown)
        return;
    m_isCapturing = true;
    m_services.activation.noteFrontmost();
    if (permission == Permission::denied)
        ScreenRecordingPermission::presentDeniedAlert(m_services.alerts, [this] { endCapture(); });
    else
        Platform::whenFinished(
            capture(), this, [this](const CaptureOutcome& outcome) { handle(outcome); });
}

void AppDelegate::handle(const CaptureOutcome& outcome)
{
    if (const auto* const error = std::get_if<CaptureError>(&outcome)) {
        fail(*error);
        return;
    }
    if (const auto* const captured = std::get_if<CapturedImage>(&outcome))
        take(*captured);
    endCapture();
}

void AppDelegate::take(const CapturedImage& captured)
{
    const auto model =
        WorkbenchModel::create(captured.image, captured.pointSize, {}, m_modelServices);
    if (model)
        m_history.record(model);
    m_presenter.present(model);
}

void AppDelegate::fail(CaptureError error)
{
    if (error == CaptureError::permissionDenied) {
        m_screenRecordingDenied = true;
        ScreenRecordingPermission::presentDeniedAlert(m_services.alerts, [this] { endCapture(); });
        return;
    }
    m_services.alerts.present({.title = tr("Couldn't take the screenshot"),
                                  .text = explanation(error),
                                  .buttons = {tr("OK")}},
        [this](int) { endCapture(); });
}

} // namespace Lumenote
