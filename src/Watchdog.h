#pragma once

#include "Platform/Threads.h"

#include <chrono>
#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <stop_token>
#include <utility>

namespace Lumenote {

/// The wait of one caller for the first of three: the operation's value, the limit, a cancellation.
/// Shared by the caller and the operation's thread, and alive until the last of them lets go.
template <typename T>
class Race {
public:
    using TimePoint = std::chrono::steady_clock::time_point;

    /// Ends the race with @p value. The first call wins and asks the operation to stop; the value
    /// of any later one is dropped. Any thread.
    void finish(std::optional<T> value)
    {
        {
            const std::scoped_lock hold(m_lock);
            if (m_isFinished)
                return;
            m_isFinished = true;
            m_value = std::move(value);
        }
        m_finished.notify_one();
        m_work.request_stop();
    }

    /// Suspends the calling thread until the race is finished, or ends it with nothing at
    /// @p deadline, and takes the value out. Once only.
    std::optional<T> wait(TimePoint deadline)
    {
        {
            std::unique_lock hold(m_lock);
            m_finished.wait_until(hold, deadline, [this] { return m_isFinished; });
        }
        finish(std::nullopt);
        return std::move(m_value);
    }

    /// Asked to stop once the race is finished.
    std::stop_token workToken() const { return m_work.get_token(); }

private:
    std::mutex m_lock;
    std::condition_variable m_finished;
    bool m_isFinished = false;
    std::optional<T> m_value;
    std::stop_source m_work;
};

/// Bounds an operation that may never come back, even one that ignores cancellation.
namespace Watchdog {

template <typename T>
using Operation = std::function<std::optional<T>(std::stop_token)>;

/// Runs @p operation on a thread of its own and answers its value, or nothing when @p limit has
/// passed, @p stop was requested, or the operation itself gave nothing, threw, or could not get
/// a thread. Exactly one answer comes back, in time whatever the operation does; it is then
/// asked to stop and left behind. A hung operation costs its one thread, for as long as it
/// hangs.
///
/// Blocks the calling thread, which must not be the main one. Whatever the operation refers to
/// must be owned by it, since it may outlive the call.
template <typename T>
std::optional<T> run(
    std::chrono::nanoseconds limit, Operation<T> operation, const std::stop_token& stop)
{
    const auto deadline = std::chrono::steady_clock::now() + limit;
    const auto race = std::make_shared<Race<T>>();
    const std::stop_callback cancel(stop, [race] { race->finish(std::nullopt); });
    const bool isStarted = Platform::startDetachedThread([race, operation = std::move(operation)] {
        try {
            race->finish(operation(race->workToken()));
        } catch (...) {
            race->finish(std::nullopt);
        }
    });
    if (!isStarted)
        race->finish(std::nullopt);
    return race->wait(deadline);
}

} // namespace Watchdog

} // namespace Lumenote
