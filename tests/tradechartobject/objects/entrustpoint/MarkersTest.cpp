#include "tests/tradechartobject/objects/entrustpoint/EntrustPointTest.h"

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

namespace {

class EntrustPointMarkers : public EntrustPointTest
{
};

TEST_F(EntrustPointMarkers, DrawsBarByBarAndPriceByPrice)
{
    createOnThreeMinutes();
    hearOrders({SentOrder{"0B", "2", "12", "9330000"}, SentOrder{"0S", "8", "11", "9310000"},
                SentOrder{"0B", "7", "10.5", "9330000"}, SentOrder{"0S", "2", "10", "9310000"}});
    EXPECT_THAT(drawn(), ElementsAre("0 23 10", "0 25 11", "2 21 10.5", "2 20 12"));
}

TEST_F(EntrustPointMarkers, SettlesOneMarkerForAllOrdersAtAPrice)
{
    createOnThreeMinutes();
    hearOrders({SentOrder{"0S", "2"}, SentOrder{"0S", "8"}, SentOrder{"0B", "8", "10.1234"},
                SentOrder{"0B", "2", "10.1226"}});
    EXPECT_THAT(drawn(), ElementsAre("0 21 10", "0 21 10.123"));
}

TEST_F(EntrustPointMarkers, DrawsAPriceCutOffAtTheThousandth)
{
    createOnThreeMinutes();
    hearOrders({SentOrder{"0B", "2", "1.001"}});
    EXPECT_THAT(drawn(), ElementsAre("0 20 1"));
}

TEST_F(EntrustPointMarkers, PreservesTheOrderOfTheAnswer)
{
    createOnThreeMinutes();
    hearOrders({SentOrder{"0B", "2"}, SentOrder{"0S", "2"}});
    EXPECT_THAT(drawn(), ElementsAre("0 20 10"));
    hearOrders({SentOrder{"0S", "2"}, SentOrder{"0B", "2"}});
    EXPECT_THAT(drawn(), ElementsAre("0 23 10"));
}

TEST_F(EntrustPointMarkers, KeepsOrdersWithoutABarForLaterBars)
{
    createOnThreeMinutes();
    hearOrders({SentOrder{"0B", "2", "10", "9340000"}});
    EXPECT_FALSE(paint());
    calc(shanghai, minutes({931, 932, 933, 934}), Korvane::IntradayPeriod);
    EXPECT_THAT(drawn(), ElementsAre("3 20 10"));
    EXPECT_THAT(questions(), IsEmpty());
}

TEST_F(EntrustPointMarkers, MovesTheMarkersWithTheBars)
{
    createOnThreeMinutes();
    hearOrders({SentOrder{"0B", "2", "10", "9320000"}});
    calc(shanghai, minutes({932, 933}), Korvane::IntradayPeriod);
    EXPECT_THAT(drawn(), ElementsAre("0 20 10"));
    EXPECT_THAT(listAt(0, yOfTen()), ElementsAre("700001"));
    EXPECT_THAT(listAt(10, yOfTen()), IsEmpty());
}

TEST_F(EntrustPointMarkers, ShowsNothingOnceNoBarHasAnOrder)
{
    createOnThreeMinutes();
    hearOrders({SentOrder()});
    calc(shanghai, minutes({1001, 1002}), Korvane::IntradayPeriod);
    EXPECT_FALSE(paint());
    EXPECT_EQ(overlay->hitTest(0, yOfTen()), -1);
    EXPECT_THAT(listAt(0, yOfTen()), IsEmpty());
}

TEST_F(EntrustPointMarkers, ShowsOrdersOnEveryBarOfTheirMinuteInAnyOrderOfBars)
{
    create();
    calc(shanghai, minutes({933, 931, 932, 931}), Korvane::IntradayPeriod);
    hearOrders({SentOrder()});
    EXPECT_THAT(drawn(), ElementsAre("1 20 10", "3 20 10"));
}

TEST_F(EntrustPointMarkers, KeepsTheMarkersWithoutBars)
{
    createOnThreeMinutes();
    hearOrders({SentOrder()});
    calc(shanghai, {}, Korvane::IntradayPeriod);
    EXPECT_THAT(drawn(), ElementsAre("0 20 10"));
    EXPECT_EQ(overlay->hitTest(0, yOfTen()), -1);
    EXPECT_THAT(listAt(0, yOfTen()), ElementsAre("700001"));
    hearOrders({SentOrder{"0S"}});
    EXPECT_THAT(drawn(), ElementsAre("0 20 10")) << "grouped anew when bars come";
    calc(shanghai, threeMinutes, Korvane::IntradayPeriod);
    EXPECT_THAT(drawn(), ElementsAre("0 23 10"));
}

TEST_F(EntrustPointMarkers, KeepsTheMarkersWhenNoRowOfAnAnswerIsReadable)
{
    createOnThreeMinutes();
    hearOrders({SentOrder()});
    axis.updated.clear();
    hearOrders({SentOrder{"0F"}});
    EXPECT_THAT(axis.updated, SizeIs(1));
    calc(shanghai, minutes({935, 936}), Korvane::IntradayPeriod);
    EXPECT_THAT(drawn(), ElementsAre("0 20 10")) << "there are no orders to group anew";
    EXPECT_THAT(listAt(0, yOfTen()), ElementsAre("700001"));
}

TEST_F(EntrustPointMarkers, DrawsNoMarkerForABarOfCancelledOrders)
{
    createOnThreeMinutes();
    hearOrders({SentOrder{"0B", "6"}});
    EXPECT_FALSE(paint());
    EXPECT_EQ(overlay->hitTest(0, yOfTen()), -1);
    EXPECT_THAT(listAt(0, yOfTen()), ElementsAre("700001"));
}

TEST_F(EntrustPointMarkers, GroupsNothingWithoutAnswerOrBars)
{
    create();
    EXPECT_TRUE(overlay->calcEntrustPointPriceInfo());
    EXPECT_FALSE(paint());
    calc(shanghai, minutes({931}), Korvane::IntradayPeriod);
    EXPECT_TRUE(overlay->calcEntrustPointPriceInfo());
    EXPECT_FALSE(paint());
}

} // namespace
