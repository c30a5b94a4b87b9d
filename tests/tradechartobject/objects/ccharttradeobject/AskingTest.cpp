#include "tests/support/ByName.h"
#include "tests/tradechartobject/objects/ccharttradeobject/CChartTradeObjectTest.h"

using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

namespace {

class CChartTradeObjectAsking : public CChartTradeObjectTest
{
};

TEST_F(CChartTradeObjectAsking, AsksForTheShownDaysWhenBarsCome)
{
    create(tradeMarkers);
    EXPECT_TRUE(calc(shanghai, {makeDayBar(20240102), makeDayBar(20240329)}, Korvane::DayPeriod));
    ASSERT_THAT(bus().sent, SizeIs(1));
    EXPECT_EQ(bus().sent[0].channel, "Global");
    EXPECT_EQ(bus().sent[0].topic, "TradeQuery");
    EXPECT_EQ(bus().sent[0].payload, "{\n"
                                     "    \"cmd\": \"HistoryTrade\",\n"
                                     "    \"end\": \"20240329\",\n"
                                     "    \"market\": \"SH\",\n"
                                     "    \"start\": \"20240102\",\n"
                                     "    \"stkcode\": \"600536\"\n"
                                     "}\n");
    EXPECT_THAT(requests(), IsEmpty());
}

TEST_F(CChartTradeObjectAsking, AsksAgainOnlyWhenTheFirstOrLastDayChanges)
{
    createMarkers();
    recalc();
    calc(shanghai, {threeDays.front(), threeDays.back()}, Korvane::DayPeriod);
    EXPECT_THAT(questions(), IsEmpty());
    calc(shanghai, {makeDayBar(20231229), threeDays.back()}, Korvane::DayPeriod);
    calc(shanghai, {makeDayBar(20231229), makeDayBar(20240105)}, Korvane::DayPeriod);
    EXPECT_THAT(questions(), SizeIs(2));
}

TEST_F(CChartTradeObjectAsking, AsksByTheDaysOfMinuteBars)
{
    create(tradeMarkers);
    calc(shanghai, {makeMinuteBar(20240102, 1459), makeMinuteBar(20240104, 930)}, Korvane::IntradayPeriod);
    ASSERT_THAT(questions(), SizeIs(1));
    EXPECT_TRUE(questions()[0].contains("\"start\": \"20240102\""));
    EXPECT_TRUE(questions()[0].contains("\"end\": \"20240104\""));
}

TEST_F(CChartTradeObjectAsking, AsksByTheFirstAndTheLastBarAlsoWhenOthersAreEarlierOrLater)
{
    create(tradeMarkers);
    calc(shanghai, {makeDayBar(20240105), makeDayBar(20240108), makeDayBar(20240103), makeDayBar(20240104)},
         4);
    ASSERT_THAT(questions(), SizeIs(1));
    EXPECT_TRUE(questions()[0].contains("\"start\": \"20240105\""));
    EXPECT_TRUE(questions()[0].contains("\"end\": \"20240104\""));
}

TEST_F(CChartTradeObjectAsking, AsksForDayZeroOnAPeriodOfNeitherKind)
{
    create(tradeMarkers);
    calc(shanghai, threeDays, 8);
    ASSERT_THAT(questions(), SizeIs(1));
    EXPECT_TRUE(questions()[0].contains("\"start\": \"0\""));
}

TEST_F(CChartTradeObjectAsking, AsksAgainAtTheNextCalcItWhenTheBusRefuses)
{
    create(tradeMarkers);
    bus().takesMessages = false;
    EXPECT_TRUE(calc(shanghai, threeDays, Korvane::DayPeriod)) << "the bars are taken all the same";
    bus().takesMessages = true;
    EXPECT_TRUE(calc(shanghai, threeDays, Korvane::DayPeriod));
    EXPECT_THAT(questions(), SizeIs(1));
}

TEST_F(CChartTradeObjectAsking, KnowsTheBarsOfAClickWhileTheQuestionGoesOut)
{
    create(tradeMarkers);
    bus().duringSend = [this] { overlay->handleMousePress(axis.barToX(2), 0); };
    ASSERT_TRUE(calc(shanghai, threeDays, Korvane::DayPeriod));
    bus().duringSend = nullptr;
    EXPECT_THAT(axis.barsAsked, ElementsAre(2));
}

TEST_F(CChartTradeObjectAsking, TakesTheBarsAlsoWhenTheBusRefusesTheQuestion)
{
    createMarkers();
    hearHistory({buy(10)});
    bus().takesMessages = false;
    EXPECT_TRUE(calc(shanghai, {makeDayBar(20240105, 3, 20), makeDayBar(20240108)}, Korvane::DayPeriod));
    EXPECT_EQ(drawn(), "0 -");
    EXPECT_THAT(painter.calls[0].prices, ElementsAre(20, 11));
    EXPECT_THAT(painter.calls[3].prices, ElementsAre(3, 9));
}

TEST_F(CChartTradeObjectAsking, MarksTheTradesOfAnAnswerThatComesWhileTheQuestionIsSent)
{
    create(tradeMarkers);
    bus().duringSend = [] { hearHistory({buy(10)}); };
    calc(shanghai, threeDays, Korvane::DayPeriod);
    EXPECT_EQ(drawn(), "0 - -");
}

TEST_F(CChartTradeObjectAsking, ReportsWhetherTheHistoryQuestionWentOut)
{
    createMarkers();
    EXPECT_TRUE(overlay->requestHistoryTradeInfo(20240102, 20240104));
    bus().takesMessages = false;
    EXPECT_FALSE(overlay->requestHistoryTradeInfo(20230102, 20230104));
    bus().takesMessages = true;
    bus().sent.clear();
    recalc();
    EXPECT_THAT(questions(), IsEmpty()) << "the range that was asked for is held";
}

TEST_F(CChartTradeObjectAsking, HoldsTheDaysThatItIsToldToAskFor)
{
    create(tradeMarkers);
    EXPECT_TRUE(overlay->requestHistoryTradeInfo(20240102, 20240104));
    bus().sent.clear();
    recalc();
    EXPECT_THAT(questions(), IsEmpty());

    EXPECT_TRUE(overlay->requestHistoryTradeInfo(20230102, 20230104));
    bus().sent.clear();
    recalc();
    ASSERT_THAT(questions(), SizeIs(1));
    EXPECT_TRUE(questions()[0].contains("\"start\": \"20240102\""));
    EXPECT_TRUE(questions()[0].contains("\"end\": \"20240104\""));
}

TEST_F(CChartTradeObjectAsking, DoesNotAskAgainForAnotherSecurityOfTheSameDays)
{
    createMarkers();
    hearHistory({buy(10)});
    calc(shenzhen, threeDays, Korvane::DayPeriod);
    EXPECT_THAT(questions(), IsEmpty());
    EXPECT_EQ(drawn(), "0 - -") << "a terminal ends the object with the security";
}

TEST_F(CChartTradeObjectAsking, AsksNothingWithoutBars)
{
    for (const char *json : {costLine, tradeMarkers}) {
        create(json);
        EXPECT_TRUE(calc(shanghai, {}, Korvane::DayPeriod));
        EXPECT_TRUE(overlay->calcIt(shanghai, nullptr, 5, Korvane::DayPeriod, 0, 0));
        EXPECT_TRUE(overlay->calcIt(shanghai, threeDays.data(), -5, Korvane::DayPeriod, 0, 0));
    }
    EXPECT_THAT(questions(), IsEmpty());
    EXPECT_THAT(requests(), IsEmpty());
}

TEST_F(CChartTradeObjectAsking, KeepsItsTradesAndTheirDaysWithoutBars)
{
    createMarkers();
    hearHistory({buy(10)});
    calc(shanghai, {}, Korvane::DayPeriod);
    recalc();
    EXPECT_THAT(questions(), IsEmpty());
    EXPECT_EQ(drawn(), "0 - -");
}

TEST_F(CChartTradeObjectAsking, NeverAsksForTodaysTradesFromCalcIt)
{
    createMarkers();
    recalc();
    EXPECT_THAT(requests(), IsEmpty());
}

struct MarketCase
{
    const char *name;
    int number;
    const char *code;
    int askedForCost; ///< times
};

class CChartTradeObjectAskingMarket : public CChartTradeObjectTest,
                                      public ::testing::WithParamInterface<MarketCase>
{
};

TEST_P(CChartTradeObjectAskingMarket, IsNamedInEveryQuestion)
{
    const auto security = makeSecurity(GetParam().number, "600536", 5);
    create(tradeMarkers);
    calc(security, threeDays, Korvane::DayPeriod);
    hearNotification();
    create(costLine);
    calc(security, threeDays, Korvane::DayPeriod);
    EXPECT_THAT(questions(), SizeIs(1));
    EXPECT_THAT(requests(), SizeIs(1 + static_cast<std::size_t>(GetParam().askedForCost)));
    const QByteArray market = QByteArray("\"market\": \"") + GetParam().code + '"';
    EXPECT_THAT(questions(), Each(HasText(market)));
    EXPECT_THAT(requests(), Each(HasText(market)));
}

INSTANTIATE_TEST_SUITE_P(Numbers, CChartTradeObjectAskingMarket,
                         ::testing::Values(MarketCase{"Shenzhen", 0, "SZ", 1},
                                           MarketCase{"Shanghai", 1, "SH", 1},
                                           MarketCase{"Oil", 24, "OIL", 1},
                                           MarketCase{"WithoutACode", 12, "", 1},
                                           MarketCase{"BelowMinusOne", -2, "", 1},
                                           MarketCase{"NotSetWhichLeavesOnlyTheCostUnasked", -1, "", 0}),
                         ByName());

} // namespace
