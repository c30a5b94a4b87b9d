#include "tests/tradechartobject/objects/positioncost/PositionCostTest.h"

using ::testing::Each;
using ::testing::SizeIs;
using namespace TradeChart;

namespace {

class PositionCostSecurities : public PositionCostTest
{
};

TEST_F(PositionCostSecurities, TakesTheSameCodeUnderAnotherIdentityWordForAnotherSecurity)
{
    createOnShanghai();
    hearCost(QStringLiteral("50"));
    calc(makeSecurity(1, "600536", 7009), threeDays, Korvane::DayPeriod);
    EXPECT_EQ(drawnCost(), std::nullopt);
    ASSERT_THAT(questions(), SizeIs(2));
    EXPECT_EQ(questions()[1], questions()[0]);
}

TEST_F(PositionCostSecurities, ForgetsTheSecurityBeforeWhenTheNextOneHasNoMarketNumber)
{
    createOnShanghai();
    hearCost(QStringLiteral("50"));
    calc(makeSecurity(-1, "", 9), threeDays, Korvane::DayPeriod);
    overlay->sendQueryPositionCostReq();
    EXPECT_EQ(drawnCost(), std::nullopt);
    EXPECT_THAT(questions(), SizeIs(1));
}

TEST_F(PositionCostSecurities, TurnsToAnotherSecurityInsideARepaintRequest)
{
    createOnShanghai();
    axis.onUpdate = [this] { calc(shenzhen, threeDays, Korvane::DayPeriod); };
    hearCost(QStringLiteral("50"));
    EXPECT_EQ(drawnCost(), std::nullopt);
}

TEST_F(PositionCostSecurities, ShowsTheSecurityThatTheHostTurnsToWhileTheQuestionGoesOut)
{
    create();
    bus().duringSend = [this] {
        if (questions().size() == 1) {
            calc(shenzhen, std::vector<Korvane::AnalyData>(100, makeDayBar(20240102)), Korvane::DayPeriod);
        }
    };
    EXPECT_TRUE(calc(shanghai, threeDays, Korvane::DayPeriod));
    hear(Topic::TRADEQUERY, answer(holding("000001", "2", QStringLiteral("50"))));
    EXPECT_EQ(drawnCost(), 50.0);
    EXPECT_THAT(painter.calls[0].values, Each(50.0)) << "over all of its bars";
}

TEST_F(PositionCostSecurities, ForgetsTheCostWithTheSecurity)
{
    createOnShanghai();
    hearCost(QStringLiteral("50"));
    calc(shenzhen, threeDays, Korvane::DayPeriod);
    EXPECT_EQ(drawnCost(), std::nullopt);
    hearCost(QStringLiteral("51"));
    EXPECT_EQ(drawnCost(), std::nullopt) << "a late answer for the security before";
}

TEST_F(PositionCostSecurities, KeepsTheCostWhenOnlyTheBarsChange)
{
    createOnShanghai();
    hearCost(QStringLiteral("50"));
    calc(shanghai, {makeDayBar(20240105)}, 5);
    EXPECT_EQ(drawnCost(), 50.0);
}

} // namespace
