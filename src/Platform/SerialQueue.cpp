#include "Platform/SerialQueue.h"

#include "Platform/Threads.h"

#include <future>
#include <utility>

namespace Platform {

SerialQueue::SerialQueue()
    : m_thread([this] { workUntilEnded(); })
{
}

SerialQueue::~SerialQueue()
{
    {
        const std::scoped_lock hold(m_lock);
        m_isEnding = true;
    }
    m_changed.notify_one();
    m_thread.join();
}

void SerialQueue::run(Work work)
{
    {
        const std::scoped_lock hold(m_lock);
        m_waiting.push_back(std::move(work));
    }
    m_changed.notify_one();
}

void SerialQueue::finish()
{
    std::promise<void> isDone;
    run([&isDone] { isDone.set_value(); });
    isDone.get_future().wait();
}

void SerialQueue::workUntilEnded()
{
    runAtUtilityPriority();
    std::unique_lock hold(m_lock);
    for (;;) {
        m_changed.wait(hold, [this] { return m_isEnding || !m_waiting.empty(); });
        if (m_waiting.empty())
            return;
        auto work = std::move(m_waiting.front());
        m_waiting.pop_front();
        hold.unlock();
        work();
        work = nullptr; // What it owned, such as a bitmap, must not stay until there is more to do.
        hold.lock();
    }
}

} // namespace Platform
