#include "tests/support/ByName.h"
#include "tests/tradechartobject/objects/ccharttradeobject/CChartTradeObjectTest.h"

#include <climits>

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

namespace {

class CChartTradeObjectHits : public CChartTradeObjectTest
{
};

TEST_F(CChartTradeObjectHits, IsHitWithinFivePixelsOfTheCostLine)
{
    createLine(R"({"costprice":"12.5"})");
    const double y = axis.yOf(12.5);
    EXPECT_EQ(overlay->hitTest(-1000, y), 0) << "x does not matter";
    EXPECT_EQ(overlay->hitTest(0, y - 5.0), 0);
    EXPECT_EQ(overlay->hitTest(0, y + 5.0), 0);
    EXPECT_EQ(overlay->hitTest(0, y - 5.01), -1);
    EXPECT_EQ(overlay->hitTest(0, y + 5.01), -1);
}

TEST_F(CChartTradeObjectHits, IsNotHitWithoutACost)
{
    createLine("");
    EXPECT_EQ(overlay->hitTest(0, axis.yOf(12.5)), -1);
    EXPECT_EQ(overlay->hitTest(0, notANumber), -1);
}

TEST_F(CChartTradeObjectHits, IsNotHitWithoutACostWhateverPixelTheHostGivesIt)
{
    createLine("");
    axis.pixelOf = [](double) { return 0.0; };
    axis.pricesAsked.clear();
    EXPECT_EQ(overlay->hitTest(0, 0.0), -1);
    EXPECT_THAT(axis.pricesAsked, SizeIs(1));
}

TEST_F(CChartTradeObjectHits, IsHitAnywhereBetweenTheEndsOfAMarkedBar)
{
    createMarkers();
    hearHistory({buy(10)});
    recalc();
    EXPECT_EQ(overlay->hitTest(4.9, axis.yOf(10.99)), 0);
    EXPECT_EQ(overlay->hitTest(0, axis.yOf(9.01)), 0);
    EXPECT_EQ(overlay->hitTest(0, axis.yOf(11)), -1) << "the ends do not belong to it";
    EXPECT_EQ(overlay->hitTest(0, axis.yOf(9)), -1);
    EXPECT_EQ(overlay->hitTest(10, axis.yOf(10)), -1) << "a bar without markers";
}

struct Marked
{
    const char *name;
    QJsonArray rows;
};

class CChartTradeObjectHitsEach : public CChartTradeObjectTest, public ::testing::WithParamInterface<Marked>
{
};

TEST_P(CChartTradeObjectHitsEach, CountsOnEveryKindOfMarker)
{
    createMarkers();
    hearHistory(GetParam().rows);
    recalc();
    EXPECT_EQ(overlay->hitTest(0, axis.yOf(10)), 0);
}

INSTANTIATE_TEST_SUITE_P(Kinds, CChartTradeObjectHitsEach,
                         ::testing::Values(Marked{"BuyAbove", {buy(11)}}, Marked{"BuyBelow", {buy(9)}},
                                           Marked{"SellAbove", {sell(11)}}, Marked{"SellBelow", {sell(9)}}),
                         ByName());

TEST_F(CChartTradeObjectHits, IsHitOnAMarkerOfBothSides)
{
    for (const int style : {4, 5}) {
        createMarkers();
        mark(style, 1);
        EXPECT_EQ(overlay->hitTest(10, axis.yOf(10)), 0) << style;
        EXPECT_EQ(overlay->hitTest(0, axis.yOf(10)), -1) << style;
    }
}

TEST_F(CChartTradeObjectHits, IsHitOnTheMarksThatStayWithoutBars)
{
    createMarkers();
    hearHistory({buy(10)});
    recalc();
    calc(shanghai, {}, Korvane::DayPeriod);
    EXPECT_EQ(overlay->hitTest(0, axis.yOf(10)), 0);
}

TEST_F(CChartTradeObjectHits, IsNotHitOnABarWithAnEndThatIsNoNumber)
{
    createMarkers();
    hearHistory({buy(10)});
    for (const Korvane::AnalyData &bar :
         {makeDayBar(20240102, notANumber, 11), makeDayBar(20240102, 9, notANumber)}) {
        calc(shanghai, {bar}, Korvane::DayPeriod);
        EXPECT_EQ(overlay->hitTest(0, axis.yOf(10)), -1);
    }
}

TEST_F(CChartTradeObjectHits, AsksTheHostForTheEndsOfTheBarUnderThePointer)
{
    createMarkers();
    axis.hostCalls = 0;
    overlay->hitTest(20, 0);
    EXPECT_THAT(axis.pricesAsked, ElementsAre(13, 7));
    EXPECT_EQ(axis.hostCalls, 3) << "and xToBar";
}

TEST_F(CChartTradeObjectHits, AsksTheHostForTheHeightOfTheLine)
{
    createLine(R"({"costprice":"12.5"})");
    axis.hostCalls = 0;
    overlay->hitTest(20, 0);
    EXPECT_THAT(axis.pricesAsked, ElementsAre(12.5));
    EXPECT_EQ(axis.hostCalls, 2) << "and xToBar";
}

class CChartTradeObjectHitsIndex : public CChartTradeObjectTest, public ::testing::WithParamInterface<int>
{
};

TEST_P(CChartTradeObjectHitsIndex, OutsideTheBarsHitsAndListsNothing)
{
    createMarkers();
    hearHistory({buy(10)});
    recalc();
    axis.barUnder = [](double) { return GetParam(); };
    EXPECT_EQ(overlay->hitTest(0, axis.yOf(10)), -1);
    overlay->handleMousePress(0, axis.yOf(10.5));
    EXPECT_THAT(axis.popups, IsEmpty());
    EXPECT_THAT(axis.barsAsked, IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(Indices, CChartTradeObjectHitsIndex, ::testing::Values(-1, 3, INT_MAX, INT_MIN));

} // namespace
