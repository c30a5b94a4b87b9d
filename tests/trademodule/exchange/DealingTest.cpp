#include "tests/support/ByName.h"
#include "tests/trademodule/support/ExchangeFixture.h"

#include <vector>

namespace TradeModule {

namespace {

using namespace TradeChart::OrderStatus;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

class DealingTest : public PaperExchangeOfADay
{
};

} // namespace

TEST_F(DealingTest, DealsABuyWhenTheBarReachesItsPrice)
{
    const Order order = buy(9.90, 1000);
    exchange().take(bar(1001, 10, 10.05, 9.95));
    EXPECT_EQ(statusOf(order), code(Quoted));

    exchange().take(bar(1002, 10, 10, 9.90));

    EXPECT_EQ(statusOf(order), code(Dealed));
    const Executions trades = ledger().trades(bank(), {TradingDate::today(), TradingDate::today()});
    ASSERT_EQ(trades.size(), 1);
    EXPECT_EQ(trades[0].price, yuan(9.90));
    EXPECT_EQ(trades[0].time, at(1002));
    EXPECT_EQ(trades[0].orderNo, QString::number(order.number));
    EXPECT_THAT(m_statuses, ElementsAre(Quoting, Quoted, Dealed));
}

TEST_F(DealingTest, DealsASellWhenTheBarReachesItsPrice)
{
    hold(1000);
    const Order order = sell(10.10, 1000);
    exchange().take(bar(1001, 10, 10.09, 10));
    EXPECT_EQ(statusOf(order), code(Quoted));

    exchange().take(bar(1002, 10, 10.10, 10));

    EXPECT_EQ(statusOf(order), code(Dealed));
    EXPECT_EQ(ledger().holding(bank()).quantity(), 0);
}

struct Touch
{
    std::string name;
    Direction direction;
    double limit;
    double open;
    double high;
    double low;
    double dealtAt;
};

class DealingTouches : public PaperExchangeOfADay, public ::testing::WithParamInterface<Touch>
{
};

TEST_P(DealingTouches, DecideWhetherAndAtWhatPriceAnOrderIsDealt)
{
    const Touch &touch = GetParam();
    hold(100);
    const Order order = touch.direction == Direction::Buy ? buy(touch.limit, 100) : sell(touch.limit, 100);

    exchange().take(bar(1001, touch.open, touch.high, touch.low));

    EXPECT_EQ(now(order).matchedAmount, yuan(touch.dealtAt * 100));
    EXPECT_EQ(statusOf(order), code(touch.dealtAt > 0 ? Dealed : Quoted));
}

INSTANTIATE_TEST_SUITE_P(
    Of, DealingTouches,
    ::testing::Values(Touch{"ABuyByTheLow", Direction::Buy, 9.90, 10, 10.10, 9.90, 9.90},
                      Touch{"ABuyMissedByATick", Direction::Buy, 9.89, 10, 10.10, 9.90, 0},
                      Touch{"ABuyTradedThrough", Direction::Buy, 9.95, 10, 10.10, 9.90, 9.95},
                      Touch{"ABuyByTheOpen", Direction::Buy, 10, 10, 10.10, 9.90, 10},
                      Touch{"ABuyAboveTheOpen", Direction::Buy, 10.20, 10.05, 10.30, 10, 10.05},
                      Touch{"ABuyAboveTheWholeBar", Direction::Buy, 10.50, 10, 10.10, 9.90, 10},
                      Touch{"ASellByTheHigh", Direction::Sell, 10.10, 10, 10.10, 9.90, 10.10},
                      Touch{"ASellMissedByATick", Direction::Sell, 10.11, 10, 10.10, 9.90, 0},
                      Touch{"ASellTradedThrough", Direction::Sell, 10.05, 10, 10.10, 9.90, 10.05},
                      Touch{"ASellByTheOpen", Direction::Sell, 10, 10, 10.10, 9.90, 10},
                      Touch{"ASellBelowTheOpen", Direction::Sell, 9.80, 9.95, 10.10, 9.70, 9.95},
                      Touch{"ASellBelowTheWholeBar", Direction::Sell, 9.50, 10, 10.10, 9.90, 10}),
    ByName());

TEST_F(DealingTest, DealsAtMostAQuarterOfTheVolumeInWholeLots)
{
    const Order order = buy(10, 1000);

    exchange().take(bar(1001, 10, 10, 10, 1900));
    EXPECT_EQ(now(order).matchedQuantity, 400);
    EXPECT_EQ(statusOf(order), code(PartDeal));
    exchange().take(bar(1002, 10, 10, 10, 100));
    EXPECT_EQ(now(order).matchedQuantity, 400);
    exchange().take(bar(1003, 10, 10, 10, 10000));

    EXPECT_EQ(statusOf(order), code(Dealed));
    EXPECT_EQ(ledger().trades(bank(), {TradingDate::today(), TradingDate::today()}).size(), 2);
}

TEST_F(DealingTest, SharesTheVolumeAmongOrdersTheOldestFirst)
{
    const Order first = buy(10, 200);
    const Order second = buy(10, 200);

    exchange().take(bar(1001, 10, 10, 10, 1200));

    EXPECT_EQ(now(first).matchedQuantity, 200);
    EXPECT_EQ(now(second).matchedQuantity, 100);
}

TEST_F(DealingTest, TellsTheStampDutyOfTheFeesApart)
{
    hold(1000);
    sell(10, 1000);
    exchange().take(bar(1001, 10, 10, 10, 2400)); // 600 of them
    exchange().take(bar(1002, 10, 10, 10));

    const Executions trades = ledger().trades(bank(), {TradingDate::today(), TradingDate::today()});

    ASSERT_EQ(trades.size(), 2);
    EXPECT_EQ(trades[0].stampDuty, yuan(3)); // 0.05 % of 6000
    EXPECT_EQ(trades[1].stampDuty, yuan(2));
    EXPECT_EQ(trades[0].fee, yuan(8.06)); // commission 5, transfer fee 0.06
    EXPECT_EQ(trades[1].fee, yuan(2.04));
}

TEST_F(DealingTest, TakesTheFeesOnceForAnOrderInParts)
{
    buy(10, 1000);
    exchange().take(bar(1001, 10, 10, 10, 2000));
    exchange().take(bar(1002, 10, 10, 10, 2000));

    const double fees = 5 + 0.10; // commission at its least, transfer fee
    EXPECT_DOUBLE_EQ(OrderBook(&ledger()).cash().yuan(), 1000000 - 10000 - fees);
    EXPECT_DOUBLE_EQ(costPrice(bank()), (10000 + fees) / 1000);
}

TEST_F(DealingTest, DealsNothingAtABetterPriceThatComesToMoreThanAnyAccountHas)
{
    book({fill(Side::Bonus, bank(), 20240102, 0, 1000000)});
    const Order order = sell(10, 1000000);
    Quote quote = bar(1001, 1000000, 1000000, 1000000); // 10^12 yuan
    quote.volume = 4000000;

    const LogCapture log;

    exchange().take(quote);

    EXPECT_TRUE(
        log.has(QStringLiteral("order 1 (000001) is set aside, the others are not: price × quantity")))
        << qPrintable(log.text());
    EXPECT_EQ(now(order).matchedQuantity, 0);
    EXPECT_EQ(OrderBook(&ledger()).cash(), yuan(1000000));
    EXPECT_THAT(ledger().trades(DateRange()), IsEmpty());
}

TEST_F(DealingTest, DealsNothingThatWouldGiveTheAccountMoreThanItCanHold)
{
    hold(100);
    setCash(1e11);
    const Order order = sell(10, 100);

    const LogCapture log;

    exchange().take(bar(1001, 10, 10, 10));

    EXPECT_TRUE(log.has(QStringLiteral("is set aside"))) << qPrintable(log.text());
    EXPECT_EQ(now(order).matchedQuantity, 0);
    EXPECT_EQ(OrderBook(&ledger()).cash(), yuan(1e11));
}

/// The ledger refuses the execution of one order, as if its row were there already, until it is mended.
class DealingBesideAnUndealableOrder : public DealingTest
{
protected:
    void SetUp() override
    {
        DealingTest::SetUp();
        if (!IsSkipped()) {
            book({fill(Side::Buy, bank(), 20240102, 10, 100, QStringLiteral("P2-100"))});
            ledger().database()->run(QStringLiteral("CREATE UNIQUE INDEX once ON execution (deal_no)"));
            m_orders = {buy(10, 100), buy(10, 100), buy(10, 100)};
            exchange().report();
        }
    }

    void mend() { ledger().database()->run(QStringLiteral("DROP INDEX once")); }

    qint64 dealtOf(const Order &order) { return now(order).matchedQuantity; }
    int tradeCount() { return ledger().trades(bank(), {TradingDate::today(), TradingDate::today()}).size(); }

    const Order &first() const { return m_orders[0]; }
    const Order &undealable() const { return m_orders[1]; }
    const Order &last() const { return m_orders[2]; }

private:
    std::vector<Order> m_orders;
};

TEST_F(DealingBesideAnUndealableOrder, DealsTheOthersOfItsBar)
{
    const Money before = OrderBook(&ledger()).cash();

    exchange().take(bar(1001, 10, 10, 10));

    EXPECT_EQ(dealtOf(first()), 100);
    EXPECT_EQ(dealtOf(undealable()), 0);
    EXPECT_EQ(dealtOf(last()), 100);
    EXPECT_EQ(statusOf(undealable()), code(Quoted));
    EXPECT_EQ(tradeCount(), 2);
    EXPECT_EQ(ledger().holding(bank()).quantity(), 300);
    // with commission and transfer fee
    EXPECT_EQ(before - OrderBook(&ledger()).cash(), yuan(2 * (1000 + 5 + 0.01)));
}

TEST_F(DealingBesideAnUndealableOrder, GivesItsSharesToTheOthers)
{
    exchange().take(bar(1001, 10, 10, 10, 800)); // shares for two orders

    EXPECT_EQ(dealtOf(last()), 100);
}

TEST_F(DealingBesideAnUndealableOrder, NamesItWithTheReasonAndWhatToDoOnce)
{
    const LogCapture log;

    exchange().take(bar(1001, 10, 10, 10, 400));
    exchange().take(bar(1002, 10, 10, 10));
    exchange().take(bar(1003, 10, 10, 10));

    EXPECT_EQ(log.text().count(QStringLiteral("is set aside")), 1) << qPrintable(log.text());
    EXPECT_THAT(
        log.text().toStdString(),
        HasSubstr("order 2 (000001) is set aside, the others are not: the ledger's database refused"));
    EXPECT_THAT(log.text().toStdString(), HasSubstr("cancel it when it is not wanted any more"));
}

TEST_F(DealingBesideAnUndealableOrder, DealsNothingTwiceWhenTheBarComesAgain)
{
    exchange().take(bar(1001, 10, 10, 10));
    exchange().take(bar(1001, 10, 10, 10));

    EXPECT_EQ(tradeCount(), 2);
}

TEST_F(DealingBesideAnUndealableOrder, DealsItWithTheNextBarWhenItsCauseIsGone)
{
    exchange().take(bar(1001, 10, 10, 10));
    mend();
    const LogCapture log;

    exchange().take(bar(1002, 10, 10, 10));

    EXPECT_EQ(dealtOf(undealable()), 100);
    EXPECT_EQ(tradeCount(), 3);
    EXPECT_THAT(log.text().toStdString(), HasSubstr("order 2 (000001) is not set aside any more"));
}

TEST_F(DealingBesideAnUndealableOrder, LetsItBeCancelled)
{
    exchange().take(bar(1001, 10, 10, 10));

    exchange().cancel(undealable().date, undealable().number);
    exchange().settle();

    EXPECT_EQ(statusOf(undealable()), code(Canceled));
}

} // namespace TradeModule
