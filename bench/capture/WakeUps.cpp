#include "WakeUps.h"

#include "Stopwatch.h"

#include <QDir>
#include <QFile>

#include <thread>

namespace Lumenote::Bench {

namespace {

using namespace std::chrono_literals;

constexpr auto quietTime = 2s;
constexpr auto patience = 60s;

} // namespace

qint64 wakeUps(qint64 processID)
{
    const QDir threads(QStringLiteral("/proc/%1/task").arg(processID));
    require(threads.exists(), "a program has ended");
    qint64 count = 0;
    for (const auto& thread : threads.entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        QFile status(threads.filePath(thread + QStringLiteral("/status")));
        if (!status.open(QIODevice::ReadOnly))
            continue; // It has ended meanwhile.
        for (const auto& line : status.readAll().split('\n'))
            if (line.contains("ctxt_switches:"))
                count += line.mid(line.indexOf(':') + 1).trimmed().toLongLong();
    }
    return count;
}

void waitUntilQuiet(qint64 processID)
{
    const auto start = Clock::now();
    auto last = start;
    for (auto before = wakeUps(processID); Clock::now() - last < quietTime;) {
        std::this_thread::sleep_for(200ms);
        if (const auto now = wakeUps(processID); std::exchange(before, now) != now)
            last = Clock::now();
        require(Clock::now() - start < patience, "a program never came to rest");
    }
}

} // namespace Lumenote::Bench
