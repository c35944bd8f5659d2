#pragma once

#include "Desk.h"
#include "Stopwatch.h"

namespace Lumenote::Bench {

/// The program, running and left alone.
class IdleProgram {
public:
    IdleProgram(); ///< Waits until all that comes with its start is over.

    /// Prints how often it has woken up since, in a minute at least, and its memory.
    void report() const;

private:
    Desk m_desk;
    Harness::Desktop::Program m_program;
    qint64 m_wakeUpsBefore;
    Clock::time_point m_start;
};

} // namespace Lumenote::Bench
