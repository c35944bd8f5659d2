#include "HotKeyToDimming.h"

#include "Eye.h"
#include "Hand.h"
#include "Harness/Desktop.h"
#include "WakeUps.h"
#include "Windows.h"
#include "reading/Table.h"

#include <QDir>
#include <QFile>
#include <QStandardPaths>

#include <functional>
#include <thread>

namespace Lumenote::Bench {

namespace {

using Harness::Desktop;

constexpr int rounds = 6;
constexpr QPoint trayIcon(12, 12);
constexpr auto pause = std::chrono::milliseconds(150); ///< What a program does last is over then.

/// One way to have the screen dimmed.
struct Way {
    QString name;
    std::function<void()> prepare;
    std::function<void()> begin; ///< The clock starts before.
    std::function<void()> end;
    QList<double> times = {};
};

class DimmingBench {
public:
    DimmingBench();

    void measure(const QString& desktopName);
    void print() const { Bench::print(m_table.toMarkdown()); }

private:
    Way hotKey() const;
    Way startedFlameshot(const QString& name);
    Way clickedFlameshot() const;
    void alternate(QList<Way> ways, const QString& desktopName);

    Desktop m_desktop;
    Hand m_hand;
    Eye m_eye;
    Desktop::Program m_lumenote;
    Desktop::Program m_flameshot = m_desktop.start("true", {});
    Table m_table;
};

DimmingBench::DimmingBench()
    : m_lumenote(m_desktop.start(LUMENOTE_PROGRAM, {}))
    , m_table({QStringLiteral("until the screen dims, medians"), QStringLiteral("flameshot ms"),
          QStringLiteral("lumenote ms"), QStringLiteral("ratio")})
{
    require(m_lumenote->waitForStarted(), "the program can't be started");
    waitUntilQuiet(m_lumenote->processId());
}

Way DimmingBench::hotKey() const
{
    return {.name = QStringLiteral("lumenote"),
        .prepare = [this] { m_hand.holdModifiers(); },
        .begin = [this] { m_hand.pressHotKey(); },
        .end =
            [this] {
                m_hand.releaseHotKey();
                m_hand.typeEscape();
            }};
}

Way DimmingBench::startedFlameshot(const QString& name)
{
    return {.name = name,
        .prepare = [] {},
        .begin = [this] { m_flameshot = m_desktop.start("flameshot", {"gui"}); },
        .end =
            [this] {
                m_flameshot->kill();
                m_flameshot->waitForFinished();
            }};
}

Way DimmingBench::clickedFlameshot() const
{
    return {.name = QStringLiteral("its daemon, on a click on its icon"),
        .prepare = [this] { m_hand.moveTo(trayIcon); },
        .begin =
            [this] {
                m_hand.pressButton();
                m_hand.releaseButton();
            },
        .end = [this] { m_hand.typeEscape(); }};
}

/// Times the ways in turn, the first of them ours, and the first round for nothing.
void DimmingBench::alternate(QList<Way> ways, const QString& desktopName)
{
    const auto lit = m_eye.color();
    for (int round = -1; round < rounds; ++round)
        for (auto& way : ways) {
            way.prepare();
            std::this_thread::sleep_for(pause);
            const auto start = Clock::now();
            way.begin();
            const auto dimmed = m_eye.waitForOtherThan(lit);
            if (round >= 0)
                way.times.append(milliseconds(dimmed - start));
            std::this_thread::sleep_for(pause);
            way.end();
            m_eye.waitFor(lit);
            std::this_thread::sleep_for(pause);
        }
    const auto ours = median(ways.takeFirst().times);
    for (const auto& way : ways) {
        const auto theirs = median(way.times);
        m_table.addRow({desktopName + QStringLiteral(": ") + way.name, Table::number(theirs, 1),
            Table::number(ours, 1), Table::number(ours / theirs)});
    }
}

void DimmingBench::measure(const QString& desktopName)
{
    alternate({hotKey(), startedFlameshot(QStringLiteral("flameshot gui"))}, desktopName);
    const auto tray = m_desktop.start(
        "trayer", {"--edge", "top", "--align", "left", "--widthtype", "request", "--height", "24"});
    const auto daemon = m_desktop.start("flameshot", {});
    require(daemon->waitForStarted(), "no flameshot");
    waitUntilQuiet(daemon->processId());
    alternate({hotKey(), startedFlameshot(QStringLiteral("flameshot gui while its daemon runs")),
                  clickedFlameshot()},
        desktopName);
}

/// Lets it neither greet nor look for updates.
void configureFlameshot()
{
    QDir folder(QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation));
    folder.mkpath(QStringLiteral("flameshot"));
    QFile file(folder.filePath(QStringLiteral("flameshot/flameshot.ini")));
    require(file.open(QIODevice::WriteOnly), "no folder for settings");
    file.write("[General]\nshowStartupLaunchMessage=false\ncheckForUpdates=false\n");
}

} // namespace

void measureHotKeyToDimming()
{
    configureFlameshot();
    const Desktop desktop;
    const auto manager = desktop.startWindowManager();
    const auto windows = otherWindows({1920, 1080});
    DimmingBench bench;
    bench.measure(QStringLiteral("no compositor"));
    const auto compositor = desktop.startCompositor();
    waitUntilQuiet(compositor->processId());
    bench.measure(QStringLiteral("picom"));
    bench.print();
}

} // namespace Lumenote::Bench
