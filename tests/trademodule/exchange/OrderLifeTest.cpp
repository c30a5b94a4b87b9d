#include "tests/support/ByName.h"
#include "tests/trademodule/support/ExchangeFixture.h"

namespace TradeModule {

namespace {

using namespace TradeChart::OrderStatus;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class OrderLifeTest : public PaperExchangeOfADay
{
protected:
    /// A statement's purchase of the bank's shares on a day, which calls them so.
    void bookNamed(const QString &name, TradingDate date)
    {
        Statement statement = statementOf({fill(Side::Buy, bank(), date, 10, 100)});
        statement.names.insert(bank(), name);
        ledger().book(statement, Ledger::Mode::Keep);
    }
};

} // namespace

TEST_F(OrderLifeTest, CancelsAnOrderThatWaits)
{
    const Order order = buy(9.50, 100);
    exchange().settle();

    exchange().cancel(order.date, order.number);
    EXPECT_EQ(statusOf(order), code(QuotedWaittingCancel));
    exchange().settle();

    EXPECT_EQ(statusOf(order), code(Canceled));
    EXPECT_EQ(now(order).cancelledQuantity, 100);
    EXPECT_THAT(m_statuses, ElementsAre(Quoting, Quoted, QuotedWaittingCancel, Canceled));
}

TEST_F(OrderLifeTest, CancelsTheRestOfAnOrderDealtInPart)
{
    const Order order = buy(10, 1000);
    exchange().take(bar(1001, 10, 10, 10, 2000));

    exchange().cancel(order.date, order.number);
    EXPECT_EQ(statusOf(order), code(PartDealWaittingCancel));
    exchange().settle();

    EXPECT_EQ(statusOf(order), code(PartCanceled));
    EXPECT_EQ(now(order).matchedQuantity, 500);
    EXPECT_EQ(now(order).cancelledQuantity, 500);
}

TEST_F(OrderLifeTest, CancelsAtOnceWhatTheExchangeDoesNotKnowYet)
{
    const Order order = buy(10, 100);

    EXPECT_EQ(exchange().cancel(order.date, order.number).status, code(Canceled));
}

struct Cancellation
{
    std::string name;
    const char *status;
    const char *becomes;
};

class OrderLifeCancellations : public PaperExchangeOfADay, public ::testing::WithParamInterface<Cancellation>
{
protected:
    /// An order of that status; its quantities do not matter here.
    Order orderOf(const char *status)
    {
        const Order order = buy(10, 100);
        Database(location()).run(QStringLiteral("UPDATE trade_order SET status = '%1'").arg(code(status)));
        m_statuses.clear();
        return now(order);
    }
};

TEST_P(OrderLifeCancellations, AreTakenOrRefusedByTheStatusOfTheOrder)
{
    const auto &[name, status, becomes] = GetParam();
    const Order order = orderOf(status);

    const std::string refusal = refusalOfCancelling(order.date, order.number);

    if (becomes != nullptr) {
        EXPECT_EQ(statusOf(order), code(becomes));
        EXPECT_THAT(m_statuses, ElementsAre(becomes));
        return;
    }
    EXPECT_EQ(refusal, "order 1 can not be cancelled: " + std::string(getOrderStatusTxt(code(status))));
    EXPECT_EQ(statusOf(order), code(status));
    EXPECT_EQ(now(order).cancelledQuantity, 0);
    EXPECT_THAT(m_statuses, IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(
    Of, OrderLifeCancellations,
    ::testing::Values(Cancellation{"AnOrderLeft", None, Canceled},
                      Cancellation{"AnOrderThatWaitsForTheOpening", WaittingQuote, Canceled},
                      Cancellation{"AnOrderNotReportedYet", Quoting, Canceled},
                      Cancellation{"AnOrderThatWaits", Quoted, QuotedWaittingCancel},
                      Cancellation{"AnOrderDealtInPart", PartDeal, PartDealWaittingCancel},
                      Cancellation{"TheSameOrderTwice", QuotedWaittingCancel, nullptr},
                      Cancellation{"TheSameRestTwice", PartDealWaittingCancel, nullptr},
                      Cancellation{"ARestCancelledBefore", PartCanceled, nullptr},
                      Cancellation{"AnOrderCancelledBefore", Canceled, nullptr},
                      Cancellation{"AnOrderDealt", Dealed, nullptr},
                      Cancellation{"AnAbolishedOrder", AbolishedOrder, nullptr},
                      Cancellation{"AnOrderBeingReported", QuotingB, nullptr},
                      Cancellation{"AConfirmedOrder", Conformed, nullptr}),
    ByName());

TEST_F(OrderLifeTest, DoesNotCancelWhatIsNotThere)
{
    const Order order = buy(10, 100);

    EXPECT_EQ(refusalOfCancelling(order.date, 4711), "there is no order 4711 of " + order.date.digits());
    EXPECT_EQ(refusalOfCancelling(day(20240102), order.number), "there is no order 1 of 20240102");
    EXPECT_EQ(statusOf(order), code(Quoting));
    EXPECT_THAT(m_statuses, ElementsAre(Quoting));
}

TEST_F(OrderLifeTest, TakesAnOrderThatAnotherProcessLeft)
{
    const Order order = PaperExchange(&ledger()).leave(bank(), Direction::Buy, yuan(10), 100);
    EXPECT_EQ(order.status, code(None));

    exchange().settle();
    EXPECT_EQ(statusOf(order), code(Quoted));
    exchange().take(bar(1001, 10, 10, 10));

    EXPECT_EQ(statusOf(order), code(Dealed));
    EXPECT_THAT(m_statuses, ElementsAre(Quoted, Dealed));
}

TEST_F(OrderLifeTest, DealsAnOrderThatWasLeftWithTheFirstBarAfterIt)
{
    const Order order = PaperExchange(&ledger()).leave(bank(), Direction::Buy, yuan(10), 100);

    exchange().take(bar(1001, 10, 10, 10));

    EXPECT_EQ(statusOf(order), code(Dealed));
}

TEST_F(OrderLifeTest, ReportsAnOrderWithoutWaitingForTheNextBar)
{
    const Order order = buy(10, 100);
    exchange().report();
    EXPECT_EQ(statusOf(order), code(Quoted));

    exchange().take(bar(1001, 10, 10, 10));

    EXPECT_THAT(m_statuses, ElementsAre(Quoting, Quoted, Dealed));
}

TEST_F(OrderLifeTest, ReportsNewOrdersAloneAtOnce)
{
    const Order order = buy(9.50, 100);
    exchange().report();
    exchange().cancel(order.date, order.number);
    buy(9.50, 100);

    exchange().report();

    EXPECT_EQ(statusOf(order), code(QuotedWaittingCancel)) << "confirmed a little later";
}

TEST_F(OrderLifeTest, KeepsAnOrderBeingReportedUntilItsLimitsAreKnown)
{
    const Order order = exchange().place(liquor(), Direction::Buy, yuan(34), 100);
    exchange().report();
    exchange().settle();
    EXPECT_EQ(statusOf(order), code(Quoting));
    Quote first = bar(1001, 35, 35, 35);
    first.security = liquor();

    exchange().take(first);

    EXPECT_EQ(statusOf(order), code(Quoted));
}

TEST_F(OrderLifeTest, AbolishesAnOrderWhoseLimitsBecomeKnownLater)
{
    const Order high = exchange().place(liquor(), Direction::Buy, yuan(350), 100);
    const Order good = exchange().place(liquor(), Direction::Buy, yuan(34), 100);
    exchange().settle();
    ASSERT_EQ(statusOf(high), code(Quoting));
    Quote first = bar(1001, 34, 34, 34);
    first.security = liquor();
    first.previousClose = yuan(34);

    exchange().take(first);

    EXPECT_EQ(statusOf(high), code(AbolishedOrder));
    EXPECT_EQ(statusOf(good), code(Dealed));
}

TEST_F(OrderLifeTest, LetsAnOrderThatWasLeftInClosedHoursWait)
{
    exchange().take(bar(1145, 10, 10, 10));
    const Order order = PaperExchange(&ledger()).leave(bank(), Direction::Buy, yuan(10), 100);

    exchange().settle();

    EXPECT_EQ(statusOf(order), code(WaittingQuote));
}

TEST_F(OrderLifeTest, DealsNothingThatIsBeingCancelled)
{
    const Order order = buy(9.90, 100);
    exchange().settle();
    exchange().cancel(order.date, order.number);

    exchange().take(bar(1001, 9.90, 9.90, 9.90));

    EXPECT_EQ(statusOf(order), code(Canceled));
}

TEST_F(OrderLifeTest, KeepsOrdersOfClosedHoursUntilItOpens)
{
    exchange().take(bar(1145, 10, 10, 10));
    const Order order = buy(10, 100);
    EXPECT_EQ(order.status, code(WaittingQuote));
    exchange().settle();
    EXPECT_EQ(statusOf(order), code(WaittingQuote));

    exchange().take(bar(1301, 10.5, 10.5, 10.5));

    EXPECT_EQ(statusOf(order), code(Quoted));
}

TEST_F(OrderLifeTest, AbolishesAnOrderBeyondTheDaysLimits)
{
    const Order high = buy(11.01, 100);
    const Order atLimit = buy(11.00, 100);

    exchange().settle();

    EXPECT_EQ(statusOf(high), code(AbolishedOrder));
    EXPECT_EQ(statusOf(atLimit), code(Quoted));
}

TEST_F(OrderLifeTest, KeepsTheLimitsThoughTheNameIsThatOfAFirstDayLongAgo)
{
    bookNamed(QStringLiteral("N银行"), day(20240102));
    const Order high = buy(11.01, 100);

    exchange().settle();

    EXPECT_EQ(statusOf(high), code(AbolishedOrder));
}

TEST_F(OrderLifeTest, KnowsNoLimitsOnTheFirstDayThatAStatementTellsOf)
{
    bookNamed(QStringLiteral("N银行"), TradingDate::today());
    const Order high = buy(11.01, 100);

    exchange().settle();

    EXPECT_EQ(statusOf(high), code(Quoted));
}

TEST_F(OrderLifeTest, LetsOrdersOfPastDaysEnd)
{
    const Order order = buy(9.50, 100);
    exchange().settle();
    Database(location()).run(QStringLiteral("UPDATE trade_order SET order_date = 20240102"));

    exchange().settle();

    EXPECT_EQ(OrderBook(&ledger()).find(day(20240102), order.number)->status, code(Canceled));
}

} // namespace TradeModule
