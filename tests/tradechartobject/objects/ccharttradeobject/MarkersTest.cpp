#include "tests/support/ByName.h"
#include "tests/tradechartobject/objects/ccharttradeobject/CChartTradeObjectTest.h"

using ::testing::SizeIs;

namespace {

struct Standing
{
    const char *name;
    QJsonArray rows;
    const char *drawn;
};

class CChartTradeObjectMarkersMark : public CChartTradeObjectTest,
                                     public ::testing::WithParamInterface<Standing>
{
};

TEST_P(CChartTradeObjectMarkersMark, TheBarThatClosesAtTen)
{
    createMarkers();
    hearHistory(GetParam().rows);
    recalc();
    EXPECT_EQ(drawn(), GetParam().drawn);
}

INSTANTIATE_TEST_SUITE_P(
    Trades, CChartTradeObjectMarkersMark,
    ::testing::Values(Standing{"WithABuyAtTheCloseAbove", {buy(10.00)}, "0 - -"},
                      Standing{"WithABuyJustUnderTheCloseBelow", {buy(9.99)}, "1 - -"},
                      Standing{"WithASellAtTheCloseAbove", {sell(10.00)}, "2 - -"},
                      Standing{"WithASellUnderTheCloseBelow", {sell(9.99)}, "3 - -"},
                      Standing{"WithBuysOnBothParts", {buy(9), buy(11)}, "01 - -"},
                      Standing{"WithBothSidesApartOnTheLastTradedBar", {buy(11), sell(12)}, "02 - -"},
                      Standing{"WithBothSidesApartBelow", {buy(8), sell(9)}, "13 - -"},
                      Standing{"WithEverything", {buy(11), sell(12), sell(8), buy(9)}, "0213 - -"},
                      Standing{"WithNothing", {}, "- - -"}),
    ByName());

class CChartTradeObjectMarkers : public CChartTradeObjectTest
{
};

TEST_F(CChartTradeObjectMarkers, StartsAtTheFirstBarWithATimeFromTheTradesOn)
{
    createMarkers();
    hearHistory({buy(10)});
    const auto beforeAllTime = static_cast<std::uint32_t>(-5);
    calc(shanghai, {makeDayBar(beforeAllTime), threeDays[0]}, Korvane::DayPeriod);
    EXPECT_EQ(drawn(), "- 0");
}

TEST_F(CChartTradeObjectMarkers, MarksNothingWhenAllBarsAreBeforeTheTrades)
{
    createMarkers();
    hearHistory({buy(10)});
    const auto beforeAllTime = static_cast<std::uint32_t>(-5);
    calc(shanghai, {makeDayBar(beforeAllTime), makeDayBar(beforeAllTime)}, Korvane::DayPeriod);
    EXPECT_EQ(drawn(), "- -");
}

TEST_F(CChartTradeObjectMarkers, MarksTheFirstBarOfAnyPeriod)
{
    createMarkers();
    hearHistory({buy(10)});
    calc(shanghai, {makeMinuteBar(20240102, 931), makeMinuteBar(20240102, 932)}, Korvane::IntradayPeriod);
    EXPECT_EQ(drawn(), "0 -");
    calc(shanghai, threeDays, 8);
    EXPECT_EQ(drawn(), "0 - -");
}

TEST_F(CChartTradeObjectMarkers, ClearsTheMarksAtEveryCalcIt)
{
    createMarkers();
    hearHistory({buy(10)});
    recalc();
    hearHistory({sell(9)});
    recalc();
    EXPECT_EQ(drawn(), "3 - -");
    hearHistory({});
    recalc();
    EXPECT_EQ(drawn(), "- - -");
}

class CChartTradeObjectMarkersStyle : public CChartTradeObjectTest, public ::testing::WithParamInterface<int>
{
};

TEST_P(CChartTradeObjectMarkersStyle, IsClearedAtEveryCalcIt)
{
    createMarkers();
    mark(GetParam(), 1);
    EXPECT_EQ(drawn(), "- " + std::to_string(GetParam()) + " -");
    recalc();
    EXPECT_EQ(drawn(), "- - -");
}

INSTANTIATE_TEST_SUITE_P(Styles, CChartTradeObjectMarkersStyle, ::testing::Range(0, 6));

TEST_F(CChartTradeObjectMarkers, OnlyAddsMarksWhenItIsToldToMarkBetweenTwoCalcIts)
{
    createMarkers();
    hearHistory({buy(10)});
    recalc();
    hearHistory({sell(9)});
    overlay->calcTradeData(threeDays.data(), 3);
    EXPECT_EQ(drawn(), "03 - -");
}

TEST_F(CChartTradeObjectMarkers, StaysInsideTheBarsOfTheLastCalcItWhenToldToMarkMore)
{
    createMarkers();
    hearHistory({buy(10)});
    const std::vector<Korvane::AnalyData> more(50, makeDayBar(20240102));
    overlay->calcTradeData(more.data(), 50);
    overlay->calcTradeData(more.data(), -1);
    overlay->calcTradeData(nullptr, 3);
    EXPECT_EQ(drawn(), "0 - -");
}

TEST_F(CChartTradeObjectMarkers, StaysInsideTheBarsThatItIsToldToMark)
{
    createMarkers();
    const auto beforeAllTime = static_cast<std::uint32_t>(-5);
    const std::vector<Korvane::AnalyData> bars = {makeDayBar(beforeAllTime), threeDays[0]};
    calc(shanghai, bars, Korvane::DayPeriod);
    hearHistory({buy(10)});
    for (const int count : {0, 1}) {
        overlay->calcTradeData(bars.data(), count);
        EXPECT_EQ(drawn(), "- -") << count;
    }
    overlay->calcTradeData(bars.data(), 2);
    EXPECT_EQ(drawn(), "- 0");
}

TEST_F(CChartTradeObjectMarkers, MarksNothingAsACostLineWhenToldToMark)
{
    createLine(R"({"costprice":"12.5"})");
    hearHistory({buy(10)});
    overlay->calcTradeData(threeDays.data(), 3);
    EXPECT_TRUE(paint());
    EXPECT_THAT(painter.calls, SizeIs(3)) << "the line, its label and the end";
}

} // namespace
