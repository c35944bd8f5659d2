#include "Watchdog.h"

#include "Fakes/ThreadShortage.h"
#include "Harness/Waiting.h"

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
    const auto check = [&](const char* name, const Operation& operation,
                           std::optional<int> answer) {
        EXPECT_EQ(Watchdog::run<int>(1h, operation, {}), answer) << name;
    };
    check(
        "value", [](const std::stop_token&) { return 7; }, 7);
    check(
        "nothing", [](const std::stop_token&) { return std::nullopt; }, std::nullopt);
    check(
        "throws",
        [](const std::stop_token&) -> std::optional<int> { throw std::runtime_error("broken"); },
        std::nullopt);
    check(
        "throwsNoException", [](const std::stop_token&) -> std::optional<int> { throw 1; },
        std::nullopt);
}

TEST(WatchdogTest, aHungOperationIsAskedToStopAndLeftBehind)
{
    enum class Cancelled { never, before, meanwhile };
    const auto check = [](const char* name, std::chrono::nanoseconds limit, Cancelled cancelled) {
        SCOPED_TRACE(name);
        const auto isReleased = std::make_shared<std::latch>(1);
        const auto wasAskedToStop = std::make_shared<std::atomic_bool>(false);
        std::stop_source caller;
        if (cancelled == Cancelled::before)
            caller.request_stop();
        const auto answer = Watchdog::run<int>(
            limit,
            [=](const std::stop_token& stop) {
                const std::stop_callback note(stop, [=] { *wasAskedToStop = true; });
                if (cancelled == Cancelled::meanwhile)
                    std::stop_source(caller).request_stop();
                isReleased->wait();
                return 7;
            },
            caller.get_token());
        EXPECT_EQ(answer, std::nullopt);
        EXPECT_TRUE(Harness::waitFor([&] { return wasAskedToStop->load(); }));
        isReleased->count_down();
        EXPECT_TRUE(Harness::waitFor([&] { return isReleased.use_count() == 1; }))
            << "what the operation held is let go of once it ends";
    };
    check("limitPasses", 20ms, Cancelled::never);
    check("noTimeAtAll", 0ns, Cancelled::never);
    check("cancelledBefore", 1h, Cancelled::before);
    check("cancelledMeanwhile", 1h, Cancelled::meanwhile);
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
