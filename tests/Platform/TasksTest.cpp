#include "Platform/Tasks.h"

#include "Fakes/ThreadShortage.h"
#include "Harness/Waiting.h"

#include <gtest/gtest.h>
#include <memory>
#include <stdexcept>
#include <thread>

namespace {

TEST(Tasks, everyTaskIsAnsweredWhateverBecomesOfIt)
{
    const auto message = [](std::function<Platform::Result<int>()> work) {
        const auto future = Platform::startTask<int>(std::move(work));
        EXPECT_TRUE(Harness::waitForFinished(future));
        EXPECT_EQ(future.resultCount(), 1);
        return future.result() ? QString::number(*future.result())
                               : future.result().error().message;
    };
    EXPECT_EQ(message([] { return 7; }), u"7"_qs);
    EXPECT_EQ(message([]() -> Platform::Result<int> { throw std::runtime_error("thrown"); }),
        u"thrown"_qs);
    const Fakes::ThreadShortage shortage;
    EXPECT_EQ(message([] { return 7; }), u"no more threads"_qs);
}

TEST(Tasks, handlersRunInTheirReceiversThreadAndOnlyWhileItLives)
{
    QPromise<int> promise;
    promise.start();
    int calls = 0;
    {
        const auto goes = std::make_unique<QObject>();
        Platform::whenFinished(promise.future(), goes.get(), [&calls](int) { calls += 100; });
    }
    const auto caller = std::this_thread::get_id();
    QObject receiver;
    Platform::whenFinished(promise.future(), &receiver, [&calls, caller](int value) {
        EXPECT_EQ(std::this_thread::get_id(), caller);
        calls += value;
    });
    std::thread([&promise] {
        promise.addResult(1);
        promise.finish();
    }).join();
    EXPECT_TRUE(Harness::waitFor([&calls] { return calls > 0; }));
    EXPECT_EQ(calls, 1);
    EXPECT_TRUE(Harness::waitFor([&receiver] { return receiver.children().isEmpty(); }));
}

} // namespace
