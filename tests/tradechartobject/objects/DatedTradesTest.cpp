// The walk of dated trades over the bars and the choice of the trades behind a click: trades as a
// trading module with times would send them.
#include "tests/support/ByName.h"
#include "tests/support/FakeHost.h"

#include "tradechartobject/objects/CChartTradeObject_p.h"

#include <gmock/gmock.h>

#include <array>

using ::testing::ElementsAre;
using namespace TradeChart;

namespace {

trade_cj buy(std::int64_t time, double price)
{
    return {true, time, price, 100};
}

trade_cj sell(std::int64_t time, double price)
{
    return {false, time, price, 100};
}

struct Marks
{
    explicit Marks(std::size_t count) : buys(count, unmarked), sells(buys), both(buys) {}

    TradeMarks borrowed() { return {buys, sells, both}; }

    std::vector<double> buys;
    std::vector<double> sells;
    std::vector<double> both;
};

struct Walk
{
    const char *name;
    std::vector<std::int64_t> barTimes; ///< every bar closes at 10
    std::vector<trade_cj> trades;
    const char *above; ///< per bar: B, S, D for buy and sell apart, T for both in one, - for none
    const char *below;
};

class DatedTradesWalk : public ::testing::TestWithParam<Walk>
{
protected:
    static std::string letters(const Marks &marks)
    {
        std::string text;
        for (std::size_t bar = 0; bar < marks.both.size(); ++bar) {
            const bool bought = isMarked(marks.buys, static_cast<int>(bar));
            const bool sold = isMarked(marks.sells, static_cast<int>(bar));
            const bool both = isMarked(marks.both, static_cast<int>(bar));
            text += both ? (bought || sold ? '?' : 'T') : bought ? (sold ? 'D' : 'B') : sold ? 'S' : '-';
        }
        return text;
    }
};

TEST_P(DatedTradesWalk, MarksTheBars)
{
    const std::size_t count = GetParam().barTimes.size();
    const std::vector<Korvane::AnalyData> bars(count, makeDayBar(20240102, 9, 11, 10));
    Marks above(count);
    Marks below(count);
    markTrades(GetParam().trades, {bars.data(), GetParam().barTimes.data(), count}, above.borrowed(),
               below.borrowed());
    EXPECT_EQ(letters(above), GetParam().above);
    EXPECT_EQ(letters(below), GetParam().below);
}

INSTANTIATE_TEST_SUITE_P(
    Trades, DatedTradesWalk,
    ::testing::Values(
        Walk{"OfNoTrades", {100, 200}, {}, "--", "--"}, Walk{"OverNoBars", {}, {buy(1, 10)}, "", ""},
        Walk{"OntoTheBarThatEndsAtTheirTime", {100, 200, 300}, {buy(200, 10)}, "-B-", "---"},
        Walk{"OntoTheBarThatEndsAfterTheirTime", {100, 200, 300}, {sell(101, 9)}, "---", "-S-"},
        Walk{"OntoTheFirstBarWhenTheyAreEarlier", {100, 200}, {buy(1, 10)}, "B-", "--"},
        Walk{"PastTheLastBar", {100, 200}, {buy(201, 10)}, "--", "--"},
        Walk{"UntilATradeIsPastTheLastBar",
             {100, 200},
             {buy(100, 10), sell(100, 11), buy(300, 10), sell(200, 10)},
             "T-",
             "--"},
        Walk{"OverBarsWithoutTrades", {100, 200, 300, 400}, {buy(50, 10), sell(350, 9)}, "B---", "---S"},
        Walk{"MergingTheSidesOfABarThatIsLeft",
             {100, 200, 300},
             {buy(100, 10), sell(100, 11), buy(150, 9)},
             "T--",
             "-B-"},
        Walk{"MergingBelowAsAbove",
             {100, 200, 300},
             {buy(100, 9), sell(100, 9), buy(100, 11), sell(101, 9)},
             "B--",
             "TS-"},
        Walk{"KeepingTheSidesOfTheLastTradedBarApart",
             {100, 200, 300},
             {buy(100, 10), sell(150, 10), buy(151, 11), buy(152, 9), sell(153, 9)},
             "BD-",
             "-D-"},
        Walk{
            "NeverMergingAcrossTheClose", {100, 200}, {buy(100, 10), sell(100, 9), buy(200, 10)}, "BB", "S-"},
        Walk{"NotGoingBackForAnEarlierTrade", {100, 200}, {buy(150, 10), sell(50, 10)}, "-D", "--"},
        Walk{"SkippingBarsThatStepBack", {100, 50, 200}, {buy(100, 10), buy(150, 10)}, "B-B", "---"}),
    ByName());

TEST(DatedTrades, TakeACloseThatIsNoNumberAsReached)
{
    const std::vector<Korvane::AnalyData> bars = {makeDayBar(20240102, 9, 11, unmarked)};
    const std::int64_t time = 100;
    Marks above(1);
    Marks below(1);
    markTrades({buy(100, 1)}, {bars.data(), &time, 1}, above.borrowed(), below.borrowed());
    EXPECT_EQ(above.buys[0], 1.0);
}

std::vector<std::int64_t> timesOf(const std::vector<trade_cj> &trades)
{
    std::vector<std::int64_t> times;
    for (const trade_cj &trade : trades) {
        times.push_back(trade.matchTime);
    }
    return times;
}

/// Trades around a midnight, out of order.
const std::vector<trade_cj> aroundMidnight = {buy(20240103000001, 10), buy(20240102235959, 10),
                                              sell(20240103000000, 10), buy(0, 10), sell(20240104093000, 10)};

TEST(DatedTrades, AreDroppedFromTheBeginOfTodayOn)
{
    std::vector<trade_cj> trades = aroundMidnight;
    dropTodays(trades, 20240103);
    EXPECT_THAT(timesOf(trades), ElementsAre(20240102235959, 0));
}

TEST(DatedTrades, AreDroppedBeforeToday)
{
    std::vector<trade_cj> trades = aroundMidnight;
    dropPast(trades, 20240103);
    EXPECT_THAT(timesOf(trades), ElementsAre(20240103000001, 20240103000000, 20240104093000));
}

struct Click
{
    const char *name;
    ClickedMarker marker;
    trade_cj trade;
    bool isListed;
};

class DatedTradesClick : public ::testing::TestWithParam<Click>
{
};

TEST_P(DatedTradesClick, ListsTheTradesBehindTheMarker)
{
    EXPECT_EQ(isListed(GetParam().trade, GetParam().marker), GetParam().isListed);
}

constexpr ClickedMarker clicked(TradeMarker kind, bool isAbove)
{
    return {kind, isAbove, 10.0, 100, 200};
}

INSTANTIATE_TEST_SUITE_P(
    Clicks, DatedTradesClick,
    ::testing::Values(Click{"AtTheEndOfTheBarBefore", clicked(TradeMarker::Both, true), buy(100, 10), true},
                      Click{"AtTheEndOfTheBar", clicked(TradeMarker::Both, true), buy(200, 10), true},
                      Click{"BeforeTheBar", clicked(TradeMarker::Both, true), buy(99, 10), false},
                      Click{"AfterTheBar", clicked(TradeMarker::Both, true), buy(201, 10), false},
                      Click{"SellsBehindBoth", clicked(TradeMarker::Both, true), sell(150, 10), true},
                      Click{"SellsBehindSells", clicked(TradeMarker::Sells, true), sell(150, 10), true},
                      Click{"NoBuysBehindSells", clicked(TradeMarker::Sells, true), buy(150, 10), false},
                      Click{"BuysBehindBuys", clicked(TradeMarker::Buys, false), buy(150, 9.99), true},
                      Click{"NoSellsBehindBuys", clicked(TradeMarker::Buys, false), sell(150, 9.99), false},
                      Click{"NothingWithoutAMarker", clicked(TradeMarker::None, true), buy(150, 10), false},
                      Click{"NoneBelowTheCloseAbove", clicked(TradeMarker::Both, true), buy(150, 9.99),
                            false},
                      Click{"NoneAtTheCloseBelow", clicked(TradeMarker::Both, false), buy(150, 10), false}),
    ByName());

TEST(DatedTrades, AtTheEndOfABarAreListedOnTheNextBarToo)
{
    const trade_cj trade = buy(200, 10);
    EXPECT_TRUE(isListed(trade, {TradeMarker::Buys, true, 10, 100, 200}));
    EXPECT_TRUE(isListed(trade, {TradeMarker::Buys, true, 10, 200, 300}));
}

TEST(DatedTrades, ShowTheMarkerOfBothSidesFirstThenBuys)
{
    Marks marks(4);
    marks.both[0] = marks.buys[0] = marks.sells[0] = marked;
    marks.buys[1] = marks.sells[1] = marked;
    marks.sells[2] = marked;
    EXPECT_EQ(markerOn(marks.borrowed(), 0), TradeMarker::Both);
    EXPECT_EQ(markerOn(marks.borrowed(), 1), TradeMarker::Buys);
    EXPECT_EQ(markerOn(marks.borrowed(), 2), TradeMarker::Sells);
    EXPECT_EQ(markerOn(marks.borrowed(), 3), TradeMarker::None);
    EXPECT_EQ(markerOn(marks.borrowed(), 4), TradeMarker::None);
    EXPECT_EQ(markerOn(marks.borrowed(), -1), TradeMarker::None);
}

} // namespace
