#include "tests/support/ByName.h"
#include "tests/tradechartobject/objects/positioncost/PositionCostTest.h"

#include <optional>

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;
using namespace TradeChart;

namespace {

class PositionCostAnswers : public PositionCostTest
{
};

TEST_F(PositionCostAnswers, TakesTheCostAndAsksTheHostToRepaintIt)
{
    createOnShanghai();
    hearCost(QStringLiteral("50.125"));
    EXPECT_EQ(drawnCost(), 50.125);
    EXPECT_THAT(axis.updated, ElementsAre(static_cast<Korvane::IChartObject *>(overlay)));
}

TEST_F(PositionCostAnswers, AsksForARepaintAfterEveryAnswerAlsoOneThatSaysTheSame)
{
    createOnShanghai();
    hearCost(QStringLiteral("50"));
    hearCost(QStringLiteral("50"));
    EXPECT_THAT(axis.updated, SizeIs(2));
}

TEST_F(PositionCostAnswers, TakesAnAnswerWhoseCommandIsWrittenInEscapes)
{
    createOnShanghai();
    RecordedBus::instance().deliver(
        Topic::TRADEQUERY,
        R"({"cmd":"\u0048olderCostPrice","data":{"stkcode":"600536","market":"1","costprice":"50"}})");
    EXPECT_EQ(drawnCost(), 50.0);
}

TEST_F(PositionCostAnswers, TakesAnAnswerThatNamesItsCommandLast)
{
    createOnShanghai();
    RecordedBus::instance().deliver(
        Topic::TRADEQUERY,
        R"({"cmd":"TodayTrade","data":{"stkcode":"600536","market":"1","costprice":"50"},"cmd":"HolderCostPrice"})");
    EXPECT_EQ(drawnCost(), 50.0);
}

TEST_F(PositionCostAnswers, TakesAnAnswerWhateverStandsBesideItsData)
{
    createOnShanghai();
    QJsonObject odd = answer(holding("600536", "1", QStringLiteral("50")));
    odd.insert(QStringLiteral("stkcode"), QStringLiteral("000001"));
    odd.insert(QStringLiteral("market"), QStringLiteral("2"));
    odd.insert(QStringLiteral("screenId"), QStringLiteral("another"));
    odd.insert(QStringLiteral("success"), false);
    odd.insert(QStringLiteral("errcode"), 5);
    hear(Topic::TRADEQUERY, odd);
    EXPECT_EQ(drawnCost(), 50.0);
}

struct MarketMatch
{
    const char *name;
    int hostMarket;
    const char *answerMarket;
    bool matches;
};

class PositionCostAnswersMarket : public PositionCostTest, public ::testing::WithParamInterface<MarketMatch>
{
};

TEST_P(PositionCostAnswersMarket, IsNumberedDifferentlyByHostAndTradingModule)
{
    create();
    calc(makeSecurity(GetParam().hostMarket, "X1", 5), threeDays, Korvane::DayPeriod);
    hear(Topic::TRADEQUERY, answer(holding("X1", GetParam().answerMarket, QStringLiteral("50"))));
    EXPECT_EQ(drawnCost().has_value(), GetParam().matches);
}

INSTANTIATE_TEST_SUITE_P(Numbers, PositionCostAnswersMarket,
                         ::testing::Values(MarketMatch{"ShenzhenIsTwo", 0, "2", true},
                                           MarketMatch{"ShenzhenIsNotZero", 0, "0", false},
                                           MarketMatch{"ShenzhenIsNotOne", 0, "1", false},
                                           MarketMatch{"ShanghaiIsOne", 1, "1", true},
                                           MarketMatch{"ShanghaiIsNotTwo", 1, "2", false},
                                           MarketMatch{"ShanghaiIsOneAfterSixteenBits", 1, "65537", true},
                                           MarketMatch{"ShanghaiIsOneBelowZeroToo", 1, "-65535", true},
                                           MarketMatch{"HexadecimalIsNone", 1, "0x1", false},
                                           MarketMatch{"ANumberBeyondAllRangeIsNone", 1, "99999999999",
                                                       false},
                                           MarketMatch{"HongKongHasNone", 2, "2", false},
                                           MarketMatch{"AMarketWithoutCodeNeverMatches", 12, "0", false}),
                         ByName());

TEST_F(PositionCostAnswers, IgnoresAnswersBeforeASecurityCame)
{
    create();
    hear(Topic::TRADEQUERY, answer(holding("", "0", QStringLiteral("50"))));
    hearCost(QStringLiteral("50"));
    EXPECT_THAT(axis.updated, IsEmpty());
    EXPECT_EQ(overlay->hitTest(0, axis.yOf(50)), -1);
}

TEST_F(PositionCostAnswers, ComparesCodesWithoutRegardToLetterCase)
{
    create();
    calc(makeSecurity(1, "abC1", 5), threeDays, Korvane::DayPeriod);
    hear(Topic::TRADEQUERY, answer(holding("ABc1", "1", QStringLiteral("50"))));
    EXPECT_EQ(drawnCost(), 50.0);
}

TEST_F(PositionCostAnswers, ForgetsTheCostWithoutARepaintWhenNothingIsHeld)
{
    createOnShanghai();
    hearCost(QStringLiteral("50"));
    axis.updated.clear();
    hearThatNothingIsHeld();
    EXPECT_EQ(drawnCost(), std::nullopt);
    EXPECT_THAT(axis.updated, IsEmpty());
}

struct CostText
{
    const char *name;
    QJsonValue sent;
    std::optional<double> drawn;
};

class PositionCostAnswersCost : public PositionCostTest, public ::testing::WithParamInterface<CostText>
{
};

TEST_P(PositionCostAnswersCost, IsRead)
{
    createOnShanghai();
    hear(Topic::TRADEQUERY, answer(holding("600536", "1", GetParam().sent)));
    EXPECT_EQ(drawnCost(), GetParam().drawn);
    EXPECT_THAT(axis.updated, SizeIs(1));
}

INSTANTIATE_TEST_SUITE_P(
    Costs, PositionCostAnswersCost,
    ::testing::Values(CostText{"ADecimalText", QStringLiteral("12.345"), 12.345},
                      CostText{"AJsonNumberAsZero", 12.345, 0.0}, CostText{"NullAsZero", QJsonValue(), 0.0},
                      CostText{"WordsAsZero", QStringLiteral("none"), 0.0},
                      CostText{"NanAsNoLine", QStringLiteral("nan"), std::nullopt},
                      CostText{"InfinityAsNoLine", QStringLiteral("inf"), std::nullopt},
                      CostText{"AnAbsurdNumberAsNoLine", QStringLiteral("1e999"), std::nullopt}),
    ByName());

TEST_F(PositionCostAnswers, TakesAnAnswerThatComesWhileTheQuestionIsSent)
{
    create();
    bus().duringSend = [] {
        bus().duringSend = nullptr;
        hearCost(QStringLiteral("50"));
    };
    calc(shanghai, threeDays, Korvane::DayPeriod);
    EXPECT_EQ(drawnCost(), 50.0);
}

TEST_F(PositionCostAnswers, KeepsTheCostWhileItAsksAgain)
{
    createOnShanghai();
    hearCost(QStringLiteral("50"));
    overlay->sendQueryPositionCostReq();
    ASSERT_THAT(questions(), SizeIs(2));
    EXPECT_EQ(drawnCost(), 50.0);
}

} // namespace
