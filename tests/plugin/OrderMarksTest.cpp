#include "tests/support/ByName.h"

#include "tradechartobject/common/EntrustInfo.h"
#include "tradechartobject/common/OrderMarks.h"

#include <gmock/gmock.h>

#include <QStringList>

#include <limits>

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

class PriceKey : public ::testing::TestWithParam<PriceAndKey>
{
};

TEST_P(PriceKey, CountsWholeThousandthsOfTheRoundedPrice)
{
    EXPECT_EQ(priceKey(GetParam().price), GetParam().key);
}

INSTANTIATE_TEST_SUITE_P(
    Prices, PriceKey,
    ::testing::Values(PriceAndKey{"Plain", 10.0, 10000}, PriceAndKey{"RoundedDown", 10.1234, 10123},
                      PriceAndKey{"RoundedUp", 10.1226, 10123},
                      PriceAndKey{"CutOffBelowAThousandth", 1.001, 1000}, PriceAndKey{"Zero", 0.0, 0},
                      PriceAndKey{"Negative", -10.1226, -10123}, PriceAndKey{"HalfToEven", 0.0625, 62},
                      PriceAndKey{"TooLarge", 1e300, 0}, PriceAndKey{"TooSmall", -1e300, 0},
                      PriceAndKey{"Infinite", std::numeric_limits<double>::infinity(), 0},
                      PriceAndKey{"NotANumber", std::numeric_limits<double>::quiet_NaN(), 0}),
    ByName());

TEST(PriceKey, StandsForItsPriceInThousandths)
{
    EXPECT_EQ(keyPrice(10123), 10.123);
    EXPECT_EQ(keyPrice(1000), 1.0);
    EXPECT_EQ(keyPrice(-1), -0.001);
}

// One order after another

enum class Group { PartDealt, Waiting, Dealt, None };

struct Status
{
    const char *name;
    const char *code;
    Group group;
};

const Status statuses[] = {{"NotReported", "0", Group::Waiting},
                           {"Quoting", "1", Group::Waiting},
                           {"Quoted", "2", Group::Waiting},
                           {"QuotedWaitingForCancel", "3", Group::None},
                           {"PartDealtWaitingForCancel", "4", Group::PartDealt},
                           {"PartCancelled", "5", Group::PartDealt},
                           {"Cancelled", "6", Group::None},
                           {"PartDealt", "7", Group::PartDealt},
                           {"Dealt", "8", Group::Dealt},
                           {"Abolished", "9", Group::None},
                           {"WaitingToQuote", "A", Group::Waiting},
                           {"QuotingB", "B", Group::None},
                           {"Confirmed", "G", Group::None},
                           {"WaitingToQuoteInSmallLetter", "a", Group::None},
                           {"DealtWithABlank", "8 ", Group::None},
                           {"Unknown", "Z", Group::None},
                           {"Empty", "", Group::None}};

constexpr int nothing = 0;

/// The marker after an order of the group has come, by the marker before: nothing, 20, 21, 22, 23, 24, 25.
struct Rule
{
    bool isBuy;
    Group group;
    int after[7];
};

constexpr int before[7] = {nothing, 20, 21, 22, 23, 24, 25};

constexpr Rule rules[] = {
    {true, Group::PartDealt, {21, 21, 21, 21, 21, 21, 21}},
    {true, Group::Waiting, {20, 20, 21, 21, 23, 24, 25}},
    {true, Group::Dealt, {22, 21, 21, 22, 23, 24, 25}},
    {true, Group::None, {nothing, 20, 21, 22, 23, 24, 25}},
    {false, Group::PartDealt, {24, 24, 24, 24, 24, 24, 24}},
    {false, Group::Waiting, {23, 20, 21, 22, 23, 24, 21}},
    {false, Group::Dealt, {25, 20, 21, 22, 21, 24, 25}},
    {false, Group::None, {nothing, 20, 21, 22, 23, 24, 25}},
};

const Rule &ruleOf(bool isBuy, Group group)
{
    return *std::find_if(std::begin(rules), std::end(rules),
                         [=](const Rule &rule) { return rule.isBuy == isBuy && rule.group == group; });
}

class OrderMarksOfStatus : public ::testing::TestWithParam<Status>
{
};

TEST_P(OrderMarksOfStatus, ChangeTheMarkerByTheTable)
{
    for (const bool isBuy : {true, false}) {
        const Rule &rule = ruleOf(isBuy, GetParam().group);
        for (std::size_t column = 0; column < std::size(before); ++column) {
            std::map<std::int64_t, int> marks;
            if (before[column] != nothing) {
                marks[10000] = before[column];
            }
            addOrder(makeOrder(isBuy, QString::fromLatin1(GetParam().code)), marks);
            const int after = marks.empty() ? nothing : marks[10000];
            EXPECT_EQ(after, rule.after[column])
                << (isBuy ? "buy" : "sell") << " on " << before[column] << " of " << GetParam().name;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Statuses, OrderMarksOfStatus, ::testing::ValuesIn(statuses), ByName());

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

TEST(OrderMarks, CanBeCancelledInFourStatusesOnly)
{
    std::string cancellable;
    for (const Status &status : statuses) {
        if (isCancellable(QString::fromLatin1(status.code))) {
            cancellable += status.code;
        }
    }
    EXPECT_EQ(cancellable, "127A");
}

} // namespace
