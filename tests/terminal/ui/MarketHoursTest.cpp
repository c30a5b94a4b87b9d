#include "terminal/ui/MarketHours.h"

#include <gmock/gmock.h>

namespace Terminal {
namespace {

QString hoursOf(int day)
{
    return MarketHours::hoursOf(Trading::TradingDate::ofNumber(day).value(),
                                Trading::TradingCalendar::shipped());
}

TEST(MarketHours, AreThoseOfTheRules)
{
    const std::string hours = hoursOf(20260327).toStdString();
    EXPECT_THAT(hours, ::testing::HasSubstr("09:15–09:25 Opening auction"));
    EXPECT_THAT(hours, ::testing::HasSubstr("09:30–11:30 Morning session"));
    EXPECT_THAT(hours, ::testing::HasSubstr("13:00–14:57 Afternoon session"));
    EXPECT_THAT(hours, ::testing::HasSubstr("14:57–15:00 Closing auction"));
}

TEST(MarketHours, AreNoneAtWeekendsAndOnHolidays)
{
    EXPECT_EQ(hoursOf(20260328), QString());
    EXPECT_EQ(hoursOf(20261001), QString());
}

TEST(MarketHours, HaveWordsForEveryState)
{
    for (int state = 0; state <= static_cast<int>(Trading::DayState::AfterHours); ++state) {
        EXPECT_FALSE(MarketHours::text(static_cast<Trading::DayState>(state)).isEmpty());
    }
}

} // namespace
} // namespace Terminal
