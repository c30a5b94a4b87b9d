#include "tests/trademodule/support/ExchangeFixture.h"

namespace TradeModule {

namespace {

using namespace TradeChart::OrderStatus;

/// A bar of a recorded day that is played as today.
Quote replayed(int hhmm)
{
    Quote quote = bar(hhmm, 10, 10, 10);
    quote.recorded = TradingDate::of(2024, 1, 2);
    return quote;
}

} // namespace

TEST_F(PaperExchangeOfADay, LeavesTheQuotesOfAReplayAloneAndSaysSoOnce)
{
    const Order order = buy(10, 100);
    const LogCapture log;
    exchange().take(replayed(1001));
    exchange().take(replayed(1430));
    EXPECT_EQ(statusOf(order), code(Quoting));
    EXPECT_EQ(buy(10, 100).time, at(1000)) << "the clock is the market's";
    ASSERT_EQ(log.lines().size(), 1);
    EXPECT_TRUE(log.has(QStringLiteral("replay of 20240102")));
}

TEST_F(PaperExchangeOfADay, ReckonsTheCostByTheTimeOfDayWhenALaterBuyIsInTheLedgerAlready)
{
    hold(1000);
    Execution later = fill(Side::Buy, bank(), TradingDate::today(), 10, 1000);
    later.time = at(1401);
    book({later});
    sell(10, 1000);
    exchange().take(bar(1001, 10, 10, 10));
    ASSERT_EQ(ledger().holding(bank()).quantity(), 1000);
    EXPECT_NEAR(costPrice(bank()), (later.amount + later.fee).yuan() / 1000, 1e-9)
        << "what was held before was sold first";
}

TEST_F(PaperExchangeOfADay, DealsAQuarterOfAMinuteHoweverOftenItIsTold)
{
    const Order order = buy(10, 1000);
    Quote minute = bar(1001, 10, 10, 10, 400);
    for (const int second : {10, 20, 20, 30}) { // one of them comes twice
        minute.time = ClockTime::of(10, 0, second).value();
        minute.volume = second * 40;
        exchange().take(minute);
    }
    EXPECT_EQ(now(order).matchedQuantity, 300) << "a quarter of 1200 shares";
}

TEST_F(PaperExchangeOfADay, DoesNotDealWhatWasTradedBeforeTheOrderCame)
{
    Quote minute = bar(1001, 10, 10, 9.5, 1000);
    minute.close = yuan(10);
    minute.time = ClockTime::of(10, 0, 20).value();
    exchange().take(minute);
    const Order order = buy(9.6, 100);
    minute.time = ClockTime::of(10, 0, 40).value();
    minute.volume = 5000;
    exchange().take(minute);
    EXPECT_EQ(now(order).matchedQuantity, 0) << "9.50 was before it";
    minute.low = yuan(9.4);
    minute.volume = 9000;
    exchange().take(minute);
    EXPECT_EQ(statusOf(order), code(Dealed));
}

TEST_F(PaperExchangeOfADay, LeavesALateQuoteAlone)
{
    const Order order = buy(9.5, 100);
    exchange().take(bar(1003, 10, 10, 10));
    exchange().take(bar(1002, 9.5, 9.5, 9.5));
    EXPECT_EQ(statusOf(order), code(Quoted));
    EXPECT_EQ(buy(9.2, 100).time, at(1003)) << "the clock stands still";
    exchange().settle();
    EXPECT_EQ(refusalOf(Direction::Buy, 10.005, 100).empty(), false);
}

TEST_F(PaperExchangeOfADay, DealsTheOrdersOfBeforeARestart)
{
    const Order order = buy(10, 100);
    PaperExchange afterwards(&ledger());

    afterwards.take(bar(1001, 10, 10, 10));

    EXPECT_EQ(statusOf(order), code(Dealed));
}

TEST_F(PaperExchangeOfADay, DealsNoShareTwiceOverARestart)
{
    const Order order = buy(10, 1000);
    Quote minute = bar(1001, 10, 10, 10, 800);
    minute.time = ClockTime::of(10, 0, 20).value();
    exchange().take(minute);
    ASSERT_EQ(now(order).matchedQuantity, 200);
    PaperExchange afterwards(&ledger());

    afterwards.take(minute);
    EXPECT_EQ(now(order).matchedQuantity, 200);
    minute.time = ClockTime::of(10, 0, 40).value();
    minute.volume = 1600;
    afterwards.take(minute);

    EXPECT_EQ(now(order).matchedQuantity, 400) << "a quarter of what was added";
}

TEST_F(PaperExchangeOfADay, DealsNothingOfBeforeTheOrderOverARestart)
{
    Quote minute = bar(1001, 10, 10, 9.5, 100000);
    minute.close = yuan(10);
    minute.time = ClockTime::of(10, 0, 20).value();
    exchange().take(minute);
    const Order order = buy(9.6, 100);
    PaperExchange afterwards(&ledger());

    minute.time = ClockTime::of(10, 0, 40).value();
    minute.volume = 200000;
    afterwards.take(minute);

    EXPECT_EQ(now(order).matchedQuantity, 0) << "9.50 was before it";
}

TEST_F(PaperExchangeOfADay, DealsNothingOfBeforeAReplacementOverARestart)
{
    const Order old = buy(9.4, 100);
    exchange().take(bar(1000, 10, 10, 9.9, 100000));
    Quote minute = bar(1001, 10, 10, 9.5, 100000);
    minute.close = yuan(10);
    minute.time = ClockTime::of(10, 0, 20).value();
    exchange().take(minute);
    exchange().replace(old.date, old.number, yuan(9.6), QStringLiteral("r1"));
    exchange().settle();
    PaperExchange afterwards(&ledger());

    minute.time = ClockTime::of(10, 0, 40).value();
    minute.volume = 200000;
    afterwards.take(minute);

    const Orders open = OrderBook(&ledger()).open();
    ASSERT_EQ(open.size(), 1);
    EXPECT_EQ(open.front().price, yuan(9.6));
    EXPECT_EQ(open.front().matchedQuantity, 0) << "9.50 was before it";
}

TEST_F(PaperExchangeOfADay, CountsSharesOfTheStarMarketSingly)
{
    Quote quote = bar(1001, 10, 10, 10, 1027);
    quote.security = {QStringLiteral("688981"), Market::Shanghai};
    exchange().take(quote);
    const Order order = exchange().place(quote.security, Direction::Buy, yuan(10), 357);
    EXPECT_THROW(exchange().place(quote.security, Direction::Buy, yuan(10), 199), Error);
    quote.time = at(1002);

    exchange().take(quote);

    EXPECT_EQ(now(order).matchedQuantity, 256);
}

TEST_F(PaperExchangeOfADay, DealsABarOnceAlthoughTheClockCouldNotBeWritten)
{
    const Order order = buy(10, 1000);
    Quote quote = bar(1001, 10, 10, 10, 800);
    quote.previousClose = yuan(9.99); // a new reference has the clock written at once
    Database *const database = ledger().database();
    database->run(QStringLiteral("ALTER TABLE exchange_clock RENAME TO hidden_clock"));
    EXPECT_THROW(exchange().take(quote), Error);
    database->run(QStringLiteral("ALTER TABLE hidden_clock RENAME TO exchange_clock"));

    exchange().take(quote);

    EXPECT_EQ(now(order).matchedQuantity, 200) << "a quarter of 800 shares";
}

TEST_F(PaperExchangeOfADay, DealsNothingOfAPastDayThoughItsOrderCannotBeEnded)
{
    const Order order = buy(10, 100);
    exchange().report();
    Database *const database = ledger().database();
    database->run(QStringLiteral("UPDATE trade_order SET order_date = 20240102"));
    const Order ended = buy(9, 100);
    exchange().cancel(ended.date, ended.number);
    database->run(QStringLiteral("CREATE UNIQUE INDEX once ON trade_order (status) WHERE status = '%1'")
                      .arg(code(Canceled)));
    const LogCapture log;

    exchange().take(bar(1001, 10, 10, 10));

    EXPECT_TRUE(log.has(QStringLiteral("is set aside"))) << qPrintable(log.text());
    EXPECT_EQ(OrderBook(&ledger()).find(TradingDate::of(2024, 1, 2).value(), order.number)->matchedQuantity,
              0);
}

TEST_F(PaperExchangeOfADay, ReportsTheNextTimeWhatIsPlacedWhileItReports)
{
    PaperExchange *own = nullptr;
    std::optional<Order> second;
    PaperExchange exchange(&ledger(), [&](const Order &told) {
        if (told.status == code(Quoted) && !second) {
            second = own->place(bank(), Direction::Buy, yuan(9.5), 100);
        }
    });
    own = &exchange;
    exchange.place(bank(), Direction::Buy, yuan(9.6), 100);
    exchange.report();
    ASSERT_TRUE(second.has_value());
    ASSERT_EQ(statusOf(*second), code(Quoting));

    exchange.report();

    EXPECT_EQ(statusOf(*second), code(Quoted));
}

} // namespace TradeModule
