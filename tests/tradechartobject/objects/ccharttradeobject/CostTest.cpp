#include "tests/support/ByName.h"
#include "tests/tradechartobject/objects/ccharttradeobject/CChartTradeObjectTest.h"

#include <optional>

using ::testing::IsEmpty;
using ::testing::SizeIs;
using namespace TradeChart;

namespace {

class CChartTradeObjectCost : public CChartTradeObjectTest
{
};

TEST_F(CChartTradeObjectCost, AsksForTheCostAtEveryCalcItAndBlocks)
{
    createLine(R"({"costprice":"12.5"})");
    ASSERT_THAT(bus().requests, SizeIs(1));
    EXPECT_EQ(bus().requests[0].topic, "TradeQuery");
    EXPECT_EQ(bus().requests[0].payload, "{\n"
                                         "    \"cmd\": \"HolderCostPrice\",\n"
                                         "    \"market\": \"SH\",\n"
                                         "    \"stkcode\": \"600536\"\n"
                                         "}\n");
    EXPECT_EQ(drawnCost(), 12.5);
    recalc();
    EXPECT_THAT(requests(), SizeIs(2));
    EXPECT_THAT(questions(), IsEmpty());
}

TEST_F(CChartTradeObjectCost, AsksNoCostWhileTheMarketNumberIsMinusOne)
{
    answerWith(R"({"costprice":"12.5"})");
    create(costLine);
    EXPECT_FALSE(overlay->requestHolderPrice());
    EXPECT_TRUE(calc(makeSecurity(-1, "600536", 9), threeDays, Korvane::DayPeriod));
    EXPECT_THAT(requests(), IsEmpty());
    EXPECT_EQ(drawnCost(), std::nullopt);
}

struct CostAnswer
{
    const char *name;
    const char *answer;
    bool isTaken;
    std::optional<double> drawn;
};

class CChartTradeObjectCostText : public CChartTradeObjectTest,
                                  public ::testing::WithParamInterface<CostAnswer>
{
};

TEST_P(CChartTradeObjectCostText, IsReadFromTheAnswer)
{
    createLine(GetParam().answer);
    EXPECT_EQ(drawnCost(), GetParam().drawn);
    EXPECT_EQ(overlay->requestHolderPrice(), GetParam().isTaken);
}

INSTANTIATE_TEST_SUITE_P(
    Costs, CChartTradeObjectCostText,
    ::testing::Values(CostAnswer{"ADecimalText", R"({"costprice":"12.345"})", true, 12.345},
                      CostAnswer{"AJsonNumberAsZero", R"({"costprice":12.345})", true, 0.0},
                      CostAnswer{"AMissingKeyAsZero", R"({"success":false})", true, 0.0},
                      CostAnswer{"AnEmptyObjectAsZero", "{}", true, 0.0},
                      CostAnswer{
                          "TheCostOfWhateverElseTheAnswerNames",
                          R"({"cmd":"x","stkcode":"000001","market":"2","success":false,"costprice":"12.5"})",
                          true, 12.5},
                      CostAnswer{"WordsAsZero", R"({"costprice":"none"})", true, 0.0},
                      CostAnswer{"TheCostInsideDataNot", R"({"data":{"costprice":"12"}})", true, 0.0},
                      CostAnswer{"NanAsNoLine", R"({"costprice":"nan"})", true, std::nullopt},
                      CostAnswer{"InfinityAsNoLine", R"({"costprice":"inf"})", true, std::nullopt},
                      CostAnswer{"NothingAsNoLine", "", false, std::nullopt},
                      CostAnswer{"AnArrayAsNoLine", R"([{"costprice":"12"}])", false, std::nullopt},
                      CostAnswer{"BrokenJsonAsNoLine", R"({"costprice":"12")", false, std::nullopt}),
    ByName());

TEST_F(CChartTradeObjectCost, ForgetsTheCostBeforeItAsks)
{
    createLine(R"({"costprice":"12.5"})");
    bus().answerRequest = [this](const RecordedBus::Message &) {
        EXPECT_EQ(drawnCost(), std::nullopt);
        return QByteArray();
    };
    recalc();
    EXPECT_EQ(drawnCost(), std::nullopt);
}

TEST_F(CChartTradeObjectCost, ForgetsTheCostAlsoWhenThereIsNoSecurityToAskAbout)
{
    createLine(R"({"costprice":"12.5"})");
    calc(makeSecurity(-1, "600536", 9), threeDays, Korvane::DayPeriod);
    EXPECT_EQ(drawnCost(), std::nullopt);
}

TEST_F(CChartTradeObjectCost, KeepsTheCostWhenAQuestionBetweenTwoCalcItsGetsNoAnswer)
{
    createLine(R"({"costprice":"12.5"})");
    answerWith("");
    EXPECT_FALSE(overlay->requestHolderPrice());
    EXPECT_EQ(drawnCost(), 12.5);
}

TEST_F(CChartTradeObjectCost, KeepsTheCostWithoutBarsButDrawsNothing)
{
    createLine(R"({"costprice":"12.5"})");
    calc(shanghai, {}, Korvane::DayPeriod);
    EXPECT_EQ(drawnCost(), std::nullopt);
    EXPECT_EQ(overlay->hitTest(0, axis.yOf(12.5)), 0);
}

TEST_F(CChartTradeObjectCost, TakesNoCostThatWasSentToEverybody)
{
    createLine(R"({"costprice":"12.5"})");
    hear(Topic::TRADEQUERY, R"({"cmd":"HolderCostPrice","stkcode":"600536","costprice":"99"})");
    EXPECT_EQ(drawnCost(), 12.5);
}

} // namespace
