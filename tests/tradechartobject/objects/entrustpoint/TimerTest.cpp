#include "tests/tradechartobject/objects/entrustpoint/EntrustPointTest.h"

using ::testing::IsEmpty;
using namespace TradeChart;

namespace {

class EntrustPointTimer : public EntrustPointTest
{
};

TEST_F(EntrustPointTimer, NeitherStartsItsTimerNorAsksWhenConstructed)
{
    create();
    EXPECT_THAT(questions(), IsEmpty());
    EXPECT_FALSE(timer()->isActive());
    EXPECT_TRUE(timer()->isSingleShot());
}

TEST_F(EntrustPointTimer, HearsOfASecurityThatCameWithoutBarsThroughTheTimerOnly)
{
    create({{QStringLiteral("auto_refresh_time"), 1}});
    calc(shanghai, {}, Korvane::IntradayPeriod);
    calc(shanghai, threeMinutes, Korvane::IntradayPeriod);
    EXPECT_THAT(questions(), IsEmpty());
    EXPECT_TRUE(timer()->isActive());
    EXPECT_TRUE(waitUntil([] { return todayQuestions() == 1; }));
}

TEST_F(EntrustPointTimer, StartsItsTimerAnewForAnotherSecurity)
{
    createOnThreeMinutes();
    startTimerOddly();
    calc(shenzhen, threeMinutes, Korvane::IntradayPeriod);
    EXPECT_TRUE(timer()->isActive());
    EXPECT_EQ(timer()->interval(), 10000);
}

TEST_F(EntrustPointTimer, AsksForTodaysOrdersWhenTheTimerEndsAlsoOnThePastChart)
{
    axis.mode = Korvane::PastDayChart;
    createOnThreeMinutes({{QStringLiteral("auto_refresh_time"), 1}});
    ASSERT_TRUE(waitUntil([] { return questions().size() == 1; }));
    EXPECT_EQ(questions()[0],
              R"({"cmd":"EntrustTodayTrade","market":"SH","screenId":"screen-1","stkcode":"600536"})");
    EXPECT_FALSE(timer()->isActive()) << "a lost answer stops the refresh";
    calc(shanghai, threeMinutes, Korvane::IntradayPeriod);
    EXPECT_TRUE(timer()->isActive());
}

TEST_F(EntrustPointTimer, LeavesARunningTimerAloneInCalcIt)
{
    createOnThreeMinutes();
    startTimerOddly();
    calc(shanghai, threeMinutes, Korvane::IntradayPeriod);
    EXPECT_TRUE(timerRunsOn());
    calc(shanghai, {}, Korvane::IntradayPeriod);
    EXPECT_TRUE(timerRunsOn()) << "nor without bars";
}

class EntrustPointTimerAfterAnswer : public EntrustPointTest,
                                     public ::testing::WithParamInterface<const char *>
{
};

TEST_P(EntrustPointTimerAfterAnswer, RestartsItsTimerAfterEveryAnswer)
{
    createOnThreeMinutes({{QStringLiteral("auto_refresh_time"), 7}});
    const QJsonValue answers[] = {QJsonArray{},
                                  QJsonArray{anOrder()},
                                  QJsonArray{with(SentOrder(), "bsflag2", QStringLiteral("0F"))},
                                  QJsonArray{with(SentOrder(), "market", QStringLiteral("2"))},
                                  QJsonArray{5},
                                  QStringLiteral("no array"),
                                  QJsonObject{},
                                  QJsonValue::Undefined};
    for (const QJsonValue &data : answers) {
        startTimerOddly();
        hear(Topic::TRADEQUERY, sentAnswer(GetParam(), data));
        EXPECT_TRUE(timer()->isActive());
        EXPECT_EQ(timer()->interval(), 7000);
    }
}

TEST_P(EntrustPointTimerAfterAnswer, StartsAnIdleTimer)
{
    createOnThreeMinutes();
    timer()->stop();
    hearOrders({}, GetParam());
    EXPECT_TRUE(timer()->isActive());
}

TEST_P(EntrustPointTimerAfterAnswer, AsksForARepaintBeforeItRestartsItsTimer)
{
    createOnThreeMinutes();
    timer()->stop();
    bool wasActive = true;
    axis.onUpdate = [&] { wasActive = timer()->isActive(); };
    hearOrders({SentOrder()}, GetParam());
    EXPECT_FALSE(wasActive);
    EXPECT_TRUE(timer()->isActive());
}

INSTANTIATE_TEST_SUITE_P(Commands, EntrustPointTimerAfterAnswer,
                         ::testing::Values("EntrustTodayTrade", "EntrustHistoryTrade"));

} // namespace
