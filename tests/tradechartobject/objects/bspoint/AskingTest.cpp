#include "tests/tradechartobject/objects/bspoint/BSPointTest.h"

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

namespace {

class BSPointAsking : public BSPointTest
{
};

TEST_F(BSPointAsking, AsksForTheShownDaysWhenBarsCome)
{
    create();
    EXPECT_TRUE(calc(shanghai, threeDays, Korvane::DayPeriod));
    ASSERT_THAT(bus().sent, SizeIs(1));
    EXPECT_EQ(bus().sent[0].channel, "Global");
    EXPECT_EQ(bus().sent[0].topic, "TradeQuery");
    EXPECT_EQ(
        bus().sent[0].payload,
        R"({"cmd":"HistoryTrade","end":"20240104","market":"SH","screenId":"screen-1","start":"20240102","stkcode":"600536"})");
}

TEST_F(BSPointAsking, AsksAgainOnlyWhenTheFirstOrLastDayChanges)
{
    createOnThreeDays();
    calc(shanghai, threeDays, Korvane::DayPeriod);
    calc(shanghai, {threeDays.front(), threeDays.back()}, Korvane::DayPeriod);
    EXPECT_THAT(questions(), IsEmpty());
    calc(shanghai, {makeDayBar(20231229), threeDays.back()}, Korvane::DayPeriod);
    calc(shanghai, {makeDayBar(20231229), makeDayBar(20240105)}, Korvane::DayPeriod);
    ASSERT_THAT(questions(), SizeIs(2));
    EXPECT_TRUE(questions()[0].contains(R"("end":"20240104")") &&
                questions()[0].contains(R"("start":"20231229")"));
    EXPECT_TRUE(questions()[1].contains(R"("end":"20240105")") &&
                questions()[1].contains(R"("start":"20231229")"));
}

TEST_F(BSPointAsking, AsksNothingWithoutBars)
{
    create();
    EXPECT_TRUE(calc(shanghai, {}, Korvane::DayPeriod));
    EXPECT_TRUE(overlay->calcIt(shanghai, nullptr, 5, Korvane::DayPeriod, 0, 0));
    EXPECT_TRUE(overlay->calcIt(shanghai, threeDays.data(), -5, Korvane::DayPeriod, 0, 0));
    EXPECT_THAT(questions(), IsEmpty());
}

TEST_F(BSPointAsking, NeverAsksForTodaysTradesFromCalcIt)
{
    create();
    calc(shanghai, threeDays, Korvane::DayPeriod);
    calc(shanghai, {makeDayBar(20240105)}, Korvane::DayPeriod);
    for (const QByteArray &question : questions()) {
        EXPECT_FALSE(question.contains("TodayTrade"));
    }
}

TEST_F(BSPointAsking, ReportsARefusedQuestionAndDoesNotRepeatItForTheSameDays)
{
    const LogCapture log;
    create();
    timer()->stop();
    bus().takesMessages = false;
    EXPECT_FALSE(calc(shanghai, threeDays, Korvane::DayPeriod));
    EXPECT_TRUE(timer()->isActive());
    bus().takesMessages = true;
    EXPECT_TRUE(calc(shanghai, threeDays, Korvane::DayPeriod));
    EXPECT_THAT(questions(), IsEmpty());
    EXPECT_THAT(log.all(), IsEmpty());
}

TEST_F(BSPointAsking, SendsTheHistoryQuestionAlsoBeforeASecurityIsShown)
{
    create();
    EXPECT_TRUE(overlay->sendQueryHistoryTradeInfoReq());
    bus().takesMessages = false;
    EXPECT_FALSE(overlay->sendQueryHistoryTradeInfoReq());
    EXPECT_THAT(
        questions(),
        ElementsAre(
            R"({"cmd":"HistoryTrade","end":"-1","market":"","screenId":"screen-1","start":"-1","stkcode":""})"));
}

TEST_F(BSPointAsking, SendsTodaysQuestionAlsoBeforeASecurityIsShown)
{
    create().sendQueryTodayTradeInfoReq();
    EXPECT_THAT(questions(),
                ElementsAre(R"({"cmd":"TodayTrade","market":"","screenId":"screen-1","stkcode":""})"));
}

} // namespace
