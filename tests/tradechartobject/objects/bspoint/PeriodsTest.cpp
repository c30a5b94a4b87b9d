#include "tests/tradechartobject/objects/bspoint/BSPointTest.h"

using ::testing::IsEmpty;
using ::testing::SizeIs;

namespace {

class BSPointPeriodsEach : public BSPointTest, public ::testing::WithParamInterface<int>
{
};

TEST_P(BSPointPeriodsEach, OtherThanTheDailyOneIsLeftAlone)
{
    create();
    EXPECT_FALSE(calc(shanghai, threeDays, GetParam()));
    EXPECT_THAT(questions(), IsEmpty());
    EXPECT_FALSE(paint());
    EXPECT_THAT(painter.calls, IsEmpty());
    EXPECT_EQ(overlay->hitTest(0, anchorY(11)), -1);
    EXPECT_EQ(axis.hostCalls, 0);
    overlay->handleMousePress(0, 0);
    EXPECT_THAT(axis.popups, IsEmpty());
    EXPECT_FALSE(overlay->isPaintItPeriod(static_cast<Korvane::Period>(GetParam())));
}

INSTANTIATE_TEST_SUITE_P(Periods, BSPointPeriodsEach,
                         ::testing::Values(-1, 0, 1, 2, 3, 5, 6, 7, 8, 10, 11, 21, 22, 36));

class BSPointPeriods : public BSPointTest
{
};

TEST_F(BSPointPeriods, StartsNoTimerForAPeriodThatItRefuses)
{
    createOnThreeDays();
    timer()->stop();
    EXPECT_FALSE(calc(shanghai, threeDays, 5));
    EXPECT_FALSE(timer()->isActive());
}

TEST_F(BSPointPeriods, PaintsOnTheDailyPeriodAlsoWithoutBars)
{
    EXPECT_TRUE(create().isPaintItPeriod(Korvane::DayPeriod));
    calc(shanghai, {}, Korvane::DayPeriod);
    EXPECT_TRUE(paint());
    EXPECT_THAT(painter.calls, SizeIs(3));
}

TEST_F(BSPointPeriods, KeepsWhatItShowsWhenAnotherPeriodIsRefused)
{
    createOnThreeDays();
    hearHistory({{"B", "20240103", "9301500", "10.5", "300"}});
    EXPECT_FALSE(overlay->calcIt(shenzhen, nullptr, 0, Korvane::IntradayPeriod, 0, 0));
    EXPECT_EQ(drawn(), " B ");
    EXPECT_TRUE(timer()->isActive());
    EXPECT_THAT(listOn(1), SizeIs(1)) << "a click still finds its bar";
    EXPECT_TRUE(calc(shanghai, threeDays, Korvane::DayPeriod));
    EXPECT_THAT(questions(), IsEmpty()) << "the security and the days are still known";
    EXPECT_EQ(drawn(), " B ");
}

} // namespace
