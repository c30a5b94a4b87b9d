#include "tests/tradechartobject/objects/entrustpoint/EntrustPointTest.h"

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

namespace {

class EntrustPointPeriodsEach : public EntrustPointTest, public ::testing::WithParamInterface<int>
{
};

TEST_P(EntrustPointPeriodsEach, OtherThanTheIntradayOneIsLeftAlone)
{
    create();
    EXPECT_FALSE(calc(shanghai, threeMinutes, GetParam()));
    hearOrders({SentOrder()});
    EXPECT_THAT(questions(), IsEmpty());
    EXPECT_FALSE(timer()->isActive());
    EXPECT_FALSE(paint());
    EXPECT_THAT(painter.calls, IsEmpty());
    EXPECT_EQ(overlay->hitTest(0, yOfTen()), -1);
    EXPECT_FALSE(overlay->isPaintItPeriod(static_cast<Korvane::Period>(GetParam())));
}

INSTANTIATE_TEST_SUITE_P(Periods, EntrustPointPeriodsEach,
                         ::testing::Values(-1, 0, 1, 2, 3, 4, 5, 6, 7, 8, 10, 11, 20, 22, 36));

class EntrustPointPeriods : public EntrustPointTest
{
};

TEST_F(EntrustPointPeriods, PaintsOnTheIntradayPeriod)
{
    EXPECT_TRUE(create().isPaintItPeriod(Korvane::IntradayPeriod));
}

TEST_F(EntrustPointPeriods, KeepsWhatItShowsWhenAnotherPeriodIsRefused)
{
    createOnThreeMinutes();
    hearOrders({SentOrder()});
    EXPECT_FALSE(overlay->calcIt(shenzhen, nullptr, 0, Korvane::DayPeriod, 0, 0));
    EXPECT_THAT(drawn(), ElementsAre("0 20 10"));
    EXPECT_THAT(listAt(0, yOfTen()), ElementsAre("700001"));
}

TEST_F(EntrustPointPeriods, KeepsItsBarsWhenAnotherPeriodIsRefused)
{
    for (const auto &bars : {std::vector<Korvane::AnalyData>{makeDayBar(today)}, {}}) {
        createOnThreeMinutes();
        hearOrders({SentOrder()});
        EXPECT_FALSE(calc(shanghai, bars, Korvane::DayPeriod));
        EXPECT_EQ(overlay->hitTest(0, yOfTen()), 0);
        hearOrders({SentOrder{"0S"}});
        EXPECT_THAT(drawn(), ElementsAre("0 23 10"));
    }
}

TEST_F(EntrustPointPeriods, KeepsItsSecurityWhenAnotherPeriodIsRefused)
{
    createOnThreeMinutes();
    startTimerOddly();
    EXPECT_FALSE(calc(shenzhen, threeMinutes, Korvane::DayPeriod));
    overlay->sendQueryTodayEntrustInfoReq();
    EXPECT_THAT(questions()[0].toStdString(), HasSubstr(R"("stkcode":"600536")"));
    EXPECT_TRUE(timerRunsOn());
}

TEST_F(EntrustPointPeriods, RefusesAnotherPeriodWhateverTheNumberOfBars)
{
    createOnThreeMinutes();
    EXPECT_FALSE(overlay->calcIt(shanghai, threeMinutes.data(), -1, Korvane::DayPeriod, 0, 0));
}

} // namespace
