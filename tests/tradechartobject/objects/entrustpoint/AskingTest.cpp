#include "tests/tradechartobject/objects/entrustpoint/EntrustPointTest.h"

#include <stdexcept>

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;

namespace {

class EntrustPointAsking : public EntrustPointTest
{
};

TEST_F(EntrustPointAsking, AsksForTodaysOrdersOnTodaysChart)
{
    create();
    EXPECT_TRUE(calc(shanghai, threeMinutes, Korvane::IntradayPeriod));
    ASSERT_THAT(bus().sent, SizeIs(1));
    EXPECT_EQ(bus().sent[0].channel, "Global");
    EXPECT_EQ(bus().sent[0].topic, "TradeQuery");
    EXPECT_EQ(bus().sent[0].payload,
              R"({"cmd":"EntrustTodayTrade","market":"SH","screenId":"screen-1","stkcode":"600536"})");
    EXPECT_TRUE(timer()->isActive());
}

TEST_F(EntrustPointAsking, AsksForTheDayOfTheLastBarOnThePastChart)
{
    axis.mode = Korvane::PastDayChart;
    create();
    EXPECT_TRUE(calc(shenzhen, {makeMinuteBar(20240104, 1500), makeMinuteBar(20240105, 1500)},
                     Korvane::IntradayPeriod));
    ASSERT_THAT(bus().sent, SizeIs(1));
    EXPECT_EQ(bus().sent[0].channel, "Global");
    EXPECT_EQ(bus().sent[0].topic, "TradeQuery");
    EXPECT_EQ(
        bus().sent[0].payload,
        R"({"cmd":"EntrustHistoryTrade","date":20240105,"market":"SZ","screenId":"screen-1","stkcode":"000001"})");
}

TEST_F(EntrustPointAsking, AsksForTheDayOfTheLastBarAlsoWhenItIsNotTheLatest)
{
    axis.mode = Korvane::PastDayChart;
    create();
    calc(shanghai, {makeMinuteBar(20240105, 1500), makeMinuteBar(20240104, 1500)}, Korvane::IntradayPeriod);
    ASSERT_THAT(questions(), SizeIs(1));
    EXPECT_THAT(questions()[0].toStdString(), HasSubstr(R"("date":20240104,)"));
}

TEST_F(EntrustPointAsking, AsksNothingInOtherChartModes)
{
    for (const int mode : {-1, 0, 3}) {
        axis.mode = mode;
        create();
        EXPECT_TRUE(calc(shanghai, threeMinutes, Korvane::IntradayPeriod));
        EXPECT_TRUE(timer()->isActive());
    }
    EXPECT_THAT(questions(), IsEmpty());
}

TEST_F(EntrustPointAsking, LooksAtTheChartModeOfTheMoment)
{
    create();
    axis.mode = Korvane::PastDayChart;
    calc(shanghai, threeMinutes, Korvane::IntradayPeriod);
    EXPECT_EQ(countOf("EntrustHistoryTrade"), 1);
}

TEST_F(EntrustPointAsking, AsksAgainOnlyForAnotherSecurity)
{
    createOnThreeMinutes();
    calc(shanghai, minutes({931, 932, 933, 934}), Korvane::IntradayPeriod);
    EXPECT_THAT(questions(), IsEmpty());
    calc(shenzhen, threeMinutes, Korvane::IntradayPeriod);
    EXPECT_THAT(questions(), SizeIs(1));
    EXPECT_THAT(questions()[0].toStdString(), HasSubstr(R"("stkcode":"000001")"));
}

TEST_F(EntrustPointAsking, AsksNothingWhenThePastChartMovesToAnotherDay)
{
    axis.mode = Korvane::PastDayChart;
    create();
    calc(shanghai, {makeMinuteBar(20240104, 931)}, Korvane::IntradayPeriod);
    bus().sent.clear();
    calc(shanghai, {makeMinuteBar(20240105, 931)}, Korvane::IntradayPeriod);
    axis.mode = Korvane::TodayChart;
    calc(shanghai, threeMinutes, Korvane::IntradayPeriod);
    EXPECT_THAT(questions(), IsEmpty()) << "nor when it becomes today's";
}

TEST_F(EntrustPointAsking, AsksNothingWithoutBars)
{
    create();
    EXPECT_TRUE(calc(shanghai, {}, Korvane::IntradayPeriod));
    EXPECT_TRUE(overlay->calcIt(shenzhen, nullptr, 5, Korvane::IntradayPeriod, 0, 0));
    EXPECT_THAT(questions(), IsEmpty());
    EXPECT_FALSE(timer()->isActive());
}

TEST_F(EntrustPointAsking, ThrowsForANegativeNumberOfBarsAndKeepsTheBars)
{
    createOnThreeMinutes();
    EXPECT_THROW(overlay->calcIt(shanghai, threeMinutes.data(), -1, Korvane::IntradayPeriod, 0, 0),
                 std::length_error);
    hearOrders({SentOrder()});
    EXPECT_THAT(drawn(), ElementsAre("0 20 10"));
}

TEST_F(EntrustPointAsking, SucceedsSilentlyWhenTheBusRefusesTheQuestion)
{
    const LogCapture log;
    for (const int mode : {1, 2}) {
        axis.mode = mode;
        create();
        bus().takesMessages = false;
        EXPECT_TRUE(calc(shanghai, threeMinutes, Korvane::IntradayPeriod));
        bus().takesMessages = true;
        EXPECT_TRUE(calc(shanghai, threeMinutes, Korvane::IntradayPeriod));
    }
    EXPECT_THAT(questions(), IsEmpty()) << "it is not repeated";
    EXPECT_THAT(log.all(), IsEmpty());
}

class EntrustPointAskingDate : public EntrustPointTest, public ::testing::WithParamInterface<long long>
{
};

TEST_P(EntrustPointAskingDate, IsAskedForAsAWholeNumber)
{
    createOnThreeMinutes();
    EXPECT_TRUE(overlay->sendQueryHistoryEntrustInfoReq(GetParam()));
    EXPECT_THAT(questions()[0].toStdString(),
                HasSubstr("\"date\":" + std::to_string(GetParam()) + ",\"market\""));
}

INSTANTIATE_TEST_SUITE_P(Dates, EntrustPointAskingDate, ::testing::Values(20240102, 0, -1, 9007199254740991));

TEST_F(EntrustPointAsking, TellsWhetherTheBusTookTheQuestionForAPastDay)
{
    createOnThreeMinutes();
    EXPECT_TRUE(overlay->sendQueryHistoryEntrustInfoReq(20240102));
    bus().takesMessages = false;
    EXPECT_FALSE(overlay->sendQueryHistoryEntrustInfoReq(20240102));
}

TEST_F(EntrustPointAsking, SendsTodaysQuestionAlsoBeforeASecurityIsShown)
{
    create().sendQueryTodayEntrustInfoReq();
    EXPECT_THAT(questions(),
                ElementsAre(R"({"cmd":"EntrustTodayTrade","market":"","screenId":"screen-1","stkcode":""})"));
}

TEST_F(EntrustPointAsking, NamesItsSecurityAndItsScreenInUtf8)
{
    axis.screen = "屏幕";
    create();
    calc(makeSecurity(1, "代码", 5), threeMinutes, Korvane::IntradayPeriod);
    EXPECT_THAT(
        questions(),
        ElementsAre(R"({"cmd":"EntrustTodayTrade","market":"SH","screenId":"屏幕","stkcode":"代码"})"));
}

} // namespace
