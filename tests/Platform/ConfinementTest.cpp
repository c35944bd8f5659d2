#include "Platform/Confinement.h"

#include <QByteArray>

#include <cstdlib>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <unistd.h>

using namespace std::chrono_literals;

namespace {

TEST(ConfinementTest, onlyWorkThatEndsWellSucceeds)
{
    const auto check = [&](const char* name, const std::function<bool()>& work,
                           bool succeeds = false,
                           const Platform::Confinement& limits = {.bytes = 256 << 20, .time = 1h}) {
        EXPECT_EQ(Platform::runConfined(work, limits).has_value(), succeeds) << name;
    };
    check(
        "good", [] { return true; }, true);
    check("bad", [] { return false; });
    check("throws", []() -> bool { throw 1; });
    check("crashes", []() -> bool { std::abort(); });
    check(
        "takesSomeMemory", [] { return QByteArray(100 << 20, 'x').endsWith('x'); }, true);
    check("takesMuchMemory", [] { return QByteArray(1 << 30, 'x').endsWith('x'); });
    check("hangs", [] { return pause() == 0; }, false, {.bytes = 256 << 20, .time = 20ms});
}

TEST(ConfinementTest, nothingIsLeftBehind)
{
    int number = 1;
    EXPECT_TRUE(Platform::runConfined(
        [&number] {
            number = 2;
            return true;
        },
        {.bytes = 1 << 20, .time = 1h}));
    EXPECT_EQ(number, 1);
    rlimit limit{};
    getrlimit(RLIMIT_AS, &limit);
    EXPECT_EQ(limit.rlim_cur, RLIM_INFINITY);
}

} // namespace
