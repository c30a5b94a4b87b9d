#include "tests/support/ByName.h"

#include "tradechartobject/common/EntrustInfo.h"
#include "tradechartobject/common/OrderMarks.h"

#include <gmock/gmock.h>

#include <QStringList>

#include <limits>
#include <tuple>

using namespace TradeChart;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Pair;

namespace {

EntrustInfo makeOrder(bool isBuy, const QString &status, double price = 10.0)
{
    EntrustInfo order{};
    order.isBuy = isBuy;
    order.orderStatus = status;
    order.orderPrice = price;
    return order;
}

// Price keys

struct PriceAndKey
{
    const char *name;
    double price;
    std::int64_t key;
};

class OrderMarksPriceKey : public ::testing::TestWithParam<PriceAndKey>
{
};

TEST_P(OrderMarksPriceKey, CountsWholeThousandthsOfTheRoundedPrice)
{
    EXPECT_EQ(priceKey(GetParam().price), GetParam().key);
}

INSTANTIATE_TEST_SUITE_P(
    Prices, OrderMarksPriceKey,
    ::testing::Values(PriceAndKey{"Plain", 10.0, 10000}, PriceAndKey{"RoundedDown", 10.1234, 10123},
                      PriceAndKey{"RoundedUp", 10.1226, 10123},
                      PriceAndKey{"CutOffBelowAThousandth", 1.001, 1000}, PriceAndKey{"Zero", 0.0, 0},
                      PriceAndKey{"Negative", -10.1226, -10123},
                      PriceAndKey{"NegativeCutOffTowardsZero", -1.001, -1000},
                      PriceAndKey{"HalfToEven", 0.0625, 62}, PriceAndKey{"Vast", 9.1e15, 9100000000000000000},
                      PriceAndKey{"Largest", 9223372036854774.0, 9223372036854773760},
                      PriceAndKey{"TooLargeByOne", 9223372036854776.0, 0},
                      PriceAndKey{"Smallest", -9223372036854776.0, std::numeric_limits<std::int64_t>::min()},
                      PriceAndKey{"TooSmallByOne", -9223372036854778.0, 0}, PriceAndKey{"TooLarge", 1e300, 0},
                      PriceAndKey{"TooSmall", -1e300, 0},
                      PriceAndKey{"Infinite", std::numeric_limits<double>::infinity(), 0},
                      PriceAndKey{"NotANumber", std::numeric_limits<double>::quiet_NaN(), 0}),
    ByName());

TEST(OrderMarksPriceKey, StandsForItsPriceInThousandths)
{
    EXPECT_EQ(keyPrice(10123), 10.123);
    EXPECT_EQ(keyPrice(1000), 1.0);
    EXPECT_EQ(keyPrice(-1), -0.001);
}

// One order after another

struct Status
{
    const char *name;
    const char *code;
    int buys;  ///< the marker of the first buy at a price; nothing for none
    int sells; ///< and of the first sell
};

constexpr int nothing = 0;

const Status statuses[] = {{"NotReported", "0", 20, 23},
                           {"Quoting", "1", 20, 23},
                           {"Quoted", "2", 20, 23},
                           {"QuotedWaitingForCancel", "3", nothing, nothing},
                           {"PartDealtWaitingForCancel", "4", 21, 24},
                           {"PartCancelled", "5", 21, 24},
                           {"Cancelled", "6", nothing, nothing},
                           {"PartDealt", "7", 21, 24},
                           {"Dealt", "8", 22, 25},
                           {"Abolished", "9", nothing, nothing},
                           {"WaitingToQuote", "A", 20, 23},
                           {"QuotingB", "B", nothing, nothing},
                           {"Confirmed", "G", nothing, nothing},
                           {"WaitingToQuoteInSmallLetter", "a", nothing, nothing},
                           {"DealtWithABlank", "8 ", nothing, nothing},
                           {"WaitingBehindABlank", " 2", nothing, nothing},
                           {"Unknown", "Z", nothing, nothing},
                           {"Empty", "", nothing, nothing}};

/// The marker at 10 after an order, by the marker before it.
int markerAfter(bool isBuy, const char *status, int before)
{
    std::map<std::int64_t, int> marks;
    if (before != nothing) {
        marks[10000] = before;
    }
    addOrder(makeOrder(isBuy, QString::fromLatin1(status)), marks);
    return marks.empty() ? nothing : marks[10000];
}

class OrderMarksOfStatus : public ::testing::TestWithParam<Status>
{
};

TEST_P(OrderMarksOfStatus, StandAloneAtAPrice)
{
    EXPECT_EQ(markerAfter(true, GetParam().code, nothing), GetParam().buys);
    EXPECT_EQ(markerAfter(false, GetParam().code, nothing), GetParam().sells);
}

INSTANTIATE_TEST_SUITE_P(Statuses, OrderMarksOfStatus, ::testing::ValuesIn(statuses), ByName());

/// What the orders of one side and group make of the markers that stand at their price.
struct Transitions
{
    const char *name;
    bool isBuy;
    const char *statuses; ///< one letter each
    int after[7];         ///< by the marker before
};

constexpr int before[7] = {nothing, 20, 21, 22, 23, 24, 25};

constexpr Transitions transitions[] = {
    {"PartDealtBuy", true, "754", {21, 21, 21, 21, 21, 21, 21}},
    {"WaitingBuy", true, "01A2", {20, 20, 21, 21, 23, 24, 25}},
    {"DealtBuy", true, "8", {22, 21, 21, 22, 23, 24, 25}},
    {"OtherBuy", true, "369BGaZ", {nothing, 20, 21, 22, 23, 24, 25}},
    {"PartDealtSell", false, "754", {24, 24, 24, 24, 24, 24, 24}},
    {"WaitingSell", false, "01A2", {23, 20, 21, 22, 23, 24, 21}},
    {"DealtSell", false, "8", {25, 20, 21, 22, 21, 24, 25}},
    {"OtherSell", false, "369BGaZ", {nothing, 20, 21, 22, 23, 24, 25}},
};

class OrderMarksOf : public ::testing::TestWithParam<std::tuple<Transitions, std::size_t>>
{
};

TEST_P(OrderMarksOf, BecomeThisMarker)
{
    const auto &[orders, column] = GetParam();
    for (const char *status = orders.statuses; *status != '\0'; ++status) {
        const char code[] = {*status, '\0'};
        EXPECT_EQ(markerAfter(orders.isBuy, code, before[column]), orders.after[column]) << "status " << code;
    }
}

std::string nameOf(const ::testing::TestParamInfo<std::tuple<Transitions, std::size_t>> &row)
{
    const auto &[orders, column] = row.param;
    return std::string(orders.name) + "On" + std::to_string(before[column]);
}

INSTANTIATE_TEST_SUITE_P(Markers, OrderMarksOf,
                         ::testing::Combine(::testing::ValuesIn(transitions),
                                            ::testing::Range<std::size_t>(0, std::size(before))),
                         nameOf);

struct Sequence
{
    const char *name;
    const char *orders; ///< side and status of each, parted by blanks
    int kind;
};

class OrderMarksOfSequence : public ::testing::TestWithParam<Sequence>
{
};

TEST_P(OrderMarksOfSequence, EndAsThisMarker)
{
    std::map<std::int64_t, int> marks;
    const QStringList orders = QString::fromLatin1(GetParam().orders).split(QLatin1Char(' '));
    for (const QString &order : orders) {
        addOrder(makeOrder(order[0] == QLatin1Char('B'), order.mid(1)), marks);
    }
    EXPECT_THAT(marks, ElementsAre(Pair(10000, GetParam().kind)));
}

INSTANTIATE_TEST_SUITE_P(Sequences, OrderMarksOfSequence,
                         ::testing::Values(Sequence{"WaitingBuyThenDealtBuy", "B2 B8", 21},
                                           Sequence{"DealtBuyThenWaitingBuy", "B8 B2", 21},
                                           Sequence{"WaitingSellThenDealtSell", "S2 S8", 21},
                                           Sequence{"DealtSellThenWaitingSell", "S8 S2", 21},
                                           Sequence{"WaitingBuyThenWaitingSell", "B2 S2", 20},
                                           Sequence{"WaitingSellThenWaitingBuy", "S2 B2", 23},
                                           Sequence{"WaitingBuyThenDealtSell", "B2 S8", 20},
                                           Sequence{"DealtSellThenWaitingBuy", "S8 B2", 25},
                                           Sequence{"WaitingBuyThenPartDealtSell", "B2 S7", 24},
                                           Sequence{"PartDealtSellThenPartDealtBuy", "S7 B5", 21},
                                           Sequence{"MixedSellsThenWaitingSell", "S2 S8 S2", 21},
                                           Sequence{"MixedBuysThenPartDealtSell", "B2 B8 S4", 24},
                                           Sequence{"CancelledThenDealtBuy", "B6 B8", 22},
                                           Sequence{"DealtBuyThenCancelled", "B8 B6", 22}),
                         ByName());

TEST(OrderMarks, KeepEachPriceApart)
{
    std::map<std::int64_t, int> marks;
    addOrder(makeOrder(true, QStringLiteral("2"), 10.1), marks);
    addOrder(makeOrder(false, QStringLiteral("8"), 10.2), marks);
    addOrder(makeOrder(true, QStringLiteral("8"), 10.1234), marks);
    addOrder(makeOrder(true, QStringLiteral("2"), 10.1226), marks);
    EXPECT_THAT(marks, ElementsAre(Pair(10100, 20), Pair(10123, 21), Pair(10200, 25)));
}

TEST(OrderMarks, MakeNoneForStatusesWithoutAGroup)
{
    std::map<std::int64_t, int> marks;
    for (const char *status : {"3", "6", "9", "B", "G"}) {
        addOrder(makeOrder(true, QString::fromLatin1(status)), marks);
    }
    EXPECT_THAT(marks, IsEmpty());
}

} // namespace
