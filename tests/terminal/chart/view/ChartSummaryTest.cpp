#include "terminal/chart/view/ChartSummary.h"
#include "tests/terminal/support/SomeBars.h"

#include <gmock/gmock.h>

namespace Terminal {
namespace {

TEST(ChartSummaryChange, OfADayIsAgainstTheDayBefore)
{
    ChartData days = dailyChart(3);
    days.bars[1].close = 100;
    days.bars[2].close = 101;
    days.previousClose = 50;
    EXPECT_DOUBLE_EQ(changeAt(2, days), 0.01);
    days.bars[0].open = 100;
    days.bars[0].close = 98;
    EXPECT_DOUBLE_EQ(changeAt(0, days), -0.02);
}

TEST(ChartSummaryChange, OfAMinuteIsAgainstTheTradingDayBefore)
{
    ChartData minutes = dailyChart(3);
    minutes.period = ChartPeriod::Minute;
    minutes.previousClose = 200;
    minutes.bars[0].open = 100;
    minutes.bars[1].close = 1;
    minutes.bars[2].close = 210;
    EXPECT_DOUBLE_EQ(changeAt(2, minutes), 0.05);
    minutes.previousClose.reset();
    EXPECT_DOUBLE_EQ(changeAt(2, minutes), 1.1);
}

} // namespace
} // namespace Terminal
