#include "tests/trademodule/support/ExchangeFixture.h"

namespace TradeModule {

namespace {

using namespace TradeChart::OrderStatus;

} // namespace

/// An order for 100 shares, the bar that follows, and what the order is dealt at; 0: it is not dealt.

/// A status, and what a cancellation makes of it; null: it is refused.

TEST_F(PaperExchangeOfADay, ReckonsTheCostByTheTimeOfDayWhenTheDayIsPlayedAgain)
{
    hold(1000);
    exchange().take(bar(1400, 10, 10, 10));
    buy(10, 1000);
    exchange().take(bar(1401, 10, 10, 10));
    exchange().take(bar(930, 10, 10, 10));
    sell(10, 1000);
    exchange().take(bar(931, 10, 10, 10));
    ASSERT_EQ(ledger().holding(bank()).quantity(), 1000);
    const Money paid = yuan(10000) + TradingRules::fees(Direction::Buy, yuan(10000));
    EXPECT_NEAR(costPrice(bank()), paid.yuan() / 1000, 1e-9) << "what was held before was sold first";
}

TEST_F(PaperExchangeOfADay, DealsTheOrdersOfBeforeARestart)
{
    const Order order = buy(10, 100);
    PaperExchange afterwards(&ledger());

    afterwards.take(bar(1001, 10, 10, 10));

    EXPECT_EQ(statusOf(order), code(Dealed));
}

} // namespace TradeModule
