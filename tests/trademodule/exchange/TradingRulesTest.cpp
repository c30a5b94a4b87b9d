#include "trademodule/exchange/TradingRules.h"
#include "tests/trademodule/support/ExchangeFixture.h"

namespace TradeModule {

namespace {

bool isOpenAtTen(TradingDate day, const Trading::TradingCalendar &calendar = {})
{
    return TradingRules::isOpen(bank(), day, ClockTime::of(10, 0).value(), false, calendar);
}

bool isOpenAt(int hhmmsscc)
{
    return TradingRules::isOpen(bank(), day(20240102), ClockTime::ofNumber(hhmmsscc).value(), false, {});
}

} // namespace

TEST(TradingRules, RoundEveryFeeHalfUpToACent)
{
    EXPECT_EQ(TradingRules::fees(Direction::Buy, yuan(20060)), yuan(5.02 + 0.20)); // 5.015 + 0.2006
    EXPECT_EQ(TradingRules::fees(Direction::Buy, yuan(500)), yuan(5 + 0.01));      // at least 5, 0.005
    EXPECT_EQ(TradingRules::fees(Direction::Sell, yuan(290)), yuan(5 + 0.15));     // and 0.145, 0.0029
}

TEST(TradingRules, CloseTheMarketOnWeekends)
{
    const TradingDate monday = TradingDate::of(2024, 1, 1).value();
    EXPECT_TRUE(isOpenAtTen(monday));
    EXPECT_TRUE(isOpenAtTen(monday.plusDays(4)));
    EXPECT_FALSE(isOpenAtTen(monday.plusDays(5)));
    EXPECT_FALSE(isOpenAtTen(monday.plusDays(6)));
}

TEST(TradingRules, CloseTheMarketOnTheHolidaysOfTheCalendar)
{
    Trading::TradingCalendar calendar;
    calendar.add("2024-01-01,元旦", {});
    EXPECT_FALSE(isOpenAtTen(day(20240101), calendar));
    EXPECT_TRUE(isOpenAtTen(day(20240102), calendar));
}

TEST(TradingRules, OpenTheMarketOnAnyDayOfWhichQuotesCome)
{
    const ClockTime ten = ClockTime::of(10, 0).value();
    EXPECT_TRUE(TradingRules::isOpen(bank(), day(20240106), ten, true, {}));
}

TEST(TradingRules, OpenTheMarketInTwoSessions)
{
    for (const int time : {9150000, 9300000, 11300000, 13000000, 15000000}) {
        EXPECT_TRUE(isOpenAt(time)) << time;
    }
    for (const int time : {9145999, 11300100, 12595999, 15000100}) {
        EXPECT_FALSE(isOpenAt(time)) << time;
    }
}

} // namespace TradeModule
