#pragma once

#include <atomic>
#include <chrono>

namespace Fakes {

/// Stands still until told otherwise. Any thread.
class FakeClock {
public:
    std::chrono::steady_clock::time_point now() const
    {
        return std::chrono::steady_clock::time_point(m_elapsed.load());
    }

    void advance(std::chrono::nanoseconds duration) { m_elapsed = m_elapsed.load() + duration; }

private:
    std::atomic<std::chrono::nanoseconds> m_elapsed{std::chrono::hours(1)};
};

} // namespace Fakes
