#include "tests/tradechartobject/objects/ccharttradeobject/CChartTradeObjectTest.h"

using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;
using namespace TradeChart;

namespace {

class CChartTradeObjectNotifications : public CChartTradeObjectTest
{
};

TEST_F(CChartTradeObjectNotifications, AsksForTodaysTradesAfterANotificationInAnyLetterCase)
{
    create(tradeMarkers);
    calc(makeSecurity(1, "abC1", 5), threeDays, Korvane::DayPeriod);
    bus().sent.clear();
    hear(Topic::TRADENOTIFY, R"({"stkcode":"ABc1"})");
    EXPECT_THAT(requests(), ElementsAre("{\n"
                                        "    \"cmd\": \"TodayTrade\",\n"
                                        "    \"market\": \"SH\",\n"
                                        "    \"stkcode\": \"abC1\"\n"
                                        "}\n"));
    EXPECT_EQ(bus().requests[0].topic, "TradeQuery");
    EXPECT_THAT(questions(), IsEmpty());
}

TEST_F(CChartTradeObjectNotifications, AsksForTodaysTradesAlsoAsACostLine)
{
    createLine(R"({"costprice":"12.5"})");
    hearNotification();
    ASSERT_THAT(requests(), SizeIs(2));
    EXPECT_TRUE(requests()[1].contains("TodayTrade"));
}

TEST_F(CChartTradeObjectNotifications, OnlyAsksForTodaysTradesAfterANotificationThatCarriesRows)
{
    createMarkers();
    hearHistory({buy(10)});
    hear(Topic::TRADENOTIFY, historyAnswer({sell(9)}));
    recalc();
    EXPECT_THAT(requests(), SizeIs(1));
    EXPECT_EQ(drawn(), "0 - -");
}

TEST_F(CChartTradeObjectNotifications, TakesOverTheSecurityWithoutBars)
{
    createMarkers();
    calc(shenzhen, {}, Korvane::DayPeriod);
    hearNotification();
    EXPECT_THAT(requests(), IsEmpty()) << "600536 is no longer shown";
    hear(Topic::TRADENOTIFY, R"({"stkcode":"000001"})");
    EXPECT_THAT(requests(), SizeIs(1));
}

TEST_F(CChartTradeObjectNotifications, TakesOverTheSecurityWhateverItsIdentityWord)
{
    createMarkers();
    calc(makeSecurity(0, "000001", 7001), threeDays, Korvane::DayPeriod);
    overlay->requestTodayTradeInfo();
    ASSERT_THAT(requests(), SizeIs(1));
    EXPECT_TRUE(requests()[0].contains("\"market\": \"SZ\""));
    EXPECT_TRUE(requests()[0].contains("\"stkcode\": \"000001\""));
}

TEST_F(CChartTradeObjectNotifications, AsksForTodaysTradesOfNothingBeforeASecurityIsShown)
{
    create(tradeMarkers);
    EXPECT_FALSE(overlay->requestTodayTradeInfo());
    hear(Topic::TRADENOTIFY, R"({"market":"1"})");
    EXPECT_THAT(requests(), SizeIs(2));
    EXPECT_THAT(requests(), Each(HasText("\"stkcode\": \"\"")));
}

TEST_F(CChartTradeObjectNotifications, TakesAnEmptyNotificationForNoneBeforeASecurityIsShown)
{
    create(tradeMarkers);
    hear(Topic::TRADENOTIFY, "{}");
    EXPECT_THAT(requests(), IsEmpty());
}

TEST_F(CChartTradeObjectNotifications, AddsTodaysTradesAgainAtEveryNotification)
{
    createMarkers();
    hearHistory({buy(10)});
    answerWith(todaysAnswer({buy(11)}));
    hearNotification();
    hearNotification();
    recalc();
    EXPECT_EQ(listAt(0, 10.5, 3),
              (QStringList{line("买入", "10.00"), line("买入", "11.00"), line("买入", "11.00")}));
}

} // namespace
