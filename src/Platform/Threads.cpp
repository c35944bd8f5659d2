#include "Platform/Threads.h"

#include <cstdlib>
#include <sys/resource.h>
#include <system_error>
#include <thread>
#include <unistd.h>
#include <utility>

namespace Platform {

bool startDetachedThread(std::function<void()> work)
{
    try {
        std::thread(std::move(work)).detach();
        return true;
    } catch (const std::system_error&) {
        return false;
    }
}

void endWithin(std::chrono::milliseconds limit, int exitCode)
{
    startDetachedThread([limit, exitCode] {
        std::this_thread::sleep_for(limit);
        std::_Exit(exitCode);
    });
}

void runAtUtilityPriority()
{
    // The normal scheduler of Linux knows no thread priorities, but keeps a nice value per thread
    // although POSIX has it per process; new threads inherit it. Becoming nicer is never refused.
    constexpr int utilityNice = 10;
    const auto thread = static_cast<id_t>(gettid());
    if (getpriority(PRIO_PROCESS, thread) < utilityNice)
        setpriority(PRIO_PROCESS, thread, utilityNice);
}

} // namespace Platform
