#include "terminal/data/BarAggregation.h"

#include <gmock/gmock.h>

namespace Terminal {
namespace {

Bar day(std::int32_t date, double open, double high, double low, double close, double volume)
{
    return {date, 0, open, high, low, close, volume};
}

TEST(BarAggregation, JoinsTheDaysOfAWeek)
{
    // 20240105 was a Friday, 20240108 the Monday after.
    const Bars weeks = toWeeks(
        {day(20240104, 10, 12, 9, 11, 5), day(20240105, 11, 15, 10, 14, 7), day(20240108, 14, 14, 8, 9, 1)});
    ASSERT_EQ(weeks.size(), 2U);
    EXPECT_EQ(weeks[0].date, 20240105);
    EXPECT_DOUBLE_EQ(weeks[0].open, 10);
    EXPECT_DOUBLE_EQ(weeks[0].high, 15);
    EXPECT_DOUBLE_EQ(weeks[0].low, 9);
    EXPECT_DOUBLE_EQ(weeks[0].close, 14);
    EXPECT_DOUBLE_EQ(weeks[0].volume, 12);
    EXPECT_EQ(weeks[1].date, 20240108);
}

TEST(BarAggregation, JoinsTheMinutesOfADay)
{
    const Bars days = toDays({{20240104, 571, 10, 12, 9, 11, 5},
                              {20240104, 572, 11, 15, 10, 14, 7},
                              {20240105, 571, 14, 14, 8, 9, 1}});
    ASSERT_EQ(days.size(), 2U);
    EXPECT_EQ(days[0].date, 20240104);
    EXPECT_EQ(days[0].minute, 0);
    EXPECT_DOUBLE_EQ(days[0].high, 15);
    EXPECT_DOUBLE_EQ(days[0].low, 9);
    EXPECT_DOUBLE_EQ(days[0].volume, 12);
}

TEST(BarAggregation, KeepsAWeekTogetherAcrossNewYear)
{
    // Monday 20191230 to Friday 20200103.
    EXPECT_EQ(toWeeks({day(20191230, 1, 1, 1, 1, 1), day(20200103, 1, 1, 1, 1, 1)}).size(), 1U);
}

TEST(BarAggregation, StartsANewWeekAfterALongHoliday)
{
    // The same weekday of two weeks.
    EXPECT_EQ(toWeeks({day(20240103, 1, 1, 1, 1, 1), day(20240110, 1, 1, 1, 1, 1)}).size(), 2U);
}

TEST(BarAggregation, JoinsTheDaysOfAMonth)
{
    const Bars months =
        toMonths({day(20231229, 1, 2, 1, 2, 1), day(20240102, 2, 3, 2, 3, 1), day(20240131, 3, 4, 1, 1, 2)});
    ASSERT_EQ(months.size(), 2U);
    EXPECT_EQ(months[1].date, 20240131);
    EXPECT_DOUBLE_EQ(months[1].volume, 3);
    EXPECT_DOUBLE_EQ(months[1].low, 1);
}

} // namespace
} // namespace Terminal
