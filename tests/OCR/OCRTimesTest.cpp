#include "OCR/OCRTimes.h"

#include <gtest/gtest.h>

using namespace Lumenote;
using namespace std::chrono_literals;

namespace {

TEST(OCRTimesTest, timesAreRoundedWithinTheirUnit)
{
    EXPECT_EQ(OCRTimes::format(0ns), u"0ms"_qs);
    EXPECT_EQ(OCRTimes::format(499'999ns), u"0ms"_qs);
    EXPECT_EQ(OCRTimes::format(12'600us), u"13ms"_qs);
    EXPECT_EQ(OCRTimes::format(999'600us), u"1000ms"_qs);
    EXPECT_EQ(OCRTimes::format(1s), u"1.0s"_qs);
    EXPECT_EQ(OCRTimes::format(1'960ms), u"2.0s"_qs);
    EXPECT_EQ(OCRTimes::format(61'040ms), u"61.0s"_qs);
}

} // namespace
