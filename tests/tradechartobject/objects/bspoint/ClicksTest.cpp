#include "tests/tradechartobject/objects/bspoint/BSPointTest.h"

#include <cstring>

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

namespace {

class BSPointClicks : public BSPointTest
{
};

TEST_F(BSPointClicks, ListsEachTradeOfADayOfBothSidesUnderItsOwnSide)
{
    createOnThreeDays();
    hearHistory({{"B", "20240102", "9301500", "10.5", "300"},
                 {"S", "20240102", "10000000", "10.625", "200"},
                 {"B", "20240102", "9300000", "10.4", "100"}});
    EXPECT_EQ(drawn(), "T  ");
    EXPECT_EQ(listOn(0), (QStringList{QStringLiteral("买入\t09:30:15\t成交价:10.50\t成交量:300"),
                                      QStringLiteral("卖出\t10:00:00\t成交价:10.62\t成交量:200"),
                                      QStringLiteral("买入\t09:30:00\t成交价:10.40\t成交量:100")}));
}

TEST_F(BSPointClicks, ListsADayOfSells)
{
    createOnThreeDays();
    hearHistory({{"S", "20240102", "9301500", "10.5", "300"}});
    EXPECT_EQ(listOn(0), QStringList{QStringLiteral("卖出\t09:30:15\t成交价:10.50\t成交量:300")});
}

TEST_F(BSPointClicks, ListsMoreTradesThanItMakesRoomFor)
{
    createOnThreeDays();
    hearHistory(std::vector<SentTrade>(250, {"B", "20240102", "9301500", "10.5", "300"}));
    EXPECT_THAT(listOn(0), SizeIs(250));
}

TEST_F(BSPointClicks, ListsAbsurdNumbersWhole)
{
    createOnThreeDays();
    hearHistory({{"B", "20240102", "2147483647", "1e308", "-1e308"}});
    const QString line = listOn(0).value(0);
    EXPECT_TRUE(line.startsWith(QStringLiteral("买入\t")));
    EXPECT_GT(line.size(), 600);
    EXPECT_TRUE(line.contains(QStringLiteral("\t47:48:36\t")));
    EXPECT_TRUE(line.contains(QStringLiteral(".00\t成交量:-1")));
}

TEST_F(BSPointClicks, ShowsNoListOnADayWithoutTrades)
{
    createOnThreeDays();
    hearHistory({{"B", "20240102", "9301500", "10.5", "300"}});
    listOn(1);
    EXPECT_THAT(axis.popups, IsEmpty());
}

TEST_F(BSPointClicks, ShowsNoListForTradesWithoutAMarker)
{
    createOnThreeDays();
    hearHistory({{"B", "20240108", "9301500", "10.5", "300"}});
    bus().takesMessages = false;
    EXPECT_FALSE(calc(shanghai, {makeDayBar(20240108)}, Korvane::DayPeriod));
    listOn(0);
    EXPECT_THAT(axis.popups, IsEmpty()) << "the bar has trades but its marks are not computed yet";
}

TEST_F(BSPointClicks, TellsTheHostWhichBarWasClicked)
{
    createOnThreeDays();
    axis.hostCalls = 0;
    listOn(2);
    EXPECT_THAT(axis.barsAsked, ElementsAre(2));
    EXPECT_EQ(axis.hostCalls, 2) << "xToBar and priceToY";
    EXPECT_THAT(axis.pricesAsked, ElementsAre(10.0)) << "the close";

    axis.bars.clear();
    axis.pricesAsked.clear();
    listOn(2);
    double filler = 0.0;
    std::memset(&filler, 0x7A, sizeof filler);
    EXPECT_THAT(axis.pricesAsked, ElementsAre(filler)) << "a host that fills nothing in";
}

TEST_F(BSPointClicks, ListsNothingWhenTheHostChangesTheSecurityDuringAClick)
{
    createOnThreeDays();
    hearHistory({{"B", "20240102", "9301500", "10.5", "300"}});
    axis.onBarAt = [this] { overlay->calcIt(shenzhen, nullptr, 0, Korvane::DayPeriod, 0, 0); };
    EXPECT_THAT(listOn(0), SizeIs(0));
}

TEST_F(BSPointClicks, HandlesAClickWhateverItsHeight)
{
    createOnThreeDays();
    hearHistory({{"B", "20240102", "9301500", "10.5", "300"}});
    for (const double y : {-1e9, 0.0, 1e9}) {
        axis.popups.clear();
        overlay->handleMousePress(0, y);
        EXPECT_THAT(axis.popups, SizeIs(1));
    }
}

TEST_F(BSPointClicks, IgnoresTheOtherMouseOperations)
{
    createOnThreeDays();
    hearHistory({{"B", "20240102", "9301500", "10.5", "300"}});
    const double y = anchorY(11);
    axis.hostCalls = 0;
    overlay->handleMousePressR(0, y);
    overlay->handleMouseRelease(0, y);
    overlay->handleMouseReleaseR(0, y);
    overlay->handleMouseMove(0, y);
    EXPECT_THAT(axis.popups, IsEmpty());
    EXPECT_THAT(questions(), IsEmpty());
    EXPECT_EQ(axis.hostCalls, 0);
}

TEST_F(BSPointClicks, IgnoresWhatIsChosenFromTheList)
{
    createOnThreeDays();
    hearHistory({{"B", "20240102", "9301500", "10.5", "300"}});
    for (const int chosen : {-1, 0, 99}) {
        axis.onPopup = [chosen] { return chosen; };
        listOn(0);
    }
    EXPECT_THAT(questions(), IsEmpty());
    EXPECT_THAT(axis.questions, IsEmpty());
}

TEST_F(BSPointClicks, TakesAnAnswerWhileItsListIsOpen)
{
    createOnThreeDays();
    hearHistory({{"B", "20240102", "9301500", "10.5", "300"}});
    axis.onPopup = [] {
        hearToday({{"S", "20240102", "9301500", "1", "100"}});
        return 0;
    };
    EXPECT_THAT(listOn(0), SizeIs(1));
    EXPECT_EQ(drawn(), "T  ");
}

} // namespace
