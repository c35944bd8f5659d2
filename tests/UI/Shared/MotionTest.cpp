#include "UI/Shared/Motion.h"

#include "Harness/Waiting.h"

#include <QList>

#include <cmath>
#include <gtest/gtest.h>

using namespace Lumenote;

namespace {

TEST(MotionTest, springsOvershootAndHaveSettledAtTheirEnd)
{
    for (const auto& timing : {Motion::entrance(), Motion::morph()}) {
        double highest = 0;
        for (double progress = 0; progress <= 1; progress += 0.01)
            highest = std::max(highest, timing.curve.valueForProgress(progress));
        EXPECT_NEAR(timing.curve.valueForProgress(0), 0, 1e-9);
        EXPECT_GT(highest, 1.005);
        EXPECT_LT(highest, 1.05);
        EXPECT_NEAR(timing.curve.valueForProgress(1), 1, 0.002);
    }
}

TEST(MotionTest, aRunEndsWithExactlyOneAndAtOnceWhereAnimationsAreOff)
{
    QObject owner;
    QList<double> steps;
    Motion::Run run(
        Motion::morph(), [&](double value) { steps.append(value); }, &owner);
    run.restart();
    EXPECT_TRUE(Harness::waitFor([&] { return !steps.isEmpty() && steps.constLast() == 1; }));
    EXPECT_GT(steps.size(), 3);

    steps.clear();
    Motion::setEnabled(false);
    run.restart();
    Motion::setEnabled(true);
    EXPECT_EQ(steps, QList<double>{1});
    EXPECT_EQ(run.state(), QAbstractAnimation::Stopped);
}

} // namespace
