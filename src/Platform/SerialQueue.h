#pragma once

#include <QFuture>
#include <QPromise>

#include <condition_variable>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <thread>
#include <type_traits>
#include <utility>

namespace Platform {

/// Does one piece of work after the other, in the order in which they came, on one thread at
/// utility priority. What is queued when the queue goes away is still done first.
class SerialQueue {
public:
    using Work = std::function<void()>;

    SerialQueue();
    ~SerialQueue();
    SerialQueue(const SerialQueue&) = delete;
    SerialQueue& operator=(const SerialQueue&) = delete;

    /// Queues @p work, which must not throw, and comes back at once. Any thread.
    void run(Work work);

    /// Queues @p work as run() does, and answers what it gives.
    template <typename Question>
    QFuture<std::invoke_result_t<Question>> ask(Question work)
    {
        const auto promise = std::make_shared<QPromise<std::invoke_result_t<Question>>>();
        promise->start();
        run([promise, work = std::move(work)] {
            promise->addResult(work());
            promise->finish();
        });
        return promise->future();
    }

    /// Comes back once all that was queued before is done. Not to be called by that work.
    void finish();

private:
    void workUntilEnded();

    std::mutex m_lock;
    std::condition_variable m_changed;
    std::deque<Work> m_waiting;
    bool m_isEnding = false;
    std::thread m_thread;
};

} // namespace Platform
