#include "trademodule/exchange/TradingRules.h"
#include "tests/trademodule/support/ExchangeFixture.h"

namespace TradeModule {

TEST(TradingRules, RoundEveryFeeHalfUpToACent)
{
    EXPECT_EQ(TradingRules::fees(Direction::Buy, yuan(20060)), yuan(5.02 + 0.20)); // 5.015 + 0.2006
    EXPECT_EQ(TradingRules::fees(Direction::Buy, yuan(500)), yuan(5 + 0.01));      // at least 5, 0.005
    EXPECT_EQ(TradingRules::fees(Direction::Sell, yuan(290)), yuan(5 + 0.15));     // and 0.145, 0.0029
}

TEST(TradingRules, CloseTheMarketOnWeekends)
{
    const TradingDate monday = TradingDate::of(2024, 1, 1).value();
    EXPECT_TRUE(TradingRules::isTradingDay(monday));
    EXPECT_TRUE(TradingRules::isTradingDay(monday.plusDays(4)));
    EXPECT_FALSE(TradingRules::isTradingDay(monday.plusDays(5)));
    EXPECT_FALSE(TradingRules::isTradingDay(monday.plusDays(6)));
}

TEST(TradingRules, OpenTheMarketInTwoSessions)
{
    for (const int time : {9150000, 9300000, 11300000, 13000000, 15000000}) {
        EXPECT_TRUE(TradingRules::isOpen(ClockTime::ofNumber(time).value())) << time;
    }
    for (const int time : {9145999, 11300100, 12595999, 15000100}) {
        EXPECT_FALSE(TradingRules::isOpen(ClockTime::ofNumber(time).value())) << time;
    }
}

} // namespace TradeModule
