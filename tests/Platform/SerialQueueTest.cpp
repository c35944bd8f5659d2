#include "Platform/SerialQueue.h"

#include <algorithm>
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
        std::jthread other([&] {
            for (int count = 0; count < 250; ++count)
                queue.run([&done] { done.push_back(0); });
        });
        for (int number = 1; number <= 1000; ++number)
            queue.run([&done, number] { done.push_back(number); });
    }
    EXPECT_EQ(std::erase(done, 0), 250U);
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

} // namespace
