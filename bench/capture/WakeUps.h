#pragma once

#include <QtGlobal>

namespace Lumenote::Bench {

/// How often any thread of a process has begun to run so far.
qint64 wakeUps(qint64 processID);

/// Waits until a program has done what it does after its start, and has slept for two seconds.
void waitUntilQuiet(qint64 processID);

} // namespace Lumenote::Bench
