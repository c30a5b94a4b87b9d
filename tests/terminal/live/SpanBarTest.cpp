// Today's bar on charts of days, weeks and months.
#include "terminal/live/SpanBar.h"
#include "tests/terminal/support/SomeQuotes.h"

#include <gmock/gmock.h>

namespace Terminal {
namespace {

constexpr Trading::TradingDate thursday = onDay(20240104);

class SpanBarTest : public ::testing::Test
{
protected:
    Bars m_days{{20231229, 0, 8, 9, 7, 8, 10}, // a Friday
                {20240102, 0, 10, 11, 9, 10, 100},
                {20240103, 0, 10, 12, 10, 11, 100}};
    const Bar m_row{thursday.number(), 0, 11, 13, 10, 12, 70};
};

TEST_F(SpanBarTest, OfADayHasNothingBeforeIt)
{
    const SpanOfToday span = takeSpanOfToday(&m_days, ChartPeriod::Day, thursday);
    EXPECT_EQ(span.before, std::nullopt);
    EXPECT_EQ(span.row, std::nullopt);
    EXPECT_EQ(spanBar(nullptr, span), std::nullopt);
    EXPECT_EQ(m_days.size(), 3U);
}

TEST_F(SpanBarTest, TakesTodaysRowOutOfTheDays)
{
    m_days.push_back(m_row);
    const SpanOfToday span = takeSpanOfToday(&m_days, ChartPeriod::Day, thursday);
    EXPECT_EQ(m_days.size(), 3U);
    EXPECT_EQ(spanBar(nullptr, span), m_row);
}

TEST_F(SpanBarTest, OfAWeekJoinsItsDaysWithToday)
{
    m_days.push_back(m_row);
    const SpanOfToday span = takeSpanOfToday(&m_days, ChartPeriod::Week, thursday);
    EXPECT_EQ(spanBar(nullptr, span), (Bar{thursday.number(), 0, 10, 13, 9, 12, 270}));
    EXPECT_EQ(takeSpanOfToday(&m_days, ChartPeriod::Month, thursday).before,
              (Bar{20240103, 0, 10, 12, 9, 11, 200}));
}

TEST_F(SpanBarTest, CountsMinutesAndRowOnce)
{
    MinuteBook minutes;
    minutes.take(quoteAt(931, 12, 30));
    minutes.take(quoteAt(932, 14, 20));
    SpanOfToday span;
    span.row = m_row;
    const Bar day = dayBar(minutes, span);
    EXPECT_EQ(day.open, 11);
    EXPECT_EQ(day.high, 14);
    EXPECT_EQ(day.low, 10);
    EXPECT_EQ(day.volume, 70);
    EXPECT_EQ(day.close, 14);
}

TEST_F(SpanBarTest, ClosesWithTheRowWhenThatIsLater)
{
    MinuteBook minutes;
    minutes.take(quoteAt(932, 14, 20));
    SpanOfToday span;
    span.row = m_row;
    span.rowTime = atTime(931);
    EXPECT_EQ(dayBar(minutes, span).close, 14);
    span.rowTime = atTime(1530);
    EXPECT_EQ(dayBar(minutes, span).close, 12);
}

} // namespace
} // namespace Terminal
