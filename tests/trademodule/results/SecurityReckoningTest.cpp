#include "tests/trademodule/results/ReckoningTest.h"

#include "trademodule/Error.h"

#include <random>

namespace TradeModule {

namespace {

constexpr CostMethod allMethods[] = {CostMethod::Average, CostMethod::Diluted, CostMethod::Fifo};

/// The day of the n-th event, counted from 0.
TradingDate dayOf(int n)
{
    return TradingDate::first().plusDays(n);
}

/// Trades of which no more is sold than is held, with odd fees and quantities and now and then nothing left.
AccountEvents randomEvents(unsigned seed, int count)
{
    std::mt19937 random(seed);
    const auto upTo = [&random](qint64 most) {
        return static_cast<qint64>(random() % static_cast<unsigned>(most)) + 1;
    };
    AccountEvents events;
    qint64 held = 0;
    while (static_cast<int>(events.size()) < count) {
        const double price = static_cast<double>(upTo(100000)) / 1000;
        const double fee = static_cast<double>(upTo(9999)) / 100;
        if (held == 0 || upTo(5) < 3) {
            events.push_back(buy(upTo(977), price, fee));
            held += events.back().quantity;
        } else if (upTo(10) == 1) {
            events.push_back(bonus(upTo(100)));
            held += events.back().quantity;
        } else {
            events.push_back(sell(upTo(4) == 1 ? held : upTo(held), price, fee));
            held -= events.back().quantity;
        }
    }
    return events;
}

Money paidIn(const AccountEvents &events)
{
    Money paid;
    for (const AccountEvent &event : events) {
        paid = event.kind == EventKind::Buy ? paid + event.amount + event.fee : paid;
    }
    return paid;
}

} // namespace

TEST(SecurityReckoning, LosesNoStepOfMoneyWhateverIsTraded)
{
    for (const CostMethod method : allMethods) {
        for (unsigned seed = 0; seed < 50; ++seed) {
            const AccountEvents events = randomEvents(seed, 400);
            const Reckoned reckoned(method, events);

            const Money held = reckoned.reckoning.shares().basis().cost();
            EXPECT_EQ((reckoned.booked.cost + held).digits(), paidIn(events).digits()) << seed;
        }
    }
}

TEST(SecurityReckoning, KeepsTheBooksWithinACentOfTheUnroundedAverage)
{
    for (unsigned seed = 0; seed < 50; ++seed) {
        const Reckoned reckoned(CostMethod::Average, randomEvents(seed, 2000));
        const CostBasis &basis = reckoned.reckoning.shares().basis();
        EXPECT_NEAR(basis.cost().yuan(), basis.exactCost(), 0.0051) << seed;
    }
}

TEST(SecurityReckoning, EarnsTheSameInARoundTripByEveryMethod)
{
    const AccountEvents events = randomEvents(7, 1000);
    const Reckoned average(CostMethod::Average, events);
    for (const CostMethod method : {CostMethod::Diluted, CostMethod::Fifo}) {
        const Reckoned other(method, events);
        ASSERT_EQ(other.trips.size(), average.trips.size());
        for (std::size_t i = 0; i < average.trips.size(); ++i) {
            if (average.trips[i].closed) {
                EXPECT_EQ(other.trips[i].figures.profit, average.trips[i].figures.profit) << i;
            }
        }
    }
    EXPECT_GT(average.trips.size(), 20U);
}

TEST(SecurityReckoning, TellsSalesTripsAndDaysThatComeToTheSameSum)
{
    for (const CostMethod method : allMethods) {
        const Reckoned reckoned(method, randomEvents(3, 1000));
        Money ofSales;
        for (const Sale &sale : reckoned.sales) {
            ofSales = ofSales + sale.profit;
        }
        Figures ofTrips;
        for (const Trip &trip : reckoned.trips) {
            ofTrips += trip.figures;
        }
        EXPECT_EQ(ofSales, reckoned.booked.profit);
        EXPECT_EQ(ofTrips.profit, reckoned.booked.profit);
        EXPECT_EQ(ofTrips.fees, reckoned.booked.fees);
        EXPECT_EQ(ofTrips.bought, reckoned.booked.bought);
        EXPECT_EQ(ofTrips.sales, reckoned.booked.sales);
    }
}

TEST(SecurityReckoning, TellsARoundTripFromTheFirstShareToTheLast)
{
    const Reckoned reckoned(CostMethod::Average, {buy(100, 10, 5), buy(100, 12, 5), sell(150, 11, 5),
                                                  sell(50, 13, 5), buy(100, 9)});

    ASSERT_EQ(reckoned.trips.size(), 2U);
    const Trip &closed = reckoned.trips[0];
    EXPECT_EQ(closed.opened, dayOf(0));
    EXPECT_EQ(closed.closed, dayOf(3));
    EXPECT_EQ(closed.quantityIn, 200);
    EXPECT_EQ(closed.quantityOut, 200);
    EXPECT_EQ(closed.figures.fees.digits(), "20.00");
    EXPECT_EQ(closed.figures.profit.digits(), "80.00"); // 1645 + 645 - 2210
    const Trip &open = reckoned.trips[1];
    EXPECT_EQ(open.opened, dayOf(4));
    EXPECT_EQ(open.closed, std::nullopt);
}

TEST(SecurityReckoning, CountsTheTaxAfterTheLastSaleToItsRoundTrip)
{
    const Reckoned reckoned(CostMethod::Average,
                            {buy(100, 10), dividend(30), sell(100, 11), tax(3), buy(100, 9)});

    ASSERT_EQ(reckoned.trips.size(), 2U);
    EXPECT_EQ(reckoned.trips[0].closed, dayOf(2));
    EXPECT_EQ(reckoned.trips[0].figures.taxes.digits(), "3.00");
    EXPECT_EQ(reckoned.trips[0].figures.total().digits(), "127.00");
    EXPECT_EQ(reckoned.trips[1].figures.total().digits(), "0.00");
}

TEST(SecurityReckoning, CountsASaleOfWhatNeverCameInToNoRoundTrip)
{
    const Reckoned reckoned(CostMethod::Average, {buy(100, 10), sell(100, 11), sell(100, 12, 5)});

    ASSERT_EQ(reckoned.trips.size(), 1U);
    EXPECT_EQ(reckoned.trips[0].figures.sales, 1);
    EXPECT_EQ(reckoned.booked.sales, 2);
    EXPECT_EQ(reckoned.sales[1].unexplained, 100);
}

TEST(SecurityReckoning, TakesMoneyWithoutShares)
{
    const Reckoned reckoned(CostMethod::Diluted, {event(EventKind::Interest, 0, yuan(1.23)), dividend(5)});

    EXPECT_TRUE(reckoned.trips.empty());
    EXPECT_EQ(reckoned.booked.interest.digits(), "1.23");
    EXPECT_EQ(reckoned.booked.total().digits(), "6.23");
}

TEST(SecurityReckoning, TellsWhatASaleBroughtAndTook)
{
    const Reckoned reckoned(CostMethod::Average, {buy(100, 10, 5), sell(100, 11, 5.55)});

    ASSERT_EQ(reckoned.sales.size(), 1U);
    const Sale &sale = reckoned.sales[0];
    EXPECT_EQ(sale.date, dayOf(1));
    EXPECT_EQ(sale.price.digits(), "11.00");
    EXPECT_EQ(sale.quantity, 100);
    EXPECT_EQ(sale.amount.digits(), "1100.00");
    EXPECT_EQ(sale.fee.digits(), "5.55");
    EXPECT_EQ(sale.cost.digits(), "1005.00");
}

TEST(SecurityReckoning, RefusesSumsThatCannotBeHeld)
{
    const AccountEvent huge = event(EventKind::Buy, 1, Money::limit());

    EXPECT_THROW(Reckoned(CostMethod::Average, AccountEvents(10000, huge)), Error);
}

} // namespace TradeModule
