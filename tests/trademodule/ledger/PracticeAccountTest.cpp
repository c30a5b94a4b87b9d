// An account that practises a recorded day: how it begins, and at which day its orders and trades stand.
#include "trademodule/ledger/PracticeAccount.h"

#include "tests/trademodule/support/ExchangeFixture.h"
#include "tests/trademodule/support/LedgerAudit.h"
#include "trademodule/bus/TradeAnswers.h"
#include "trademodule/ledger/MarketDay.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QTemporaryDir>

namespace TradeModule {
namespace {

using ::testing::IsEmpty;

constexpr TradingDate practised = day(20230711);

class PracticeAccountTest : public LedgerFixture
{
protected:
    QString practice() const { return m_folder.filePath(QStringLiteral("practice.db")); }

    void begin() { beginPractice(practice(), practised, {yuan(100000), {{bank(), {}, 1000, yuan(9000)}}}); }

    static Quote replayed(int hhmm, double low, double high, TradingDate recorded = practised)
    {
        Quote quote = bar(hhmm, low, high, low);
        quote.recorded = recorded;
        return quote;
    }

    static QJsonArray rowsOf(TradeAnswers *answers, const char *question)
    {
        const QByteArray answer = answers->answer(QJsonDocument::fromJson(question).object());
        return QJsonDocument::fromJson(answer).object().value(QStringLiteral("data")).toArray();
    }

    QTemporaryDir m_folder;
};

TEST_F(PracticeAccountTest, BeginsWithTheCashAndTheHoldingsOfAnother)
{
    book({fill(Side::Buy, bank(), day(20240102), 9, 1000), fill(Side::Sell, bank(), day(20240103), 10, 400)});
    PaperExchange(&ledger()).setCash(yuan(4321));
    const Money cost = Money::ofYuan(ledger().holding(bank()).cost()).value();

    beginPractice(practice(), practised, PracticeAccount::of(location()));
    Ledger begun(practice());
    EXPECT_EQ(begun.practisedDay(), practised);
    EXPECT_EQ(OrderBook(&begun).cash(), yuan(4321));
    EXPECT_EQ(begun.holding(bank()).quantity(), 600);
    EXPECT_EQ(Money::ofYuan(begun.holding(bank()).cost()), cost);
    EXPECT_EQ(PaperExchange(&begun).sellable(bank()), 600);
}

TEST_F(PracticeAccountTest, LeavesTheAccountThatIsCopiedAsItIs)
{
    book({fill(Side::Buy, bank(), day(20240102), 9, 1000)});
    const Money cash = OrderBook(&ledger()).cash();
    beginPractice(practice(), practised, PracticeAccount::of(location()));
    Ledger begun(practice());
    PaperExchange exchange(&begun);
    exchange.place(bank(), Direction::Sell, yuan(10), 1000);
    exchange.take(replayed(930, 9.9, 10.1));
    EXPECT_EQ(begun.holding(bank()).quantity(), 0);
    EXPECT_EQ(ledger().practisedDay(), std::nullopt);
    EXPECT_EQ(ledger().holding(bank()).quantity(), 1000);
    EXPECT_EQ(OrderBook(&ledger()).cash(), cash);
    EXPECT_THAT(OrderBook(&ledger()).open(), IsEmpty());
}

TEST_F(PracticeAccountTest, BeginsInNoLedgerThatIsThere)
{
    begin();
    EXPECT_THROW(begin(), Error);
    EXPECT_THROW(PracticeAccount::of(m_folder.filePath(QStringLiteral("nothing.db"))), Error);
    EXPECT_FALSE(QFile::exists(m_folder.filePath(QStringLiteral("nothing.db"))));
}

TEST_F(PracticeAccountTest, FilesWhatItTradesAtTheRecordedDayAndMinute)
{
    begin();
    Ledger ledger(practice());
    PaperExchange exchange(&ledger);
    exchange.take(replayed(1000, 9.9, 10.1));
    const Order order = exchange.place(bank(), Direction::Buy, yuan(9.5), 100);
    EXPECT_EQ(order.date, practised);
    EXPECT_EQ(order.time, at(1000));
    exchange.take(replayed(1005, 9.4, 9.8));
    const Executions trades = ledger.trades(bank(), {practised, practised});
    ASSERT_EQ(trades.size(), 1);
    EXPECT_EQ(trades[0].time, at(1005));
    EXPECT_THAT(audit(&ledger, yuan(100000)), IsEmpty());
}

TEST_F(PracticeAccountTest, GoesByTheFirstOpenOfItsDayWhereNoCloseIsTold)
{
    begin();
    Ledger ledger(practice());
    PaperExchange exchange(&ledger);
    exchange.take(replayed(931, 20, 20));
    const Order order = exchange.place(bank(), Direction::Buy, yuan(19), 100);
    exchange.settle();
    EXPECT_EQ(OrderBook(&ledger).find(practised, order.number)->status,
              code(TradeChart::OrderStatus::Quoted));
}

TEST_F(PracticeAccountTest, IsHeldToTheRulesOfItsDay)
{
    const SecurityId growth{QStringLiteral("300750"), Market::Shenzhen};
    const auto statusAt = [&](const char *file, TradingDate day) {
        const QString path = m_folder.filePath(QLatin1String(file));
        beginPractice(path, day, {yuan(100000), {}});
        Ledger ledger(path);
        PaperExchange exchange(&ledger);
        Quote quote = replayed(1000, 10, 10, day);
        quote.security = growth;
        quote.previousClose = yuan(10);
        exchange.take(quote);
        const Order order = exchange.place(growth, Direction::Buy, yuan(11.5), 100);
        exchange.settle();
        return OrderBook(&ledger).find(day, order.number)->status;
    };
    EXPECT_EQ(statusAt("before.db", day(20200821)), code(TradeChart::OrderStatus::AbolishedOrder)) << "10 %";
    EXPECT_EQ(statusAt("after.db", day(20200824)), code(TradeChart::OrderStatus::Quoted)) << "20 %";
}

TEST_F(PracticeAccountTest, TellsChartsTheOrdersOfItsDayAsOfTodayAndEachTradeOnce)
{
    begin();
    Ledger ledger(practice());
    PaperExchange exchange(&ledger);
    exchange.take(replayed(1000, 9.9, 10.1));
    const Order order = exchange.place(bank(), Direction::Buy, yuan(10), 100);
    exchange.take(replayed(1001, 9.9, 10.1));
    TradeAnswers answers(&ledger, &exchange);
    const QString today = TradingDate::today().text();
    const QJsonArray orders =
        rowsOf(&answers, R"({"cmd":"EntrustTodayTrade","market":"SZ","stkcode":"000001"})");
    ASSERT_EQ(orders.size(), 1);
    EXPECT_EQ(orders[0].toObject().value(QStringLiteral("orderdate")).toString(), today);
    const QJsonArray trades = rowsOf(&answers, R"({"cmd":"TodayTrade","market":"SZ","stkcode":"000001"})");
    ASSERT_EQ(trades.size(), 1);
    EXPECT_EQ(trades[0].toObject().value(QStringLiteral("date")).toString(), practised.text())
        << "where charts of days have its bar";
    const QJsonArray past = rowsOf(
        &answers,
        R"({"cmd":"HistoryTrade","market":"SZ","stkcode":"000001","start":"20230101","end":"20231231"})");
    EXPECT_EQ(past.size(), 0) << "what is told as today's";
}

TEST_F(PracticeAccountTest, TellsItsOpenOrdersAsOfToday)
{
    begin();
    Ledger ledger(practice());
    PaperExchange exchange(&ledger);
    exchange.take(replayed(1000, 9.9, 10.1));
    exchange.place(bank(), Direction::Buy, yuan(9), 100);
    TradeAnswers answers(&ledger, &exchange);

    const QJsonArray open = rowsOf(&answers, R"({"cmd":"OpenOrders"})");

    ASSERT_EQ(open.size(), 1);
    EXPECT_EQ(open[0].toObject().value(QStringLiteral("orderdate")).toString(), TradingDate::today().text());
}

TEST_F(PracticeAccountTest, CancelsAnOrderThatChartsCallTodays)
{
    begin();
    Ledger ledger(practice());
    PaperExchange exchange(&ledger);
    exchange.take(replayed(1000, 9.9, 10.1));
    const Order order = exchange.place(bank(), Direction::Buy, yuan(9), 100);
    exchange.settle();
    TradeAnswers answers(&ledger, &exchange);
    answers.answer({{QStringLiteral("cmd"), QStringLiteral("EntrustCancel")},
                    {QStringLiteral("market"), QStringLiteral("SZ")},
                    {QStringLiteral("stkcode"), QStringLiteral("000001")},
                    {QStringLiteral("ordersno"), QString::number(order.number)},
                    {QStringLiteral("orderdate"), TradingDate::today().text()}});
    exchange.settle();
    EXPECT_EQ(OrderBook(&ledger).find(practised, order.number)->status,
              code(TradeChart::OrderStatus::Canceled));
}

TEST_F(PracticeAccountTest, ReplacesAnOrderOfItsDay)
{
    begin();
    Ledger ledger(practice());
    PaperExchange exchange(&ledger);
    exchange.take(replayed(1000, 9.9, 10.1));
    const Order order = exchange.place(bank(), Direction::Buy, yuan(9), 100);
    exchange.settle();
    exchange.replace(practised, order.number, yuan(9.5), QStringLiteral("replacement"));
    exchange.settle();
    const Orders open = OrderBook(&ledger).open();
    ASSERT_EQ(open.size(), 1);
    EXPECT_EQ(open[0].price, yuan(9.5));
    EXPECT_EQ(open[0].date, practised);
    EXPECT_EQ(open[0].time, at(1000));
}

TEST_F(PracticeAccountTest, TakesTheQuotesOfItsRecordedDayAloneOnWhicheverDayTheyArePlayed)
{
    begin();
    Ledger ledger(practice());
    PaperExchange exchange(&ledger);
    const LogCapture log;
    exchange.take(bar(1000, 10, 10, 10)); // the market's
    exchange.take(replayed(1000, 9.9, 10.1, day(20230712)));
    EXPECT_EQ(MarketDay(&ledger).clock(), std::nullopt);
    Quote afterMidnight = replayed(1000, 9.9, 10.1);
    afterMidnight.date = TradingDate::today().plusDays(1);
    exchange.take(afterMidnight);
    exchange.settle();
    EXPECT_EQ(MarketDay(&ledger).clock(), at(1000));
}

TEST_F(PracticeAccountTest, DealsNoMinuteTwiceThoughItIsPlayedAgain)
{
    begin();
    Ledger ledger(practice());
    PaperExchange exchange(&ledger);
    exchange.take(replayed(1000, 9.9, 10.1));
    exchange.place(bank(), Direction::Buy, yuan(9.5), 100);
    exchange.take(replayed(931, 9, 10.1));
    exchange.take(replayed(1000, 9, 10.1));
    EXPECT_THAT(ledger.trades(bank(), {practised, practised}), IsEmpty());
    exchange.take(replayed(1001, 9, 10.1));
    EXPECT_EQ(ledger.trades(bank(), {practised, practised}).size(), 1);
}

/// The clock is written now and then: what was dealt since must not be dealt again.
TEST_F(PracticeAccountTest, GoesOnAfterItsLastTradeWhenItsModuleWasKilled)
{
    begin();
    Ledger ledger(practice());
    {
        PaperExchange killed(&ledger);
        killed.take(replayed(1000, 9.9, 10.1));
        killed.place(bank(), Direction::Buy, yuan(9.5), 1000);
        Quote small = replayed(1005, 9, 10.1); // the clock in the ledger is still 10:00
        small.volume = 2000;
        killed.take(small);
    }
    const qint64 dealt = ledger.holding(bank()).quantity();
    ASSERT_EQ(dealt, 1500);
    PaperExchange again(&ledger);
    again.take(replayed(1004, 9, 10.1));
    again.take(replayed(1005, 9, 10.1));
    EXPECT_EQ(ledger.holding(bank()).quantity(), dealt);
}

TEST_F(PracticeAccountTest, HasNoOrderOfAnHourThatItsDayHasNotBegun)
{
    begin();
    Ledger ledger(practice());
    const Order order = PaperExchange(&ledger).place(bank(), Direction::Buy, yuan(9), 100);
    EXPECT_EQ(order.time, at(915));
    EXPECT_EQ(order.status, code(TradeChart::OrderStatus::Quoting));
}

} // namespace
} // namespace TradeModule
