#include "trademodule/exchange/TradingRules.h"
#include "tests/trademodule/support/ExchangeFixture.h"

namespace TradeModule {

TEST(TradingRules, LimitADayByItsCloseBefore)
{
    const TradingRules::PriceLimits main = TradingRules::priceLimits(bank(), yuan(10.05));
    EXPECT_EQ(main.lowest, yuan(9.05));   // 9.045
    EXPECT_EQ(main.highest, yuan(11.06)); // 11.055

    const SecurityId young{QStringLiteral("688001"), Market::Shanghai};
    EXPECT_EQ(TradingRules::priceLimits(young, yuan(10)).highest, yuan(12));
}

TEST(TradingRules, LimitADayAtTheTickNearestToTheShareOfEveryClose)
{
    const SecurityId young{QStringLiteral("300750"), Market::Shenzhen};
    for (qint64 close = 1; close <= 100000; ++close) {
        const Money before = Money::ofSteps(close * TradingRules::tick.steps());
        for (const auto &[security, percent] : {std::pair(bank(), 10), std::pair(young, 20)}) {
            const TradingRules::PriceLimits limits = TradingRules::priceLimits(security, before);
            ASSERT_TRUE(isNearestTick(ticks(limits.lowest), close, 100 - percent)) << limits.lowest.digits();
            ASSERT_TRUE(isNearestTick(ticks(limits.highest), close, 100 + percent))
                << limits.highest.digits();
        }
    }
}

TEST(TradingRules, RoundEveryFeeHalfUpToACent)
{
    EXPECT_EQ(TradingRules::fees(Direction::Buy, yuan(20060)), yuan(5.02 + 0.20)); // 5.015 + 0.2006
    EXPECT_EQ(TradingRules::fees(Direction::Buy, yuan(500)), yuan(5 + 0.01));      // at least 5, 0.005
    EXPECT_EQ(TradingRules::fees(Direction::Sell, yuan(290)), yuan(5 + 0.15));     // and 0.145, 0.0029
}

TEST(TradingRules, CloseTheMarketOnWeekends)
{
    const QDate monday(2024, 1, 1);
    EXPECT_TRUE(TradingRules::isTradingDay(monday));
    EXPECT_TRUE(TradingRules::isTradingDay(monday.addDays(4)));
    EXPECT_FALSE(TradingRules::isTradingDay(monday.addDays(5)));
    EXPECT_FALSE(TradingRules::isTradingDay(monday.addDays(6)));
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
