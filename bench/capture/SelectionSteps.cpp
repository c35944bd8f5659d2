#include "SelectionSteps.h"

#include "Capture/ScreenRecordingPermission.h"
#include "Capture/ScreenshotCapture.h"
#include "Eye.h"
#include "Fakes/FakeUserDefaults.h"
#include "Hand.h"
#include "Harness/Desktop.h"
#include "HotKeyShortcut.h"
#include "Platform/X11/X11DisplayServer.h"
#include "Platform/X11/X11HotKeyRegistrar.h"
#include "Platform/X11/X11OverlayKeyboard.h"
#include "WatchedDisplayServer.h"
#include "Windows.h"
#include "reading/Table.h"

#include <QCoreApplication>
#include <QEvent>
#include <QEventLoop>
#include <QTimer>

#include <array>
#include <atomic>
#include <optional>
#include <thread>

namespace Lumenote::Bench {

namespace {

using Harness::Desktop;

constexpr int rounds = 12;
constexpr auto pause = std::chrono::milliseconds(100);
constexpr QSize screenSize(1920, 1080);

/// When each step towards an overlay on the screen was done.
struct Steps {
    Clock::time_point pressed;
    Clock::time_point heard;
    Clock::time_point allowed;
    std::optional<Clock::time_point> pictured; ///< Only where the displays are shown as pictures.
    Clock::time_point shown;
    Clock::time_point painting;
    Clock::time_point seen;
};

struct Release {
    double untilImage = 0; ///< Milliseconds from the release of the mouse.
    double listing = 0; ///< Of which what can be captured was asked for,
    double capture = 0; ///< and the capture itself.
};

/// Handles events for a while.
void rest()
{
    QEventLoop loop;
    QTimer::singleShot(pause, &loop, &QEventLoop::quit);
    loop.exec();
}

/// The part of the program that leads from the hot key to an image.
class Selections final : public QObject {
public:
    explicit Selections(Platform::X11DisplayServer& server);

    Steps open();
    void cancel();
    Release drag(const QRect& area); ///< While it is open.

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void begin();
    void waitUntilDimmed();
    void waitUntilLit();
    void waitForOutcome();

    WatchedDisplayServer m_server;
    Fakes::FakeUserDefaults m_defaults;
    Platform::X11OverlayKeyboard m_keyboard;
    Platform::X11HotKeyRegistrar m_hotKey;
    Hand m_hand;
    Eye m_eye;
    std::uint32_t m_lit = 0;
    Steps m_steps;
    std::stop_source m_stop;
    std::optional<CaptureOutcome> m_outcome;
    Clock::time_point m_answered;
};

Selections::Selections(Platform::X11DisplayServer& server)
    : m_server(server)
{
    const HotKeyShortcut shortcut;
    const auto installed = m_hotKey.installHandler(
        {.onPressed = [this] { begin(); }, .onLost = [](const Platform::Error&) {}});
    require(installed && m_hotKey.registerHotKey(shortcut.keyCode, shortcut.modifiers),
        "the hot key is taken");
    QCoreApplication::instance()->installEventFilter(this);
}

void Selections::begin()
{
    m_steps.heard = Clock::now();
    require(ScreenRecordingPermission::request(m_defaults, m_server)
            == ScreenRecordingPermission::Outcome::granted,
        "the screen may not be read");
    m_steps.allowed = Clock::now();
    m_stop = {};
    m_outcome.reset();
    m_server.lastCapture = {};
    Platform::whenFinished(
        ScreenshotCapture::captureInteractive(m_server, m_keyboard, m_stop.get_token()), this,
        [this](const CaptureOutcome& outcome) {
            m_answered = Clock::now();
            m_outcome = outcome;
        });
}

bool Selections::eventFilter(QObject* watched, QEvent* event)
{
    const bool isFirst = m_steps.painting < m_steps.pressed;
    if (isFirst && watched->objectName() == u"SelectionWindow") {
        if (event->type() == QEvent::Show)
            m_steps.shown = Clock::now();
        if (event->type() == QEvent::Paint)
            m_steps.painting = Clock::now();
    }
    return QObject::eventFilter(watched, event);
}

Steps Selections::open()
{
    m_lit = m_eye.color();
    m_hand.holdModifiers();
    rest();
    m_steps.pressed = Clock::now();
    m_hand.pressHotKey();
    waitUntilDimmed();
    m_hand.releaseHotKey();
    if (m_server.lastCapture.came > m_steps.pressed)
        m_steps.pictured = m_server.lastCapture.came;
    else
        m_steps.pictured.reset();
    rest();
    return m_steps;
}

void Selections::waitUntilDimmed()
{
    std::atomic<bool> isDimmed = false;
    const std::jthread watching([this, &isDimmed] {
        m_steps.seen = m_eye.waitForOtherThan(m_lit);
        isDimmed = true;
        QMetaObject::invokeMethod(
            this, [] {}, Qt::QueuedConnection); // Wakes the loop below.
    });
    while (!isDimmed)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
}

void Selections::cancel()
{
    m_stop.request_stop();
    waitForOutcome();
    waitUntilLit();
}

Release Selections::drag(const QRect& area)
{
    m_hand.moveTo(area.topLeft());
    m_hand.pressButton();
    rest();
    m_hand.moveTo(area.bottomRight());
    rest();
    const auto released = Clock::now();
    m_hand.releaseButton();
    waitForOutcome();
    require(std::holds_alternative<CapturedImage>(*m_outcome), "no image came");
    waitUntilLit();
    return {.untilImage = milliseconds(m_answered - released),
        .listing = m_server.lastListing.time(),
        .capture = m_server.lastCapture.time()};
}

void Selections::waitForOutcome()
{
    while (!m_outcome)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
}

void Selections::waitUntilLit()
{
    while (m_eye.color() != m_lit)
        rest();
}

QString medianSince(const QList<Steps>& all, Clock::time_point Steps::*step)
{
    QList<double> times;
    for (const auto& steps : all)
        times.append(milliseconds(steps.*step - steps.pressed));
    return Table::number(median(times));
}

class StepsBench {
public:
    explicit StepsBench(Platform::X11DisplayServer& server)
        : m_selections(server)
    {
    }

    void measure(const QString& desktopName);
    void print() const
    {
        Bench::print(m_steps.toMarkdown());
        Bench::print(m_releases.toMarkdown());
    }

private:
    void measureSteps(const QString& desktopName);
    void measureReleases(const QString& name, const QRect& area);

    Selections m_selections;
    Table m_steps{{QStringLiteral("ms after the hot key was pressed, medians"),
        QStringLiteral("heard"), QStringLiteral("allowed"), QStringLiteral("pictures taken"),
        QStringLiteral("overlay shown"), QStringLiteral("begins to paint"),
        QStringLiteral("seen")}};
    Table m_releases{{QStringLiteral("from release to image, ms, medians"), QStringLiteral("all"),
        QStringLiteral("the capture itself"), QStringLiteral("listing"),
        QStringLiteral("all but the capture")}};
};

void StepsBench::measure(const QString& desktopName)
{
    measureSteps(desktopName);
    measureReleases(desktopName + QStringLiteral(", 600×400"), {300, 400, 600, 400});
    measureReleases(desktopName + QStringLiteral(", the whole display"), {{}, screenSize});
}

void StepsBench::measureSteps(const QString& desktopName)
{
    QList<Steps> all;
    QList<double> pictured;
    for (int round = 0; round < rounds; ++round) {
        const auto steps = m_selections.open();
        all.append(steps);
        if (steps.pictured)
            pictured.append(milliseconds(*steps.pictured - steps.pressed));
        m_selections.cancel();
    }
    m_steps.addRow({desktopName, medianSince(all, &Steps::heard), medianSince(all, &Steps::allowed),
        pictured.isEmpty() ? QStringLiteral("-") : Table::number(median(pictured)),
        medianSince(all, &Steps::shown), medianSince(all, &Steps::painting),
        medianSince(all, &Steps::seen)});
}

void StepsBench::measureReleases(const QString& name, const QRect& area)
{
    QList<double> all;
    QList<double> listing;
    QList<double> capture;
    QList<double> beyond;
    for (int round = 0; round < rounds; ++round) {
        m_selections.open();
        const auto release = m_selections.drag(area);
        all.append(release.untilImage);
        listing.append(release.listing);
        capture.append(release.capture);
        beyond.append(release.untilImage - release.capture);
    }
    m_releases.addRow({name, Table::number(median(all)), Table::number(median(capture)),
        Table::number(median(listing)), Table::number(median(beyond))});
}

} // namespace

void measureSelectionSteps(Platform::X11DisplayServer& server)
{
    const Desktop desktop;
    const auto manager = desktop.startWindowManager();
    const auto windows = otherWindows(screenSize);
    StepsBench bench(server);
    bench.measure(QStringLiteral("no compositor"));
    const auto compositor = desktop.startCompositor();
    while (!server.hasCompositor())
        rest();
    rest();
    bench.measure(QStringLiteral("picom"));
    bench.print();
}

} // namespace Lumenote::Bench
