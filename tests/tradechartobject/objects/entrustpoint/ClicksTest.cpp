#include "tests/tradechartobject/objects/entrustpoint/EntrustPointTest.h"

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

namespace {

class EntrustPointClicks : public EntrustPointTest
{
};

TEST_F(EntrustPointClicks, ListsTheFirstBarThatHasAnOrderThere)
{
    createOnThreeMinutes();
    hearOrders({SentOrder{"0B", "2", "10", "9320000", QByteArray::number(today), "2"},
                SentOrder{"0B", "2", "10", "9310000", QByteArray::number(today), "1"},
                SentOrder{"0B", "2", "20", "9320000", QByteArray::number(today), "3"}});
    EXPECT_THAT(listAt(5, yOfTen()), ElementsAre("1"));
    EXPECT_THAT(listAt(5, axis.yOf(20)), ElementsAre("3")) << "the first bar has none at that height";
    EXPECT_THAT(listAt(9, yOfTen()), ElementsAre("2"));
}

TEST_F(EntrustPointClicks, ListsAllOrdersUnderThePixelInTheOrderOfTheAnswer)
{
    createOnThreeMinutes();
    const QByteArray date = QByteArray::number(today);
    hearOrders({SentOrder{"0B", "2", "10", "9310000", date, "3"},
                SentOrder{"0S", "6", "10", "9310000", date, "1"},
                SentOrder{"0B", "8", "20", "9310000", date, "4"},
                SentOrder{"0B", "8", "10.5", "9310000", date, "2"}});
    EXPECT_THAT(listAt(0, yOfTen() + 1), ElementsAre("3", "1", "2"));
}

TEST_F(EntrustPointClicks, ListsTheOrdersThatStoodOnTheBarWhenAnAnswerComesInsideALookUp)
{
    createOnThreeMinutes();
    hearOrders({SentOrder(), SentOrder{"0S"}, SentOrder{"0B", "2", "10", "9330000"}});
    axis.onLookUp = [this] {
        hearOrders({SentOrder{"0B", "2", "10", "9330000", QByteArray::number(today), "99"}});
    };
    EXPECT_THAT(listAt(0, yOfTen()), ElementsAre("700001", "700001"));
}

TEST_F(EntrustPointClicks, GoesOnToTheNextBarWhenAnAnswerComesInsideALookUp)
{
    createOnThreeMinutes();
    hearOrders({SentOrder(), SentOrder{"0B", "2", "10", "9330000"}});
    axis.onLookUp = [this] {
        hearOrders({SentOrder{"0B", "2", "10", "9330000", QByteArray::number(today), "99"}});
    };
    EXPECT_THAT(listAt(20, yOfTen()), ElementsAre("99"));
}

TEST_F(EntrustPointClicks, AnswersAClickWhateverThePeriodThatWasRefusedLast)
{
    createOnThreeMinutes();
    hearOrders({SentOrder()});
    calc(shanghai, threeMinutes, Korvane::DayPeriod);
    EXPECT_THAT(listAt(0, yOfTen()), SizeIs(1));
}

TEST_F(EntrustPointClicks, ShowsNoListBesideTheMarkers)
{
    createOnThreeMinutes();
    hearOrders({SentOrder()});
    const LogCapture log;
    listAt(0, yOfTen() - 1);
    listAt(20, yOfTen());
    EXPECT_THAT(axis.popups, IsEmpty());
    EXPECT_THAT(log.all(), IsEmpty());
}

TEST_F(EntrustPointClicks, IgnoresTheOtherMouseOperations)
{
    createOnThreeMinutes();
    hearOrders({SentOrder()});
    axis.updated.clear();
    axis.hostCalls = 0;
    overlay->handleMousePressR(0, yOfTen());
    overlay->handleMouseRelease(0, yOfTen());
    overlay->handleMouseReleaseR(0, yOfTen());
    overlay->handleMouseMove(0, yOfTen());
    EXPECT_THAT(axis.popups, IsEmpty());
    EXPECT_THAT(axis.updated, IsEmpty());
    EXPECT_EQ(axis.hostCalls, 0);
    EXPECT_THAT(questions(), IsEmpty());
}

} // namespace
