#include "tests/tradechartobject/objects/ccharttradeobject/CChartTradeObjectTest.h"

#include <cfloat>
#include <limits>

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();

class CChartTradeObjectScale : public CChartTradeObjectTest
{
protected:
    void expectScale(double highest, double lowest)
    {
        EXPECT_TRUE(overlay->calcRatio(1, 2));
        int untouched = 4711;
        EXPECT_EQ(overlay->maximizeValue(untouched), highest);
        EXPECT_EQ(overlay->minimizeValue(untouched), lowest);
        EXPECT_EQ(untouched, 4711);
    }
};

TEST_F(CChartTradeObjectScale, IsNeutralWithoutData)
{
    create(tradeMarkers);
    expectScale(DBL_MIN, DBL_MAX);
    create(costLine);
    expectScale(DBL_MIN, DBL_MAX);
    createLine("");
    expectScale(DBL_MIN, DBL_MAX);
}

TEST_F(CChartTradeObjectScale, IsNeutralBeforeTheFirstCalcRatio)
{
    for (const char *json : {costLine, tradeMarkers, "{}"}) {
        create(json);
        int untouched = 4711;
        EXPECT_EQ(overlay->maximizeValue(untouched), DBL_MIN);
        EXPECT_EQ(overlay->minimizeValue(untouched), DBL_MAX);
    }
}

TEST_F(CChartTradeObjectScale, SpansTheBars)
{
    createMarkers();
    expectScale(13, 7);
}

TEST_F(CChartTradeObjectScale, SpansTheFinitePricesOfTheBars)
{
    create(tradeMarkers);
    calc(shanghai,
         {makeDayBar(20240102, notANumber, infinity), makeDayBar(20240103, 6, notANumber),
          makeDayBar(20240104, -infinity, 5)},
         4);
    expectScale(6, 5);
}

TEST_F(CChartTradeObjectScale, StaysNeutralAtTheTopWhenAllPricesAreNegative)
{
    create(tradeMarkers);
    calc(shanghai, {makeDayBar(20240102, -3, -2)}, Korvane::DayPeriod);
    expectScale(DBL_MIN, -3);
}

TEST_F(CChartTradeObjectScale, IsTheCost)
{
    createLine(R"({"costprice":"12.5"})");
    expectScale(12.5, 12.5);
    answerWith("");
    recalc();
    expectScale(DBL_MIN, DBL_MAX);
}

TEST_F(CChartTradeObjectScale, IsNeutralForACostWithoutEnd)
{
    for (const char *answer : {R"({"costprice":"inf"})", R"({"costprice":"-inf"})"}) {
        createLine(answer);
        expectScale(DBL_MIN, DBL_MAX);
    }
}

TEST_F(CChartTradeObjectScale, StaysThatOfTheLastBarsWithoutBars)
{
    createMarkers();
    calc(shanghai, {}, Korvane::DayPeriod);
    expectScale(13, 7);
}

TEST_F(CChartTradeObjectScale, ChangesWithCalcRatioOnly)
{
    createMarkers();
    int untouched = 0;
    EXPECT_EQ(overlay->maximizeValue(untouched), DBL_MIN);
    EXPECT_EQ(overlay->minimizeValue(untouched), DBL_MAX);
    overlay->calcRatio(0, 0);
    calc(shanghai, {makeDayBar(20240105, 1, 2)}, Korvane::DayPeriod);
    EXPECT_EQ(overlay->maximizeValue(untouched), 13);
    EXPECT_EQ(overlay->minimizeValue(untouched), 7);
}

} // namespace
