// An order that goes on at another price: never two orders for one, and none is lost untold.
#include "tests/trademodule/support/ExchangeFixture.h"
#include "trademodule/bus/TradeAnswers.h"

#include <QJsonDocument>
#include <QJsonObject>

namespace TradeModule {

namespace {

using namespace TradeChart::OrderStatus;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::SizeIs;

const QString ownNumber = QStringLiteral("desk-1");
const QString otherNumber = QStringLiteral("desk-2");

class OrderReplacementsTest : public PaperExchangeOfADay
{
protected:
    /// A buy that stands at the exchange.
    Order quoted(double price, qint64 quantity)
    {
        const Order order = buy(price, quantity);
        exchange().settle();
        return now(order);
    }

    Replacement replace(const Order &order, double price, const QString &clientNumber = ownNumber)
    {
        return exchange().replace(order.date, order.number, yuan(price), clientNumber);
    }

    std::string refusalOfReplacing(const Order &order, double price, const QString &clientNumber = ownNumber)
    {
        try {
            replace(order, price, clientNumber);
        } catch (const Error &error) {
            return error.what();
        }
        return "no refusal";
    }

    Replacement stateOf(const QString &clientNumber)
    {
        return OrderBook(&ledger()).replacements().find(clientNumber).value();
    }

    Order newOrderOf(const QString &clientNumber)
    {
        return OrderBook(&ledger()).find(TradingDate::today(), stateOf(clientNumber).newOrderNumber).value();
    }

    Orders open() { return OrderBook(&ledger()).open(); }
    Orders all() { return OrderBook(&ledger()).ofDay(TradingDate::today()); }

    /// What a chart would see at worst: shares that may still be dealt of all orders.
    qint64 openShares()
    {
        qint64 shares = 0;
        const Orders orders = open();
        for (const Order &order : orders) {
            shares += order.openQuantity();
        }
        return shares;
    }

    /// Writes an order as another program would.
    void write(const Order &order)
    {
        OrderBook book(&ledger());
        Transaction transaction = book.begin();
        book.update(order);
        transaction.commit();
    }

    QJsonObject ask(const char *price, const QJsonValue &clientNumber, const QString &orderNumber)
    {
        const QJsonObject question{{QStringLiteral("cmd"), QStringLiteral("Replace")},
                                   {QStringLiteral("stkcode"), bank().code},
                                   {QStringLiteral("market"), QStringLiteral("SZ")},
                                   {QStringLiteral("orderdate"), TradingDate::today().text()},
                                   {QStringLiteral("ordersno"), orderNumber},
                                   {QStringLiteral("orderprice"), QLatin1String(price)},
                                   {QStringLiteral("clientno"), clientNumber}};
        return QJsonDocument::fromJson(TradeAnswers(&ledger(), &exchange()).answer(question)).object();
    }

    QJsonObject dataOf(const QJsonObject &answer) { return answer[QStringLiteral("data")].toObject(); }
};

} // namespace

TEST_F(OrderReplacementsTest, PlacesTheRestWhenTheCancellationIsConfirmed)
{
    const Order old = quoted(9, 300);
    m_statuses.clear();

    EXPECT_EQ(replace(old, 9.50).state, ReplacementState::Waiting);
    EXPECT_EQ(statusOf(old), code(QuotedWaittingCancel));
    EXPECT_THAT(all(), SizeIs(1)); // not both

    exchange().settle();
    EXPECT_EQ(stateOf(ownNumber).state, ReplacementState::Placed);
    EXPECT_EQ(statusOf(old), code(Canceled));
    EXPECT_EQ(newOrderOf(ownNumber).price, yuan(9.50));
    EXPECT_EQ(newOrderOf(ownNumber).quantity, 300);
    EXPECT_THAT(m_statuses, ElementsAre(QuotedWaittingCancel, Canceled, Quoting));
}

TEST_F(OrderReplacementsTest, PlacesOnlyWhatWasNotDealt)
{
    const Order old = quoted(9, 300);
    exchange().take(bar(1001, 9, 9, 9, 400)); // a quarter of it: 100

    replace(old, 9.50);
    exchange().settle();

    EXPECT_EQ(statusOf(old), code(PartCanceled));
    EXPECT_EQ(now(old).cancelledQuantity, 200);
    EXPECT_EQ(newOrderOf(ownNumber).quantity, 200);
}

TEST_F(OrderReplacementsTest, DealsNothingOfTheOldOrderWhileItRuns)
{
    const Order old = quoted(9.50, 300);
    replace(old, 9.20);

    exchange().take(bar(1001, 9.50, 9.50, 9.50)); // confirms first

    EXPECT_EQ(now(old).matchedQuantity, 0);
    EXPECT_EQ(openShares(), 300);
    EXPECT_EQ(newOrderOf(ownNumber).matchedQuantity, 0);
}

TEST_F(OrderReplacementsTest, IsRefusedWhenTheOrderWasDealtBefore)
{
    const Order old = quoted(9, 300);
    exchange().take(bar(1001, 9, 9, 9));

    EXPECT_THAT(refusalOfReplacing(old, 9.50), HasSubstr("can not be cancelled"));
    EXPECT_THAT(all(), SizeIs(1));
}

TEST_F(OrderReplacementsTest, PlacesNothingForARestOfNothing)
{
    Order old = quoted(9, 300);
    replace(old, 9.50);
    old = now(old);
    old.matchedQuantity = 300; // dealt by who confirms the cancellation
    write(old);

    exchange().settle();

    EXPECT_EQ(stateOf(ownNumber).state, ReplacementState::Dealt);
    EXPECT_THAT(all(), SizeIs(1));
}

TEST_F(OrderReplacementsTest, HappensOnceHoweverOftenItIsAsked)
{
    const Order old = quoted(9, 300);
    replace(old, 9.50);
    EXPECT_EQ(replace(old, 9.50).state, ReplacementState::Waiting);
    exchange().settle();

    const Replacement again = replace(old, 9.50);

    EXPECT_EQ(again.state, ReplacementState::Placed);
    EXPECT_EQ(again.newOrderNumber, newOrderOf(ownNumber).number);
    EXPECT_THAT(all(), SizeIs(2));
}

TEST_F(OrderReplacementsTest, IsKnownAndGoesOnAfterARestart)
{
    const Order old = quoted(9, 300);
    replace(old, 9.50);

    Ledger reopened(location());
    PaperExchange restarted(&reopened);
    EXPECT_EQ(restarted.replace(old.date, old.number, yuan(9.50), ownNumber).state,
              ReplacementState::Waiting);
    restarted.settle();

    EXPECT_EQ(restarted.replace(old.date, old.number, yuan(9.50), ownNumber).state, ReplacementState::Placed);
    EXPECT_EQ(openShares(), 300);
}

TEST_F(OrderReplacementsTest, IsRefusedWhileAnotherOneOfTheOrderRuns)
{
    const Order old = quoted(9, 300);
    replace(old, 9.50);

    EXPECT_THAT(refusalOfReplacing(old, 9.60, otherNumber), HasSubstr("being replaced already"));
    exchange().settle();
    EXPECT_EQ(openShares(), 300);
}

TEST_F(OrderReplacementsTest, IsRefusedForANumberOfAnotherOne)
{
    const Order old = quoted(9, 300);
    replace(old, 9.50);

    EXPECT_THAT(refusalOfReplacing(old, 9.60), HasSubstr("another replacement, of order 1"));
}

TEST_F(OrderReplacementsTest, LeavesTheOrderAloneWhenThePriceIsRefused)
{
    exchange().take([] {
        Quote quote = bar(1001, 10, 10, 10);
        quote.previousClose = yuan(10);
        return quote;
    }());
    const Order old = quoted(9.50, 300);

    EXPECT_THAT(refusalOfReplacing(old, 11.01), HasSubstr("limits of the day"));
    EXPECT_THAT(refusalOfReplacing(old, 9.501), HasSubstr("0.01"));
    EXPECT_THAT(refusalOfReplacing(old, 9.50), HasSubstr("already"));
    EXPECT_EQ(statusOf(old), code(Quoted));
    EXPECT_THAT(all(), SizeIs(1));
}

TEST_F(OrderReplacementsTest, RefusesWhatItRefusedBeforeThoughItCouldBeDoneNow)
{
    setCash(2750);
    const Order old = quoted(9, 300);
    const std::string refusal = refusalOfReplacing(old, 9.50);
    ASSERT_THAT(refusal, HasSubstr("there are 2750"));
    setCash(100000);

    EXPECT_EQ(refusalOfReplacing(old, 9.50), refusal) << "a second copy of the question";
    EXPECT_EQ(statusOf(old), code(Quoted));
    EXPECT_EQ(refusalOfReplacing(old, 9.50, otherNumber), "no refusal");
}

TEST_F(OrderReplacementsTest, CountsTheCashOfTheOldOrder)
{
    setCash(2750);
    const Order old = quoted(9, 300); // 2,705 with its fees

    EXPECT_THAT(refusalOfReplacing(old, 9.50), HasSubstr("there are 2750"));
    EXPECT_EQ(statusOf(old), code(Quoted));
    EXPECT_EQ(replace(old, 9.10).state, ReplacementState::Waiting);
}

TEST_F(OrderReplacementsTest, TellsWhenTheRestCannotBePlacedAnyMore)
{
    setCash(2880);
    const Order old = quoted(9, 300);
    replace(old, 9.50);
    setCash(2750); // spent elsewhere before the cancellation was confirmed

    exchange().settle();

    EXPECT_EQ(statusOf(old), code(Canceled));
    const Replacement told = replace(old, 9.50);
    EXPECT_EQ(told.state, ReplacementState::Failed);
    EXPECT_THAT(told.reason.toStdString(), HasSubstr("there are 2750"));
    EXPECT_EQ(openShares(), 0);
}

TEST_F(OrderReplacementsTest, HasTheCashOfEveryOrderThatEndsWithItsOwn)
{
    setCash(20100);
    const Order old = quoted(10, 1000);
    replace(old, 10.90);
    const Order later = buy(10, 1000);
    exchange().report();
    exchange().cancel(later.date, later.number);

    exchange().settle();

    EXPECT_EQ(statusOf(later), code(Canceled));
    EXPECT_EQ(stateOf(ownNumber).state, ReplacementState::Placed) << qPrintable(stateOf(ownNumber).reason);
    EXPECT_EQ(openShares(), 1000);
}

TEST_F(OrderReplacementsTest, IsPlacedThoughAnotherOrderCannotBeEnded)
{
    const Order old = quoted(9, 300);
    const Order undying = quoted(9, 300);
    replace(old, 9.50);
    exchange().cancel(undying.date, undying.number);
    ledger().database()->run(QStringLiteral("CREATE UNIQUE INDEX once ON trade_order (status) "
                                            "WHERE status = '%1'")
                                 .arg(code(Canceled)));
    const LogCapture log;

    exchange().settle();

    EXPECT_EQ(stateOf(ownNumber).state, ReplacementState::Placed);
    EXPECT_EQ(statusOf(undying), code(QuotedWaittingCancel));
    EXPECT_EQ(openShares(), 600);
    EXPECT_TRUE(log.has(QStringLiteral("order 2 (000001) is set aside"))) << qPrintable(log.text());
}

TEST_F(OrderReplacementsTest, PlacesNothingWhenTheDayOfTheOrderIsOver)
{
    const Order old = quoted(9, 300);
    replace(old, 9.50);
    Database(location()).run(QStringLiteral("UPDATE trade_order SET order_date = 20240102"));

    exchange().settle();

    EXPECT_EQ(stateOf(ownNumber).state, ReplacementState::Failed);
    EXPECT_THAT(stateOf(ownNumber).reason.toStdString(), HasSubstr("is over"));
    EXPECT_EQ(openShares(), 0);
}

TEST_F(OrderReplacementsTest, IsDoneAtOnceForAnOrderThatTheExchangeDoesNotKnowYet)
{
    const Order left = exchange().leave(bank(), Direction::Buy, yuan(9), 300);

    EXPECT_EQ(replace(left, 9.50).state, ReplacementState::Placed);
    EXPECT_EQ(openShares(), 300);
}

TEST_F(OrderReplacementsTest, ReplacesTheOddRestOfASell)
{
    hold(150);
    const Order old = sell(11, 150);
    exchange().settle();
    exchange().take(bar(1001, 11, 11, 11, 400)); // 100 of it

    replace(old, 10.50);
    exchange().settle();

    EXPECT_EQ(newOrderOf(ownNumber).quantity, 50);
    EXPECT_EQ(newOrderOf(ownNumber).direction, Direction::Sell);
}

TEST_F(OrderReplacementsTest, IsAnsweredWithHowFarItIs)
{
    quoted(9, 300);

    const QJsonObject asked = ask("9.50", ownNumber, QStringLiteral("1"));
    EXPECT_EQ(asked[QStringLiteral("clientno")], QJsonValue(ownNumber));
    EXPECT_EQ(dataOf(asked)[QStringLiteral("replacement")], QJsonValue(QStringLiteral("waiting")));
    EXPECT_FALSE(dataOf(asked).contains(QStringLiteral("newordersno")));
    exchange().settle();

    const QJsonObject done = dataOf(ask("9.50", ownNumber, QStringLiteral("1")));
    EXPECT_EQ(done[QStringLiteral("replacement")], QJsonValue(QStringLiteral("placed")));
    EXPECT_EQ(done[QStringLiteral("ordersno")], QJsonValue(QStringLiteral("1")));
    EXPECT_EQ(done[QStringLiteral("newordersno")], QJsonValue(QStringLiteral("2")));
}

TEST_F(OrderReplacementsTest, IsAnsweredWithTheReasonOfARefusal)
{
    const QJsonObject answer = ask("9.50", ownNumber, QStringLiteral("7"));

    EXPECT_EQ(answer[QStringLiteral("success")], QJsonValue(false));
    EXPECT_EQ(answer[QStringLiteral("errcode")], QJsonValue(3));
}

TEST_F(OrderReplacementsTest, NeedsAClientsNumber)
{
    quoted(9, 300);

    for (const QJsonValue &none : {QJsonValue(QJsonValue::Undefined), QJsonValue(QString()), QJsonValue(7)}) {
        const QJsonObject answer = ask("9.50", none, QStringLiteral("1"));
        EXPECT_EQ(answer[QStringLiteral("errcode")], QJsonValue(1));
        EXPECT_THAT(answer[QStringLiteral("msg")].toString().toStdString(), HasSubstr("\"clientno\""));
    }
    EXPECT_EQ(open().constFirst().status, code(Quoted));
}

} // namespace TradeModule
