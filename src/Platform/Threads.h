#pragma once

#include <functional>

namespace Platform {

/// Runs @p work on a new thread that nobody waits for; false when the system gives no more threads,
/// and then the work is dropped.
bool startDetachedThread(std::function<void()> work);

/// Lets the calling thread, and every thread that it starts from now on, give way to the work that
/// somebody waits for. There is no way back for the thread.
void runAtUtilityPriority();

} // namespace Platform
