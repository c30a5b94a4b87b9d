#include "tests/tradechartobject/objects/positioncost/PositionCostTest.h"

using ::testing::IsEmpty;
using ::testing::SizeIs;

namespace {

class PositionCostTimer : public PositionCostTest
{
};

TEST_F(PositionCostTimer, AsksAgainAfterARefusalOnlyWhenTheTimerEnds)
{
    bus().takesMessages = false;
    create({{QStringLiteral("auto_refresh_time"), 1}});
    calc(shanghai, threeDays, Korvane::DayPeriod);
    bus().takesMessages = true;
    calc(shanghai, threeDays, Korvane::DayPeriod);
    EXPECT_THAT(questions(), IsEmpty());
    EXPECT_TRUE(waitUntil([] { return questions().size() == 1; }));
}

TEST_F(PositionCostTimer, AsksOncePerCalcItWhenTheTimerEnds)
{
    create({{QStringLiteral("auto_refresh_time"), 1}});
    calc(shanghai, threeDays, Korvane::DayPeriod);
    ASSERT_TRUE(waitUntil([] { return questions().size() == 2; }));
    EXPECT_FALSE(timer()->isActive()) << "nobody has redrawn since";
    calc(shanghai, threeDays, Korvane::DayPeriod);
    EXPECT_THAT(questions(), SizeIs(2));
    EXPECT_TRUE(timer()->isActive());
    EXPECT_TRUE(waitUntil([] { return questions().size() == 3; }));
}

TEST_F(PositionCostTimer, LetsARunningTimerRun)
{
    createOnShanghai();
    const int left = timer()->remainingTime();
    ASSERT_TRUE(waitUntil([&] { return timer()->remainingTime() < left - 20; }));
    const int leftNow = timer()->remainingTime();
    calc(shanghai, threeDays, Korvane::DayPeriod);
    calc(shenzhen, threeDays, Korvane::DayPeriod);
    EXPECT_LE(timer()->remainingTime(), leftNow);
}

TEST_F(PositionCostTimer, LeavesItsTimerToTheRedrawsOfTheHostWhenAnAnswerComes)
{
    createOnShanghai();
    for (const auto &hearAnswer : {+[] { hearCost(QStringLiteral("50")); }, &hearThatNothingIsHeld}) {
        timer()->stop();
        hearAnswer();
        EXPECT_FALSE(timer()->isActive());
        timer()->start(3600000);
        hearAnswer();
        EXPECT_TRUE(timer()->isActive());
        EXPECT_EQ(timer()->interval(), 3600000);
    }
}

} // namespace
