// The steps of the order points, each alone: rows become orders of a minute, minutes become marks, marks get
// their place.
#include "tests/support/FakeHost.h"
#include "tests/support/LogCapture.h"
#include "tests/support/SentAnswer.h"
#include "tests/support/SentOrder.h"

#include "tradechartobject/objects/EntrustPoint_p.h"

#include <gmock/gmock.h>

#include <cmath>
#include <initializer_list>

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Pair;
using ::testing::SizeIs;
using namespace TradeChart;

namespace {

std::int64_t minute(std::int64_t hhmm)
{
    return std::int64_t{dayFromToday(0)} * 1000000 + hhmm * 100;
}

OrdersByMinute read(std::initializer_list<QJsonObject> rows)
{
    const LogCapture unreadableRows;
    QJsonArray data;
    for (const QJsonObject &row : rows) {
        data.append(row);
    }
    return readOrders(AnswerRows(data), QStringLiteral("SH"), dayFromToday(0));
}

SentOrder at(const char *price, const char *status = "2")
{
    SentOrder order;
    order.price = price;
    order.status = status;
    return order;
}

TEST(EntrustPointStepsRows, StandUnderTheMinuteThatTheyAreShownAt)
{
    SentOrder late;
    late.time = "15000100";
    const OrdersByMinute orders = read({SentOrder(), late, SentOrder()});
    ASSERT_THAT(orders, SizeIs(2));
    EXPECT_THAT(orders.at(minute(931)), SizeIs(2));
    EXPECT_THAT(orders.at(minute(1500)), SizeIs(1));
}

TEST(EntrustPointStepsRows, OfEarlierDaysStandUnderTodaysFirstMinute)
{
    SentOrder yesterdays;
    yesterdays.date = QByteArray::number(dayFromToday(-1));
    yesterdays.time = "10000000";
    EXPECT_THAT(read({yesterdays}), ElementsAre(Pair(minute(931), SizeIs(1))));
}

TEST(EntrustPointStepsRows, OfOtherMarketsAndUnknownSidesAreLeftOut)
{
    SentOrder sideless;
    sideless.side = "B";
    EXPECT_THAT(read({with(SentOrder(), "market", QStringLiteral("2")), sideless, at("10", "")}), IsEmpty());
}

TEST(EntrustPointStepsRows, TellTheAveragePriceOfWhatIsDealt)
{
    const auto orders =
        read({with(with(SentOrder(), "matchqty", QStringLiteral("200")), "matchamt", QStringLiteral("2010")),
              with(SentOrder(), "matchqty", QStringLiteral("0"))});
    EXPECT_EQ(orders.at(minute(931))[0].matchPrice, 10.05);
    EXPECT_FALSE(std::isfinite(orders.at(minute(931))[1].matchPrice)) << "nothing is dealt yet";
}

TEST(EntrustPointStepsMarks, StandAtThePricesOfTheOrdersOfTheirBar)
{
    const auto grouped =
        groupOrders(read({at("10"), at("10.01", "8"), at("10")}), {minute(930), minute(931)});
    EXPECT_THAT(grouped.orders, ElementsAre(Pair(1, SizeIs(3))));
    EXPECT_THAT(grouped.marks, ElementsAre(Pair(1, ElementsAre(Pair(10000, Korvane::BuyWaiting),
                                                               Pair(10010, Korvane::BuyDealed)))));
}

TEST(EntrustPointStepsMarks, AreNoneForOrdersWithoutAMarkerThoughTheyAreListed)
{
    const auto grouped = groupOrders(read({at("10", "6")}), {minute(931)});
    EXPECT_THAT(grouped.orders, ElementsAre(Pair(0, SizeIs(1))));
    EXPECT_THAT(grouped.marks, IsEmpty());
}

TEST(EntrustPointStepsMarks, AreNoneForMinutesWithoutABar)
{
    EXPECT_THAT(groupOrders(read({SentOrder()}), {minute(932)}).orders, IsEmpty());
}

struct Place
{
    double price;
    double anchor;
    bool isAtLow;
};

TEST(EntrustPointStepsPlaces, HangFromTheirPriceOrStandAtTheEdge)
{
    for (const Place &expected : {Place{15, 15, false}, Place{10, 10, true}, Place{9, 10, true},
                                  Place{20, 20, false}, Place{21, 20, false}}) {
        const Placement placement = place(expected.price, {10, 20});
        EXPECT_EQ(placement.price, expected.anchor) << expected.price;
        EXPECT_EQ(placement.isAtLow, expected.isAtLow) << expected.price;
    }
}

TEST(EntrustPointStepsPlaces, AreHitOverSixteenPixelsEndsIncluded)
{
    FakeAxis axis;
    const double row = axis.yOf(15);
    EXPECT_TRUE(isOnMarker(axis, 15, {10, 20}, row));
    EXPECT_TRUE(isOnMarker(axis, 15, {10, 20}, row + 16));
    EXPECT_FALSE(isOnMarker(axis, 15, {10, 20}, row + 16.01));
    EXPECT_FALSE(isOnMarker(axis, 15, {10, 20}, row - 0.01));
    EXPECT_TRUE(isOnMarker(axis, 9, {10, 20}, axis.yOf(10) - 16))
        << "at the bottom it stands above its price";
    EXPECT_FALSE(isOnMarker(axis, 9, {10, 20}, axis.yOf(10) + 0.01));
}

TEST(EntrustPointStepsPlaces, BelongToABarWithinEightPixels)
{
    FakeAxis axis;
    EXPECT_TRUE(isAtBar(axis, 2, axis.barToX(2) - 7.99));
    EXPECT_FALSE(isAtBar(axis, 2, axis.barToX(2) + 8.0));
}

} // namespace
