#include "Watchdog.h"

#include "Fakes/ThreadShortage.h"
#include "Harness/Waiting.h"

#include <array>
#include <atomic>
#include <gtest/gtest.h>
#include <latch>
#include <random>
#include <stdexcept>
#include <thread>

using namespace Lumenote;
using namespace std::chrono_literals;

namespace {

using Operation = Watchdog::Operation<int>;

TEST(WatchdogTest, anOperationThatEndsInTimeGivesItsValue)
{
    struct Row {
        const char* name;
        Operation operation;
        std::optional<int> answer;
    };
    const std::array rows{
        Row{"value", [](const std::stop_token&) { return 7; }, 7},
        Row{"nothing", [](const std::stop_token&) { return std::nullopt; }, std::nullopt},
        Row{"throws",
            [](const std::stop_token&) -> std::optional<int> {
                throw std::runtime_error("broken");
            },
            std::nullopt},
        Row{"throwsNoException", [](const std::stop_token&) -> std::optional<int> { throw 1; },
            std::nullopt},
    };
    for (const auto& row : rows)
        EXPECT_EQ(Watchdog::run<int>(1h, row.operation, {}), row.answer) << row.name;
}

TEST(WatchdogTest, aHungOperationIsAskedToStopAndLeftBehind)
{
    struct Row {
        const char* name;
        std::chrono::nanoseconds limit;
        bool isCancelledBefore;
        bool isCancelledMeanwhile;
    };
    constexpr std::array rows{
        Row{"limitPasses", 20ms, false, false},
        Row{"noTimeAtAll", 0ns, false, false},
        Row{"cancelledBefore", 1h, true, false},
        Row{"cancelledMeanwhile", 1h, false, true},
    };
    for (const auto& row : rows) {
        const auto isReleased = std::make_shared<std::latch>(1);
        const auto wasAskedToStop = std::make_shared<std::atomic_bool>(false);
        std::stop_source caller;
        if (row.isCancelledBefore)
            caller.request_stop();
        const auto answer = Watchdog::run<int>(
            row.limit,
            [=, &row](const std::stop_token& stop) {
                const std::stop_callback note(stop, [=] { *wasAskedToStop = true; });
                if (row.isCancelledMeanwhile)
                    std::stop_source(caller).request_stop();
                isReleased->wait();
                return 7;
            },
            caller.get_token());
        EXPECT_EQ(answer, std::nullopt) << row.name;
        EXPECT_TRUE(Harness::waitFor([&] { return wasAskedToStop->load(); })) << row.name;
        isReleased->count_down();
        EXPECT_TRUE(Harness::waitFor([&] { return isReleased.use_count() == 1; }))
            << row.name << ": what the operation held is let go of once it ends";
    }
}

TEST(WatchdogTest, withoutAThreadNothingComesBack)
{
    const Fakes::ThreadShortage shortage;
    EXPECT_EQ(Watchdog::run<int>(1h, [](const std::stop_token&) { return 7; }, {}), std::nullopt);
}

TEST(WatchdogTest, oneAnswerComesBackHoweverCloseTheRace)
{
    constexpr int races = 10'000;
    // Each of the three comes at about the time that starting a thread takes.
    std::mt19937 random(1);
    std::uniform_int_distribution<int> microseconds(0, 120);
    const auto owned = std::make_shared<int>(0);
    int values = 0;
    for (int i = 0; i < races; ++i) {
        const auto spin = [](int duration) {
            const auto end = std::chrono::steady_clock::now() + duration * 1us;
            while (std::chrono::steady_clock::now() < end) { }
        };
        std::stop_source caller;
        std::jthread canceller([&caller, spin, wait = microseconds(random)] {
            spin(wait);
            caller.request_stop();
        });
        const auto answer = Watchdog::run<int>(
            microseconds(random) * 1us,
            [owned, spin, i, wait = microseconds(random)](const std::stop_token&) {
                spin(wait);
                return i;
            },
            caller.get_token());
        if (answer) {
            ASSERT_EQ(answer, i);
            ++values;
        }
    }
    EXPECT_TRUE(Harness::waitFor([&] { return owned.use_count() == 1; }));
    RecordProperty("values", values);
    EXPECT_LT(values, races) << "no operation ever lost, so this was no race";
}

} // namespace
