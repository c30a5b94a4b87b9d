#include "terminal/trades/TradePlaces.h"

#include "tests/terminal/trades/SomeTrades.h"

#include <gtest/gtest.h>

#include <chrono>

namespace Terminal {
namespace {

std::optional<int> barAt(const ChartData &chart, int day, int hhmm)
{
    return barOf(chart, onDay(day), Trading::ClockTime::of(hhmm / 100, hhmm % 100).value());
}

/// 09:31 to 09:33, and the first two minutes after noon.
ChartData minutes()
{
    Bars bars;
    for (const int minute : {571, 572, 573, 781, 782}) {
        bars.push_back(barOn(20240102, minute));
    }
    return chartOf(ChartPeriod::Minute, bars);
}

TEST(TradePlacesOnMinutes, AreTheMinuteThatIsUnderWay)
{
    EXPECT_EQ(barOf(minutes(), onDay(20240102), Trading::ClockTime::of(9, 31, 10).value()), 1);
    EXPECT_EQ(barAt(minutes(), 20240102, 931), 0);
}

TEST(TradePlacesOnMinutes, AreTheNextMinuteInClosedHours)
{
    EXPECT_EQ(barAt(minutes(), 20240102, 925), 0);
    EXPECT_EQ(barAt(minutes(), 20240102, 1200), 3);
}

TEST(TradePlacesOnMinutes, AreTheLastOneAfterIt)
{
    EXPECT_EQ(barAt(minutes(), 20240102, 1500), 4);
}

TEST(TradePlacesOnMinutes, AreNotThoseOfAnotherDay)
{
    EXPECT_EQ(barAt(minutes(), 20240101, 931), std::nullopt);
    EXPECT_EQ(barAt(minutes(), 20240103, 931), std::nullopt);
}

TEST(TradePlacesOnDays, AreTheirDayAlone)
{
    const ChartData days = chartOf(ChartPeriod::Day, {barOn(20240102), barOn(20240104)});
    EXPECT_EQ(barAt(days, 20240104, 1000), 1);
    EXPECT_EQ(barAt(days, 20240103, 1000), std::nullopt);
    EXPECT_EQ(barAt(days, 20240105, 1000), std::nullopt);
}

TEST(TradePlacesOnWeeks, AreTheWeekThatHasTheDay)
{
    const ChartData weeks = chartOf(ChartPeriod::Week, {barOn(20240105), barOn(20240112), barOn(20240117)});
    EXPECT_EQ(barAt(weeks, 20240108, 1000), 1);
    EXPECT_EQ(barAt(weeks, 20240112, 1000), 1);
    EXPECT_EQ(barAt(weeks, 20240116, 1000), 2);
    EXPECT_EQ(barAt(weeks, 20240118, 1000), 2) << "the week is not over";
    EXPECT_EQ(barAt(weeks, 20240122, 1000), std::nullopt);
}

TEST(TradePlacesOnWeeks, AreNoneBeforeTheFirstWeek)
{
    const ChartData weeks = chartOf(ChartPeriod::Week, {barOn(20240105)});
    EXPECT_EQ(barAt(weeks, 20240102, 1000), 0);
    EXPECT_EQ(barAt(weeks, 20231229, 1000), std::nullopt);
}

TEST(TradePlacesOnMonths, AreTheMonth)
{
    const ChartData months = chartOf(ChartPeriod::Month, {barOn(20240131), barOn(20240215)});
    EXPECT_EQ(barAt(months, 20240110, 1000), 0);
    EXPECT_EQ(barAt(months, 20240201, 1000), 1);
    EXPECT_EQ(barAt(months, 20240220, 1000), 1) << "the month is not over";
    EXPECT_EQ(barAt(months, 20231229, 1000), std::nullopt);
}

TEST(TradePlacesOfAChart, AreFoundForTheBarsInView)
{
    Bars bars;
    Trades trades;
    for (int day = 1; day <= 28; ++day) {
        bars.push_back(barOn(20240200 + day));
        trades.push_back(tradeOn(20240200 + day, 1000, 10));
        trades.push_back(tradeOn(20240200 + day, 1100, 10));
    }
    const TradePlaces places(chartOf(ChartPeriod::Day, bars), trades);
    const auto [first, last] = places.within({10, 12});
    ASSERT_EQ(last - first, 4);
    EXPECT_EQ(first->bar, 10);
    EXPECT_EQ(std::prev(last)->bar, 11);
    EXPECT_EQ(places.find(23)->bar, 11);
    EXPECT_EQ(places.find(99), nullptr);
}

TEST(TradePlacesOfAChart, AreAtItsOwnPricesWhereTheseAreAdjusted)
{
    CorporateAction split{onDay(20240103)};
    split.bonus = SharesPerShare::ofSteps(SharesPerShare::stepsPerUnit); // two for one
    ChartData chart = chartOf(ChartPeriod::Day, {barOn(20240102, 0, 20), barOn(20240103)});
    chart.adjustment = PriceAdjustment::of({split}, onDay(20240103), [&chart](Trading::TradingDate) {
                           return std::optional(chart.bars.front());
                       }).value();
    chart.view = PriceView::Adjusted;

    const TradePlaces places(chart, {tradeOn(20240102, 1000, 20), tradeOn(20240103, 1000, 10)});

    EXPECT_DOUBLE_EQ(places.find(0)->price, 10);
    EXPECT_DOUBLE_EQ(places.find(1)->price, 10);
}

} // namespace
} // namespace Terminal
