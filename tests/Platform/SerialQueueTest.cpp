#include "Platform/SerialQueue.h"

#include <algorithm>
#include <atomic>
#include <gtest/gtest.h>
#include <memory>
#include <thread>
#include <vector>

namespace {

TEST(SerialQueue, worksInTheOrderAskedForAndFinishesBeforeItGoes)
{
    std::vector<int> done; // Touched by the queue's one thread until it has ended.
    {
        Platform::SerialQueue queue;
        for (int number = 0; number < 1000; ++number)
            queue.run([&done, number] { done.push_back(number); });
    }
    ASSERT_EQ(done.size(), 1000U);
    EXPECT_TRUE(std::is_sorted(done.begin(), done.end()));
}

TEST(SerialQueue, letsGoOfWhatItsWorkOwned)
{
    Platform::SerialQueue queue;
    const auto bitmap = std::make_shared<int>();
    queue.run([copy = bitmap] { static_cast<void>(copy); });
    while (bitmap.use_count() > 1)
        std::this_thread::yield();
    SUCCEED();
}

TEST(SerialQueue, takesWorkFromSeveralThreadsAtOnce)
{
    std::atomic<int> done = 0;
    {
        Platform::SerialQueue queue;
        std::vector<std::jthread> callers;
        callers.reserve(4);
        for (int caller = 0; caller < 4; ++caller)
            callers.emplace_back([&] {
                for (int count = 0; count < 250; ++count)
                    queue.run([&done] { ++done; });
            });
    }
    EXPECT_EQ(done, 1000);
}

} // namespace
