#include "tests/trademodule/support/ExchangeFixture.h"

namespace TradeModule {

namespace {

using namespace TradeChart::OrderStatus;

class MarketDayTest : public PaperExchangeOfADay
{
};

} // namespace

TEST_F(MarketDayTest, GoesByTheCloseBeforeWhenAQuoteTellsIt)
{
    Quote telling = bar(1001, 10, 10, 10);
    telling.previousClose = yuan(9.50);
    exchange().take(telling);
    exchange().take(bar(1002, 10, 10, 10)); // tells nothing, so nothing changes

    const Order high = buy(10.46, 100); // the highest is 10.45
    exchange().settle();

    EXPECT_EQ(statusOf(high), code(AbolishedOrder));
}

TEST_F(MarketDayTest, GoesByTheSameCloseAfterARestart)
{
    PaperExchange afterwards(&ledger());
    afterwards.take(bar(1301, 10.80, 10.80, 10.80)); // no open of the day

    const Order high = afterwards.place(bank(), Direction::Buy, yuan(11.01), 100);
    afterwards.settle();

    EXPECT_EQ(statusOf(high), code(AbolishedOrder));
}

TEST_F(MarketDayTest, KeepsASecuritysReferenceThoughAnotherOnesQuotesAreLater)
{
    Quote other = bar(1030, 50, 50, 50);
    other.security = liquor();
    exchange().take(other);
    exchange().settle();

    PaperExchange afterwards(&ledger());
    afterwards.take(bar(1001, 10.80, 10.80, 10.80)); // later than its own first, no open of the day

    const Order high = afterwards.place(bank(), Direction::Buy, yuan(11.01), 100);
    afterwards.settle();
    EXPECT_EQ(statusOf(high), code(AbolishedOrder));
}

TEST_F(MarketDayTest, NoticesAfterARestartThatAnotherDayIsPlayed)
{
    exchange().settle();
    PaperExchange afterwards(&ledger());
    afterwards.take(bar(931, 20, 20, 20));

    const Order order = afterwards.place(bank(), Direction::Buy, yuan(19), 100);
    afterwards.settle();

    EXPECT_EQ(statusOf(order), code(Quoted));
}

TEST_F(MarketDayTest, KnowsItsClockAfterARestart)
{
    exchange().take(bar(1017, 10, 10, 10));
    exchange().settle();

    const Order order = PaperExchange(&ledger()).place(bank(), Direction::Buy, yuan(10), 100);

    EXPECT_EQ(order.time, at(1017));
    EXPECT_EQ(order.status, code(Quoting));
}

TEST_F(MarketDayTest, ForgetsTheMarketOfAnotherDay)
{
    exchange().settle();
    for (const char *table : {"exchange_clock", "price_reference"}) {
        Database(location()).run(QStringLiteral("UPDATE %1 SET quote_date = 20240102").arg(code(table)));
    }

    MarketDay market(&ledger());

    EXPECT_EQ(market.clock(), std::nullopt);
    EXPECT_EQ(market.reference(bank()), std::nullopt);
}

TEST_F(MarketDayTest, NotesNoMoreSecuritiesThanAnyExchangeHas)
{
    MarketDay market(&ledger());
    const auto invented = [](int number) {
        SecurityId security = bank();
        security.code = QString::number(300000 + number);
        return security;
    };
    for (int i = 0; i < 20000; ++i) {
        market.note(invented(i), at(1001), yuan(10), yuan(9));
    }

    market.note(invented(20000), at(1001), yuan(10), yuan(9));
    market.note(invented(1), at(1002), yuan(10), yuan(8));

    EXPECT_EQ(market.reference(invented(20000)), std::nullopt);
    EXPECT_EQ(market.reference(invented(1)), yuan(8));
}

TEST_F(MarketDayTest, LeavesQuotesOfOtherDaysAloneAndSaysSoOnce)
{
    const Order order = buy(10, 100);
    Quote recorded = bar(1001, 10, 10, 10);
    recorded.date = day(20240102);
    const LogCapture log;

    exchange().take(recorded);
    exchange().take(recorded);

    EXPECT_EQ(statusOf(order), code(Quoting));
    ASSERT_EQ(log.lines().size(), 1);
    EXPECT_TRUE(log.has(QStringLiteral("quotes of 20240102 are left alone")));
}

} // namespace TradeModule
