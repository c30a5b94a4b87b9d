#include "tests/tradechartobject/objects/entrustpoint/EntrustPointTest.h"

#include <limits>

using ::testing::IsEmpty;
using ::testing::SizeIs;

namespace {

class EntrustPointHits : public EntrustPointTest
{
};

TEST_F(EntrustPointHits, CatchesLessThanEightPixelsFromTheCentreOfABar)
{
    create();
    calc(shanghai, minutes({931}), Korvane::IntradayPeriod);
    hearOrders({SentOrder()});
    for (const double x : {-7.99, 0.0, 7.99}) {
        EXPECT_EQ(overlay->hitTest(x, yOfTen()), 0) << x;
        EXPECT_THAT(listAt(x, yOfTen()), SizeIs(1)) << x;
    }
    for (const double x : {-8.0, 8.0, 1e9, std::numeric_limits<double>::quiet_NaN()}) {
        EXPECT_EQ(overlay->hitTest(x, yOfTen()), -1) << x;
        EXPECT_THAT(listAt(x, yOfTen()), IsEmpty()) << x;
    }
}

TEST_F(EntrustPointHits, HitsAnyMarkerOfAnyBar)
{
    createOnThreeMinutes();
    hearOrders(
        {SentOrder{"0B", "2", "10"}, SentOrder{"0B", "2", "20"}, SentOrder{"0B", "2", "30", "9330000"}});
    EXPECT_EQ(overlay->hitTest(0, axis.yOf(20)), 0);
    EXPECT_EQ(overlay->hitTest(20, axis.yOf(30)), 0);
    EXPECT_EQ(overlay->hitTest(14, axis.yOf(30)), 0) << "beside a bar of other prices";
    EXPECT_EQ(overlay->hitTest(0, axis.yOf(30)), -1);
}

TEST_F(EntrustPointHits, AsksForTheRangeOnceForABarNearThePointer)
{
    createOnThreeMinutes();
    hearOrders(
        {SentOrder{"0B", "2", "10"}, SentOrder{"0B", "2", "20"}, SentOrder{"0B", "2", "30", "9330000"}});
    axis.rangesAsked = 0;
    overlay->hitTest(0, axis.yOf(50));
    EXPECT_EQ(axis.rangesAsked, 1);
    listAt(0, axis.yOf(50));
    EXPECT_EQ(axis.rangesAsked, 2);
}

TEST_F(EntrustPointHits, AsksForTheRangeAnewForEveryBarNearThePointerAndForNoOther)
{
    createOnThreeMinutes();
    hearOrders({SentOrder(), SentOrder{"0B", "2", "10", "9320000"}});
    axis.rangesAsked = 0;
    overlay->hitTest(1000, yOfTen());
    EXPECT_EQ(axis.rangesAsked, 0);
    overlay->hitTest(5, axis.yOf(50));
    EXPECT_EQ(axis.rangesAsked, 2);
}

TEST_F(EntrustPointHits, HitsTheMarkerAndClicksTheOrdersOwnPrice)
{
    axis.low = 0.5;
    axis.high = 2.0;
    axis.pixelsPerUnit = 100000.0; // a thousandth of the price is taller than a marker
    createOnThreeMinutes();
    hearOrders({SentOrder{"0B", "2", "1.001"}}); // drawn at 1.000
    EXPECT_EQ(overlay->hitTest(0, axis.yOf(1.0) + 1), 0);
    EXPECT_EQ(overlay->hitTest(0, axis.yOf(1.001) + 1), -1);
    EXPECT_THAT(listAt(0, axis.yOf(1.0) + 1), IsEmpty());
    EXPECT_THAT(listAt(0, axis.yOf(1.001) + 1), SizeIs(1));
}

TEST_F(EntrustPointHits, UsesWhateverRangeAHostWithoutAScaleLeavesForHits)
{
    createOnThreeMinutes();
    hearOrders({SentOrder()});
    axis.hasPriceScale = false;
    EXPECT_EQ(overlay->hitTest(0, yOfTen()), 0);
    EXPECT_THAT(listAt(0, yOfTen()), SizeIs(1));
}

} // namespace
