#include "trademodule/exchange/PaperExchange.h"
#include "tests/support/ByName.h"
#include "tests/support/LogCapture.h"
#include "tests/support/NearestTick.h"
#include "tests/trademodule/LedgerFixture.h"
#include "tradechartobject/common/TradeVocabulary.h"
#include "trademodule/Error.h"
#include "trademodule/exchange/TradingRules.h"

namespace TradeModule {

namespace {

using namespace TradeChart::OrderStatus;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

Money yuan(double value)
{
    return Money::ofYuan(value).value();
}

/// A bar of the bank's shares that ends at hhmm.
Quote bar(int hhmm, double open, double high, double low, qint64 volume = 1000000)
{
    Quote quote{bank(), TradingDate::today(), at(hhmm)};
    quote.open = yuan(open);
    quote.high = yuan(high);
    quote.low = yuan(low);
    quote.close = yuan(open);
    quote.volume = volume;
    return quote;
}

qint64 ticks(Money price)
{
    return price.steps() / TradingRules::tick.steps();
}

/// An exchange in the middle of a trading day: the first quote was 10.00 at 10:00.
class PaperExchangeOfADay : public LedgerFixture
{
protected:
    void SetUp() override
    {
        LedgerFixture::SetUp();
        if (IsSkipped()) {
            return;
        }
        m_exchange.emplace(&ledger(),
                           [this](const Order &order) { m_statuses.push_back(order.status.toStdString()); });
        exchange().take(bar(1000, 10, 10, 10));
    }

    PaperExchange &exchange() { return *m_exchange; }

    Order buy(double price, qint64 quantity)
    {
        return exchange().place(bank(), Direction::Buy, yuan(price), quantity);
    }

    Order sell(double price, qint64 quantity)
    {
        return exchange().place(bank(), Direction::Sell, yuan(price), quantity);
    }

    /// Shares that were there before today.
    void hold(qint64 quantity) { book({fill(Side::Buy, bank(), 20240102, 9, quantity)}); }

    Order now(const Order &order) { return OrderBook(&ledger()).find(order.date, order.number).value(); }
    QString statusOf(const Order &order) { return now(order).status; }

    std::string refusalOf(Direction direction, double price, qint64 quantity)
    {
        try {
            exchange().place(bank(), direction, yuan(price), quantity);
        } catch (const Error &error) {
            return error.what();
        }
        return "no refusal";
    }

    std::string refusalOfCancelling(TradingDate date, qint64 number)
    {
        try {
            exchange().cancel(date, number);
        } catch (const Error &error) {
            return error.what();
        }
        return "no refusal";
    }

    void setCash(double cash)
    {
        OrderBook orders(&ledger());
        Transaction transaction = orders.begin();
        orders.setCash(yuan(cash));
        transaction.commit();
    }

    std::vector<std::string> m_statuses; // as the charts were told

private:
    std::optional<PaperExchange> m_exchange;
};

QString code(const char *status)
{
    return QString::fromLatin1(status);
}

} // namespace

TEST_F(PaperExchangeOfADay, DealsABuyWhenTheBarReachesItsPrice)
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

TEST_F(PaperExchangeOfADay, DealsASellWhenTheBarReachesItsPrice)
{
    hold(1000);
    const Order order = sell(10.10, 1000);
    exchange().take(bar(1001, 10, 10.09, 10));
    EXPECT_EQ(statusOf(order), code(Quoted));

    exchange().take(bar(1002, 10, 10.10, 10));

    EXPECT_EQ(statusOf(order), code(Dealed));
    EXPECT_EQ(ledger().holding(bank()).quantity(), 0);
}

/// An order for 100 shares, the bar that follows, and what the order is dealt at; 0: it is not dealt.
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

class Touches : public PaperExchangeOfADay, public ::testing::WithParamInterface<Touch>
{
};

TEST_P(Touches, DecideWhetherAndAtWhatPriceAnOrderIsDealt)
{
    const Touch &touch = GetParam();
    hold(100);
    const Order order = touch.direction == Direction::Buy ? buy(touch.limit, 100) : sell(touch.limit, 100);

    exchange().take(bar(1001, touch.open, touch.high, touch.low));

    EXPECT_EQ(now(order).matchedAmount, yuan(touch.dealtAt * 100));
    EXPECT_EQ(statusOf(order), code(touch.dealtAt > 0 ? Dealed : Quoted));
}

INSTANTIATE_TEST_SUITE_P(
    Of, Touches,
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

TEST_F(PaperExchangeOfADay, DealsAtMostAQuarterOfTheVolumeInWholeLots)
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

TEST_F(PaperExchangeOfADay, SharesTheVolumeAmongOrdersTheOldestFirst)
{
    const Order first = buy(10, 200);
    const Order second = buy(10, 200);

    exchange().take(bar(1001, 10, 10, 10, 1200));

    EXPECT_EQ(now(first).matchedQuantity, 200);
    EXPECT_EQ(now(second).matchedQuantity, 100);
}

TEST_F(PaperExchangeOfADay, TakesTheFeesOnceForAnOrderInParts)
{
    buy(10, 1000);
    exchange().take(bar(1001, 10, 10, 10, 2000));
    exchange().take(bar(1002, 10, 10, 10, 2000));

    const double fees = 5 + 0.10; // commission at its least, transfer fee
    EXPECT_DOUBLE_EQ(OrderBook(&ledger()).cash().yuan(), 1000000 - 10000 - fees);
    EXPECT_DOUBLE_EQ(costPrice(bank()), (10000 + fees) / 1000);
}

TEST_F(PaperExchangeOfADay, CancelsAnOrderThatWaits)
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

TEST_F(PaperExchangeOfADay, CancelsTheRestOfAnOrderDealtInPart)
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

TEST_F(PaperExchangeOfADay, CancelsAtOnceWhatTheExchangeDoesNotKnowYet)
{
    const Order order = buy(10, 100);

    EXPECT_EQ(exchange().cancel(order.date, order.number).status, code(Canceled));
}

/// A status, and what a cancellation makes of it; null: it is refused.
struct Cancellation
{
    std::string name;
    const char *status;
    const char *becomes;
};

class Cancellations : public PaperExchangeOfADay, public ::testing::WithParamInterface<Cancellation>
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

TEST_P(Cancellations, AreTakenOrRefusedByTheStatusOfTheOrder)
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
    Of, Cancellations,
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
                      Cancellation{"AnAbolishedOrder", AbolishedOrder, nullptr}),
    ByName());

TEST_F(PaperExchangeOfADay, DoesNotCancelWhatIsNotThere)
{
    const Order order = buy(10, 100);

    EXPECT_EQ(refusalOfCancelling(order.date, 4711), "there is no order 4711 of " + order.date.digits());
    EXPECT_EQ(refusalOfCancelling(day(20240102), order.number), "there is no order 1 of 20240102");
    EXPECT_EQ(statusOf(order), code(Quoting));
    EXPECT_THAT(m_statuses, ElementsAre(Quoting));
}

TEST_F(PaperExchangeOfADay, TakesAnOrderThatAnotherProcessLeft)
{
    const Order order = PaperExchange(&ledger()).leave(bank(), Direction::Buy, yuan(10), 100);
    EXPECT_EQ(order.status, code(None));

    exchange().settle();
    EXPECT_EQ(statusOf(order), code(Quoting));
    exchange().take(bar(1001, 10, 10, 10));

    EXPECT_EQ(statusOf(order), code(Dealed));
    EXPECT_THAT(m_statuses, ElementsAre(Quoting, Quoted, Dealed));
}

TEST_F(PaperExchangeOfADay, LetsAnOrderThatWasLeftInClosedHoursWait)
{
    exchange().take(bar(1145, 10, 10, 10));
    const Order order = PaperExchange(&ledger()).leave(bank(), Direction::Buy, yuan(10), 100);

    exchange().settle();

    EXPECT_EQ(statusOf(order), code(WaittingQuote));
}

TEST_F(PaperExchangeOfADay, DealsNothingThatIsBeingCancelled)
{
    const Order order = buy(9.90, 100);
    exchange().settle();
    exchange().cancel(order.date, order.number);

    exchange().take(bar(1001, 9.90, 9.90, 9.90));

    EXPECT_EQ(statusOf(order), code(Canceled));
}

TEST_F(PaperExchangeOfADay, KeepsOrdersOfClosedHoursUntilItOpens)
{
    exchange().take(bar(1145, 10, 10, 10));
    const Order order = buy(10, 100);
    EXPECT_EQ(order.status, code(WaittingQuote));
    exchange().settle();
    EXPECT_EQ(statusOf(order), code(WaittingQuote));

    exchange().take(bar(1301, 10.5, 10.5, 10.5));

    EXPECT_EQ(statusOf(order), code(Quoted));
}

TEST_F(PaperExchangeOfADay, AbolishesAnOrderBeyondTheDaysLimits)
{
    const Order high = buy(11.01, 100);
    const Order atLimit = buy(11.00, 100);

    exchange().settle();

    EXPECT_EQ(statusOf(high), code(AbolishedOrder));
    EXPECT_EQ(statusOf(atLimit), code(Quoted));
}

TEST_F(PaperExchangeOfADay, GoesByTheCloseBeforeWhenAQuoteTellsIt)
{
    Quote telling = bar(1001, 10, 10, 10);
    telling.previousClose = yuan(9.50);
    exchange().take(telling);
    exchange().take(bar(1002, 10, 10, 10)); // tells nothing, so nothing changes

    const Order high = buy(10.46, 100); // the highest is 10.45
    exchange().settle();

    EXPECT_EQ(statusOf(high), code(AbolishedOrder));
}

TEST_F(PaperExchangeOfADay, GoesByTheSameCloseAfterARestart)
{
    PaperExchange afterwards(&ledger());
    afterwards.take(bar(1301, 10.80, 10.80, 10.80)); // no open of the day

    const Order high = afterwards.place(bank(), Direction::Buy, yuan(11.01), 100);
    afterwards.settle();

    EXPECT_EQ(statusOf(high), code(AbolishedOrder));
}

TEST_F(PaperExchangeOfADay, GoesByTheFirstOpenOfTheDayThatIsPlayedNow)
{
    exchange().take(bar(931, 20, 20, 20));

    const Order order = buy(19, 100);
    exchange().settle();

    EXPECT_EQ(statusOf(order), code(Quoted));
}

TEST_F(PaperExchangeOfADay, NoticesAfterARestartThatAnotherDayIsPlayed)
{
    exchange().settle();
    PaperExchange afterwards(&ledger());
    afterwards.take(bar(931, 20, 20, 20));

    const Order order = afterwards.place(bank(), Direction::Buy, yuan(19), 100);
    afterwards.settle();

    EXPECT_EQ(statusOf(order), code(Quoted));
}

TEST_F(PaperExchangeOfADay, KnowsItsClockAfterARestart)
{
    exchange().take(bar(1017, 10, 10, 10));
    exchange().settle();

    const Order order = PaperExchange(&ledger()).place(bank(), Direction::Buy, yuan(10), 100);

    EXPECT_EQ(order.time, at(1017));
    EXPECT_EQ(order.status, code(Quoting));
}

TEST_F(PaperExchangeOfADay, ForgetsTheMarketOfAnotherDay)
{
    exchange().settle();
    for (const char *table : {"exchange_clock", "price_reference"}) {
        Database(location()).run(QStringLiteral("UPDATE %1 SET quote_date = 20240102").arg(code(table)));
    }

    MarketDay market(&ledger());

    EXPECT_EQ(market.clock(), std::nullopt);
    EXPECT_EQ(market.reference(bank()), std::nullopt);
}

TEST_F(PaperExchangeOfADay, LeavesQuotesOfOtherDaysAloneAndSaysSoOnce)
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

TEST_F(PaperExchangeOfADay, LetsOrdersOfPastDaysEnd)
{
    const Order order = buy(9.50, 100);
    exchange().settle();
    Database(location()).run(QStringLiteral("UPDATE trade_order SET order_date = 20240102"));

    exchange().settle();

    EXPECT_EQ(OrderBook(&ledger()).find(day(20240102), order.number)->status, code(Canceled));
}

TEST_F(PaperExchangeOfADay, RefusesOddLotsButSellsAnOddRest)
{
    book({fill(Side::Bonus, bank(), 20240102, 0, 130)});

    EXPECT_THAT(refusalOf(Direction::Buy, 10, 150), HasSubstr("multiple of 100"));
    EXPECT_THAT(refusalOf(Direction::Sell, 10, 50), HasSubstr("multiple of 100"));
    EXPECT_EQ(refusalOf(Direction::Sell, 10, 130), "no refusal");
}

TEST_F(PaperExchangeOfADay, RefusesPricesBetweenTicks)
{
    EXPECT_THAT(refusalOf(Direction::Buy, 10.005, 100), HasSubstr("0.01"));
}

TEST_F(PaperExchangeOfADay, RefusesToSellMoreThanIsHeldAndNotOnOffer)
{
    hold(500);
    sell(10.50, 300);

    EXPECT_THAT(refusalOf(Direction::Sell, 10, 300), HasSubstr("200 shares may be sold"));
    EXPECT_EQ(refusalOf(Direction::Sell, 10, 200), "no refusal");
}

TEST_F(PaperExchangeOfADay, RefusesToSellWhatWasBoughtToday)
{
    hold(100);
    buy(10, 400);
    exchange().take(bar(1001, 10, 10, 10));
    ASSERT_EQ(ledger().holding(bank()).quantity(), 500);

    EXPECT_THAT(refusalOf(Direction::Sell, 10, 200), HasSubstr("100 shares may be sold"));
}

TEST_F(PaperExchangeOfADay, RefusesToBuyForMoreThanTheCashThatIsFree)
{
    setCash(10000);
    EXPECT_THAT(refusalOf(Direction::Buy, 10, 1000), HasSubstr("needs 10005.10 yuan"));

    buy(5, 1000);

    EXPECT_THAT(refusalOf(Direction::Buy, 10, 500), HasSubstr("there are 4994.95"));
}

TEST_F(PaperExchangeOfADay, RefusesOrdersOfMoreThanAnyAccountHas)
{
    EXPECT_THAT(refusalOf(Direction::Buy, 1000000.01, 100),
                HasSubstr("the price must be at most 1000000.00"));
    EXPECT_THAT(refusalOf(Direction::Buy, 10, 1000000100),
                HasSubstr("the quantity must be at most 1000000000"));
    EXPECT_THAT(refusalOf(Direction::Buy, 1000000, 1000000000),
                HasSubstr("price × quantity must be at most"));
}

TEST_F(PaperExchangeOfADay, DealsNothingAtABetterPriceThatComesToMoreThanAnyAccountHas)
{
    book({fill(Side::Bonus, bank(), 20240102, 0, 1000000000)});
    const Order order = sell(10, 1000000000);
    Quote quote = bar(1001, 1000, 1000, 1000); // 10^12 yuan
    quote.volume = 4000000000;

    EXPECT_THROW(exchange().take(quote), Error);

    EXPECT_EQ(now(order).matchedQuantity, 0);
    EXPECT_EQ(OrderBook(&ledger()).cash(), yuan(1000000));
    EXPECT_THAT(ledger().trades(DateRange()), IsEmpty());
}

TEST_F(PaperExchangeOfADay, DealsNothingThatWouldGiveTheAccountMoreThanItCanHold)
{
    hold(100);
    setCash(1e11);
    const Order order = sell(10, 100);

    EXPECT_THROW(exchange().take(bar(1001, 10, 10, 10)), Error);

    EXPECT_EQ(now(order).matchedQuantity, 0);
    EXPECT_EQ(OrderBook(&ledger()).cash(), yuan(1e11));
}

TEST_F(PaperExchangeOfADay, LeavesNothingOfARefusedOrder)
{
    refusalOf(Direction::Buy, 10, 150);
    refusalOf(Direction::Sell, 10, 100);

    EXPECT_THAT(OrderBook(&ledger()).ofDay(TradingDate::today()), IsEmpty());
    EXPECT_THAT(m_statuses, IsEmpty());
}

TEST_F(PaperExchangeOfADay, DealsTheOrdersOfBeforeARestart)
{
    const Order order = buy(10, 100);
    PaperExchange afterwards(&ledger());

    afterwards.take(bar(1001, 10, 10, 10));

    EXPECT_EQ(statusOf(order), code(Dealed));
}

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
