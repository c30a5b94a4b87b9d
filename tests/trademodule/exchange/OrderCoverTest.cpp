#include "tests/trademodule/support/ExchangeFixture.h"

namespace TradeModule {

namespace {

using namespace TradeChart::OrderStatus;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

class OrderCoverTest : public PaperExchangeOfADay
{
};

} // namespace

TEST_F(OrderCoverTest, RefusesOddLotsButSellsAnOddRest)
{
    book({fill(Side::Bonus, bank(), 20240102, 0, 130)});

    EXPECT_THAT(refusalOf(Direction::Buy, 10, 150), HasSubstr("multiple of 100"));
    EXPECT_THAT(refusalOf(Direction::Sell, 10, 50), HasSubstr("multiple of 100"));
    EXPECT_EQ(refusalOf(Direction::Sell, 10, 30), "no refusal");
    EXPECT_EQ(refusalOf(Direction::Sell, 10, 100), "no refusal");
}

TEST_F(OrderCoverTest, SellsAnOddRestOnceOnly)
{
    book({fill(Side::Bonus, bank(), 20240102, 0, 250)});
    const Order odd = sell(10.50, 150);

    EXPECT_THAT(refusalOf(Direction::Sell, 10, 50), HasSubstr("multiple of 100"));
    EXPECT_EQ(refusalOf(Direction::Sell, 10, 100), "no refusal");

    exchange().cancel(odd.date, odd.number);
    exchange().settle();
    EXPECT_EQ(refusalOf(Direction::Sell, 10, 50), "no refusal");
}

TEST_F(OrderCoverTest, RefusesPricesBetweenTicks)
{
    EXPECT_THAT(refusalOf(Direction::Buy, 10.005, 100), HasSubstr("0.01"));
}

TEST_F(OrderCoverTest, RefusesToSellMoreThanIsHeldAndNotOnOffer)
{
    hold(500);
    sell(10.50, 300);

    EXPECT_THAT(refusalOf(Direction::Sell, 10, 300), HasSubstr("200 shares may be sold"));
    EXPECT_EQ(refusalOf(Direction::Sell, 10, 200), "no refusal");
}

TEST_F(OrderCoverTest, RefusesToSellWhatWasBoughtToday)
{
    hold(100);
    buy(10, 400);
    exchange().take(bar(1001, 10, 10, 10));
    ASSERT_EQ(ledger().holding(bank()).quantity(), 500);

    EXPECT_THAT(refusalOf(Direction::Sell, 10, 200), HasSubstr("100 shares may be sold"));
}

TEST_F(OrderCoverTest, RefusesToBuyForMoreThanTheCashThatIsFree)
{
    setCash(10000);
    EXPECT_THAT(refusalOf(Direction::Buy, 10, 1000), HasSubstr("needs 10005.10 yuan"));

    buy(5, 1000);

    EXPECT_THAT(refusalOf(Direction::Buy, 10, 500), HasSubstr("there are 4994.95"));
}

TEST_F(OrderCoverTest, LetsOrdersOfPastDaysClaimNothing)
{
    hold(500);
    setCash(10000);
    buy(9.5, 1000);
    sell(10.50, 500);
    Database(location()).run(QStringLiteral("UPDATE trade_order SET order_date = 20240102"));

    EXPECT_EQ(exchange().spendable(), yuan(10000));
    EXPECT_EQ(exchange().sellable(bank()), 500);
}

TEST_F(OrderCoverTest, KeepsTheFeesThatTheRestOfAnOrderWillPay)
{
    const Money before = exchange().spendable();
    buy(10, 10000);
    const Money whole = before - exchange().spendable();

    exchange().take(bar(1001, 10, 10, 10, 13200)); // 3300 of them

    EXPECT_EQ(before - exchange().spendable(), whole);
}

TEST_F(OrderCoverTest, RefusesCodesThatNoExchangeHas)
{
    for (const QString &strange : {QStringLiteral("1"), QString(1000, QLatin1Char('6'))}) {
        EXPECT_THROW(exchange().place({strange, Market::Shanghai}, Direction::Buy, yuan(10), 100), Error);
    }
}

TEST_F(OrderCoverTest, RefusesOrdersOfMoreThanAnyAccountHas)
{
    EXPECT_THAT(refusalOf(Direction::Buy, 1000000.01, 100),
                HasSubstr("the price must be at most 1000000.00"));
    EXPECT_THAT(refusalOf(Direction::Buy, 10, 1000100), HasSubstr("the quantity must be at most 1000000"));
    EXPECT_THAT(refusalOf(Direction::Buy, 1000000, 100100), HasSubstr("price × quantity must be at most"));
}

TEST_F(OrderCoverTest, LeavesNothingOfARefusedOrder)
{
    refusalOf(Direction::Buy, 10, 150);
    refusalOf(Direction::Sell, 10, 100);

    EXPECT_THAT(OrderBook(&ledger()).ofDay(TradingDate::today()), IsEmpty());
    EXPECT_THAT(m_statuses, IsEmpty());
}

} // namespace TradeModule
