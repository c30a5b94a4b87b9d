#include "tests/tradechartobject/objects/bspoint/BSPointTest.h"

#include <functional>

using ::testing::IsEmpty;
using namespace TradeChart;

namespace {

class BSPointTimer : public BSPointTest
{
};

TEST_F(BSPointTimer, StartsItsTimerAndAsksNothingWhenConstructed)
{
    create();
    EXPECT_THAT(questions(), IsEmpty());
    EXPECT_TRUE(timer()->isActive());
    EXPECT_TRUE(timer()->isSingleShot());
    EXPECT_EQ(timer()->interval(), 10000);
}

TEST_F(BSPointTimer, LetsARunningTimerRun)
{
    createOnThreeDays();
    timer()->setInterval(3600000);
    calc(shanghai, threeDays, Korvane::DayPeriod);
    EXPECT_EQ(timer()->interval(), 3600000);
    calc(shenzhen, threeDays, Korvane::DayPeriod);
    EXPECT_EQ(timer()->interval(), 10000) << "stopped and started by the change of security";
}

TEST_F(BSPointTimer, StopsItsTimerForANewSecurityWithoutBars)
{
    createOnThreeDays();
    calc(shenzhen, {}, Korvane::DayPeriod);
    EXPECT_FALSE(timer()->isActive());
    calc(shenzhen, threeDays, Korvane::DayPeriod);
    EXPECT_TRUE(timer()->isActive());
}

TEST_F(BSPointTimer, AsksForTodaysTradesWhenTheTimerEnds)
{
    create({{QStringLiteral("auto_refresh_time"), 1}});
    calc(shanghai, threeDays, Korvane::DayPeriod);
    bus().sent.clear();
    ASSERT_TRUE(waitUntil([] { return questions().size() == 1; }));
    EXPECT_EQ(bus().sent[0].channel, "Global");
    EXPECT_EQ(bus().sent[0].topic, "TradeQuery");
    EXPECT_EQ(questions()[0],
              R"({"cmd":"TodayTrade","market":"SH","screenId":"screen-1","stkcode":"600536"})");
    EXPECT_FALSE(timer()->isActive()) << "a lost answer stops the refresh";
    calc(shanghai, threeDays, Korvane::DayPeriod);
    EXPECT_TRUE(timer()->isActive());
}

TEST_F(BSPointTimer, RefreshesAsFastAsAnswersComeWithAnIntervalOfZero)
{
    create({{QStringLiteral("auto_refresh_time"), 0}});
    EXPECT_EQ(timer()->interval(), 0);
    ASSERT_TRUE(waitUntil([] { return questions().size() == 1; }));
    calc(shanghai, threeDays, Korvane::DayPeriod);
    ASSERT_TRUE(waitUntil([] { return questions().size() == 3; })) << "the history question, then today's";
    hearToday({});
    EXPECT_TRUE(waitUntil([] { return questions().size() == 4; }));
}

TEST_F(BSPointTimer, RestartsItsTimerAfterTodaysAnswerAlsoAnEmptyOne)
{
    createOnThreeDays();
    for (const auto &rows :
         {std::vector<SentTrade>{}, std::vector<SentTrade>{{"B", "20240104", "9301500", "1", "2"}}}) {
        timer()->start(3600000);
        hearToday(rows);
        EXPECT_TRUE(timer()->isActive());
        EXPECT_EQ(timer()->interval(), 10000);
    }
}

TEST_F(BSPointTimer, RestartsItsTimerAfterAnEmptyHistoryAnswerOnly)
{
    createOnThreeDays();
    timer()->stop();
    hearHistory({{"B", "20240103", "9301500", "10.5", "300"}});
    EXPECT_FALSE(timer()->isActive());
    axis.updated.clear();
    timer()->start(3600000);
    hearHistory({});
    EXPECT_EQ(timer()->interval(), 10000);
    EXPECT_THAT(axis.updated, IsEmpty());
}

TEST_F(BSPointTimer, LetsARunningTimerRunAfterANotificationAndAfterPastTrades)
{
    createOnThreeDays();
    const std::function<void()> messages[] = {
        [] { hear(Topic::TRADENOTIFY, R"({"stkcode":"600536"})"); },
        [] {
            hearHistory({{"B", "20240103", "9301500", "10.5", "300"}});
        },
    };
    for (const auto &hearMessage : messages) {
        timer()->start(3600000);
        hearMessage();
        EXPECT_TRUE(timer()->isActive());
        EXPECT_EQ(timer()->interval(), 3600000);
    }
}

TEST_F(BSPointTimer, RefreshesOnAfterARepaintInsideWhichTheHostStoppedItsTimer)
{
    createOnThreeDays();
    axis.onUpdate = [this] {
        calc(shenzhen, {}, Korvane::DayPeriod);
        EXPECT_FALSE(timer()->isActive());
    };
    hearToday({{"B", "20240104", "9301500", "1", "2"}});
    EXPECT_TRUE(timer()->isActive());
}

TEST_F(BSPointTimer, StartsItsTimerWithTheConfiguredIntervalEveryTime)
{
    create({{QStringLiteral("auto_refresh_time"), 7}});
    const std::function<void()> starts[] = {
        [this] {
            timer()->stop();
            calc(shanghai, threeDays, Korvane::DayPeriod);
        },
        [this] { calc(shenzhen, threeDays, Korvane::DayPeriod); },
        [this] { calc(shanghai, threeDays, Korvane::DayPeriod); },
        [] { hearToday({}); },
        [] {
            hearToday({{"B", "20240104", "9301500", "1", "2"}});
        },
        [] { hearHistory({}); },
    };
    int start = 0;
    for (const auto &act : starts) {
        timer()->start(3600000);
        act();
        EXPECT_TRUE(timer()->isActive());
        EXPECT_EQ(timer()->interval(), 7000) << "start " << start;
        ++start;
    }
}

TEST_F(BSPointTimer, WaitsForTheAnswerBeforeItsTimerRunsAgain)
{
    createOnThreeDays();
    timer()->stop();
    hear(Topic::TRADENOTIFY, QByteArray(R"({"stkcode":"600536"})"));
    EXPECT_FALSE(timer()->isActive());
    hearToday({});
    EXPECT_TRUE(timer()->isActive());
}

} // namespace
