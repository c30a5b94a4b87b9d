#include "tests/tradechartobject/objects/bspoint/BSPointTest.h"

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;
using namespace TradeChart;

namespace {

class BSPointNotifications : public BSPointTest
{
};

TEST_F(BSPointNotifications, AsksForTodaysTradesAfterANotificationInAnyLetterCase)
{
    create();
    calc(makeSecurity(1, "abC1", 5), threeDays, Korvane::DayPeriod);
    bus().sent.clear();
    hear(Topic::TRADENOTIFY, R"({"stkcode":"ABc1"})");
    ASSERT_THAT(questions(), SizeIs(1));
    EXPECT_TRUE(questions()[0].contains("TodayTrade"));
}

TEST_F(BSPointNotifications, AsksForTodaysTradesAfterANotificationWhateverMarketAndScreenItNames)
{
    createOnThreeDays();
    hear(Topic::TRADENOTIFY, R"({"stkcode":"600536","market":"2","screenId":"another"})");
    EXPECT_THAT(
        questions(),
        ElementsAre(R"({"cmd":"TodayTrade","market":"SH","screenId":"screen-1","stkcode":"600536"})"));
}

TEST_F(BSPointNotifications, OnlyAsksForTodaysTradesAfterANotificationThatCarriesRows)
{
    createOnThreeDays();
    hear(Topic::TRADENOTIFY,
         sentAnswer("HistoryTrade",
                    QJsonArray{SentTrade{"B", "20240102", "9301500", "1", "1"}.in(pastTrades)}));
    EXPECT_THAT(questions(), SizeIs(1));
    EXPECT_EQ(drawn(), "   ");
}

TEST_F(BSPointNotifications, IgnoresAnEmptyNotificationBeforeASecurityIsShown)
{
    create();
    hear(Topic::TRADENOTIFY, QByteArray("{}"));
    EXPECT_THAT(questions(), IsEmpty());
}

TEST_F(BSPointNotifications, HearsWhatNamesNoSecurityWhileItShowsNone)
{
    create();
    hear(Topic::TRADENOTIFY, QByteArray(R"({"x":"1"})"));
    EXPECT_THAT(questions(), SizeIs(1));
    timer()->stop();
    hear(Topic::TRADEQUERY, QByteArray(R"({"cmd":"TodayTrade","data":[]})"));
    EXPECT_TRUE(timer()->isActive());
    hear(Topic::TRADEQUERY, QByteArray(R"({"cmd":"HistoryTrade","data":[{"bsflag2":"B"}]})"));
    EXPECT_THAT(axis.updated, SizeIs(1));
}

} // namespace
