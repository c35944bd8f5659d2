#include "Stopwatch.h"

#include <QFile>

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <stdexcept>

namespace Lumenote::Bench {

namespace {

double cpuOfThisProcess()
{
    timespec time{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
}

} // namespace

double cpuOfServer(qint64 processID)
{
    // To the nanosecond, where stat counts in hundredths of a second; of the first thread, which
    // does all the work of Xvfb.
    QFile file(QStringLiteral("/proc/%1/schedstat").arg(processID));
    require(file.open(QIODevice::ReadOnly), "the system tells no CPU time");
    return file.readAll().split(' ').constFirst().toDouble() / 1e6;
}

Cost measure(const std::function<void()>& work, qint64 serverProcessID)
{
    const auto serverBefore = cpuOfServer(serverProcessID);
    const auto ownBefore = cpuOfThisProcess();
    const auto start = Clock::now();
    work();
    return {.wall = milliseconds(Clock::now() - start),
        .server = cpuOfServer(serverProcessID) - serverBefore,
        .own = cpuOfThisProcess() - ownBefore};
}

double median(QList<double> figures)
{
    std::ranges::sort(figures);
    return figures.at(figures.size() / 2);
}

Cost median(const QList<Cost>& costs)
{
    const auto middle = [&costs](double Cost::*figure) {
        QList<double> figures;
        for (const auto& cost : costs)
            figures.append(cost.*figure);
        return median(figures);
    };
    return {
        .wall = middle(&Cost::wall), .server = middle(&Cost::server), .own = middle(&Cost::own)};
}

void print(const QString& table)
{
    std::printf("\n%s", qPrintable(table));
    static_cast<void>(std::fflush(stdout)); // Other processes print too.
}

void require(bool condition, const char* whatFailed)
{
    if (!condition)
        throw std::runtime_error(whatFailed);
}

} // namespace Lumenote::Bench
