#include "Platform/Confinement.h"

#include <QByteArray>

#include <array>
#include <cstdlib>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <unistd.h>

using namespace std::chrono_literals;

namespace {

TEST(ConfinementTest, onlyWorkThatEndsWellSucceeds)
{
    struct Row {
        const char* name;
        std::function<bool()> work;
        bool succeeds = false;
        Platform::Confinement limits{.bytes = 256 << 20, .time = 1h};
    };
    const std::array rows{
        Row{"good", [] { return true; }, true},
        Row{"bad", [] { return false; }},
        Row{"throws", []() -> bool { throw 1; }},
        Row{"crashes", []() -> bool { std::abort(); }},
        Row{"takesSomeMemory", [] { return QByteArray(100 << 20, 'x').endsWith('x'); }, true},
        Row{"takesMuchMemory", [] { return QByteArray(1 << 30, 'x').endsWith('x'); }},
        Row{"hangs", [] { return pause() == 0; }, false, {.bytes = 256 << 20, .time = 20ms}},
    };
    for (const auto& row : rows)
        EXPECT_EQ(Platform::runConfined(row.work, row.limits).has_value(), row.succeeds)
            << row.name;
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
