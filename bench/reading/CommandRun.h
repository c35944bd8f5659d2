#pragma once

#include <QByteArray>
#include <QStringList>

namespace Lumenote::Bench {

/// What one run of a command gave and took.
struct CommandRun {
    QByteArray output; ///< What it printed on standard output.
    int exitCode = -1; ///< 128 and the signal's number when it was killed.
    double wallSeconds = 0;
    double cpuSeconds = 0; ///< Of the user and the system, for all of its threads.
    double peakMegabytes = 0; ///< Resident memory.
};

/// Runs @p command to its end, with @p environment ("NAME=value") added to ours. The peak is never
/// below our own memory at the time, since a new process begins as a copy: keep pictures out of
/// the process that measures. Standard error goes nowhere.
CommandRun runCommand(const QStringList& command, const QStringList& environment = {});

} // namespace Lumenote::Bench
