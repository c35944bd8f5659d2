#pragma once

#include <chrono>
#include <functional>

namespace Platform {

/// Runs @p work on a new thread that nobody waits for; false when the system gives no more threads,
/// and then the work is dropped.
bool startDetachedThread(std::function<void()> work);

/// Lets the process end with @p exitCode after @p limit at the latest, whatever hangs in its
/// clean-up. For when nothing is left to be done that matters.
void endWithin(std::chrono::milliseconds limit, int exitCode);

/// Lets the calling thread, and every thread that it starts from now on, give way to the work that
/// somebody waits for. There is no way back for the thread.
void runAtUtilityPriority();

} // namespace Platform
