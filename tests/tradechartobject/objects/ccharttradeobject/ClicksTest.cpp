#include "tests/tradechartobject/objects/ccharttradeobject/CChartTradeObjectTest.h"

#ifdef __SANITIZE_ADDRESS__
#    include <sanitizer/asan_interface.h>
#endif

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

namespace {

class CChartTradeObjectClicks : public CChartTradeObjectTest
{
};

TEST_F(CChartTradeObjectClicks, ListsNothingOnTheMarksThatStayWithoutBars)
{
    createMarkers();
    hearHistory({buy(10)});
    recalc();
    calc(shanghai, {}, Korvane::DayPeriod);
    overlay->handleMousePress(0, axis.yOf(10.5));
    EXPECT_THAT(axis.popups, IsEmpty());
}

TEST_F(CChartTradeObjectClicks, ListsTheTradesOnTheClickedPartOfTheBar)
{
    createMarkers();
    hearHistory({buy(10), buy(9.994, 200), buy(11), buy(9)});
    recalc();
    EXPECT_EQ(listAt(0, 10.5, 2), (QStringList{line("买入", "10.00"), line("买入", "11.00")}));
    EXPECT_EQ(listAt(0, 9.5, 2), (QStringList{line("买入", "9.99", "200"), line("买入", "9.00")}));
    EXPECT_EQ(listAt(0, 10, 2), (QStringList{line("买入", "9.99", "200"), line("买入", "9.00")}))
        << "the close itself counts as below";
}

TEST_F(CChartTradeObjectClicks, ListsOneSideOfABarWhoseSidesStandApart)
{
    createMarkers();
    hearHistory({sell(11), buy(12), sell(8), buy(9), sell(7)});
    recalc();
    EXPECT_EQ(listAt(0, 10.5, 1), QStringList{line("买入", "12.00")}) << "the buy marker comes first";
    EXPECT_EQ(listAt(0, 9.5, 1), QStringList{line("买入", "9.00")});
}

TEST_F(CChartTradeObjectClicks, ListsBothSidesOnThePartOfTheBarWhereTheirMarkerStands)
{
    createMarkers();
    hearHistory({sell(11), buy(12), sell(8), buy(9)});
    recalc();
    mark(4, 0);
    EXPECT_EQ(listAt(0, 10.5, 2), (QStringList{line("卖出", "11.00"), line("买入", "12.00")}));
    EXPECT_EQ(listAt(0, 9.5, 1), QStringList{line("买入", "9.00")}) << "still apart";
    recalc();
    mark(5, 0);
    EXPECT_EQ(listAt(0, 10.5, 1), QStringList{line("买入", "12.00")}) << "calcIt has parted them";
    EXPECT_EQ(listAt(0, 9.5, 2), (QStringList{line("卖出", "8.00"), line("买入", "9.00")}));
}

TEST_F(CChartTradeObjectClicks, ListsNothingForTradesOutsideTheTimeOfTheBar)
{
    createMarkers();
    hearHistory({buy(10)});
    const auto beforeAllTime = static_cast<std::uint32_t>(-5);
    calc(shanghai, {makeDayBar(beforeAllTime), threeDays[0], threeDays[1]}, Korvane::DayPeriod);
    for (const int bar : {0, 2}) {
        mark(4, static_cast<std::size_t>(bar));
        EXPECT_THAT(listAt(bar, 10.5, 1), IsEmpty()) << bar;
    }
    EXPECT_THAT(axis.barsAsked, ElementsAre(0, 2));
}

TEST_F(CChartTradeObjectClicks, ListsNothingAsACostLine)
{
    createLine(R"({"costprice":"12.5"})");
    hearHistory({buy(10)});
    recalc();
    listAt(1, 10.5, 1);
    EXPECT_THAT(axis.barsAsked, ElementsAre(1)) << "the host is asked all the same";
    EXPECT_THAT(axis.popups, IsEmpty());
}

TEST_F(CChartTradeObjectClicks, ListsSells)
{
    createMarkers();
    hearHistory({sell(11), sell(9)});
    recalc();
    EXPECT_EQ(listAt(0, 10.5, 1), QStringList{line("卖出", "11.00")});
    EXPECT_EQ(listAt(0, 9.5, 1), QStringList{line("卖出", "9.00")});
}

TEST_F(CChartTradeObjectClicks, ShowsNoListOnTheOtherPartOfTheBar)
{
    createMarkers();
    hearHistory({buy(9)});
    recalc();
    listAt(0, 10.5, 1);
    EXPECT_THAT(axis.popups, IsEmpty());
}

TEST_F(CChartTradeObjectClicks, ShowsNoListOnABarWithoutMarkers)
{
    createMarkers();
    hearHistory({buy(9)});
    recalc();
    listAt(1, 9.5, 1);
    EXPECT_THAT(axis.popups, IsEmpty());
}

TEST_F(CChartTradeObjectClicks, ShowsNoListWhenTheHostsCloseLeavesNoTradeOnThePart)
{
    createMarkers();
    hearHistory({buy(10)});
    recalc();
    axis.bars[0].close = 50.0; // the bar has moved since it was handed over
    listAt(0, 51, 1);
    EXPECT_THAT(axis.popups, IsEmpty());
}

TEST_F(CChartTradeObjectClicks, ShowsNoListForACloseThatIsNoNumber)
{
    createMarkers();
    hearHistory({buy(10), buy(9)});
    recalc();
    axis.bars[0].close = notANumber;
    listAt(0, 10.5, 1);
    EXPECT_THAT(axis.popups, IsEmpty());
}

TEST_F(CChartTradeObjectClicks, ShowsNoListForABarThatTheHostDoesNotHave)
{
    createMarkers();
    hearHistory({buy(10), buy(9)});
    recalc();
    axis.bars.clear();
    listAt(0, 10.5, 1);
    listAt(0, 9.5, 1);
    EXPECT_THAT(axis.barsAsked, ElementsAre(0, 0));
    EXPECT_THAT(axis.popups, IsEmpty());
}

TEST_F(CChartTradeObjectClicks, ShowsNoListWhenTheHostTakesTheBarsAwayMeanwhile)
{
    createMarkers();
    hearHistory({buy(10)});
    recalc();
    axis.onBarAt = [this] { overlay->calcIt(shanghai, nullptr, 0, Korvane::DayPeriod, 0, 0); };
    listAt(0, 10.5, 1);
    EXPECT_THAT(axis.popups, IsEmpty());
}

TEST_F(CChartTradeObjectClicks, ListsTheTradesBetweenTheEndsOfTheBarBeforeAndItsOwn)
{
    createMarkers();
    hearHistory({buy(10)});
    const auto beforeAllTime = static_cast<std::uint32_t>(-5);
    calc(shanghai, {makeDayBar(beforeAllTime), threeDays[0]}, Korvane::DayPeriod);
    EXPECT_EQ(listAt(1, 10.5, 1), QStringList{line("买入", "10.00")});
}

TEST_F(CChartTradeObjectClicks, ListsTheTradesOnAPeriodOfNeitherKind)
{
    createMarkers();
    hearHistory({buy(10)});
    calc(shanghai, threeDays, 8);
    EXPECT_EQ(listAt(0, 10.5, 1), QStringList{line("买入", "10.00")});
}

TEST_F(CChartTradeObjectClicks, AsksTheHostForTheClickedBar)
{
    createMarkers();
    axis.hostCalls = 0;
    overlay->handleMousePress(20, 0);
    EXPECT_THAT(axis.barsAsked, ElementsAre(2));
    EXPECT_EQ(axis.hostCalls, 2) << "xToBar and priceToY";
}

TEST_F(CChartTradeObjectClicks, ListsMoreTradesThanItMakesRoomFor)
{
    createMarkers();
    QJsonArray rows;
    for (int row = 0; row < 250; ++row) {
        rows.append(buy(10));
    }
    hearHistory(rows);
    recalc();
    EXPECT_THAT(listAt(0, 10.5, 250), SizeIs(250));
}

TEST_F(CChartTradeObjectClicks, ListsAbsurdNumbersWhole)
{
    createMarkers();
    hearHistory({buy(1e308, 1e308)});
    recalc();
    const QString number = QString::asprintf("%.0f", 1e308);
    EXPECT_EQ(listAt(0, 10.5, 1),
              QStringList{QStringLiteral("买入\t00:00:00\t成交价:%1.00\t成交量:%1").arg(number)});
}

TEST_F(CChartTradeObjectClicks, EndsTheListWithItsLastLine)
{
#ifdef __SANITIZE_ADDRESS__
    createMarkers();
    hearHistory({buy(10), buy(11)});
    recalc();
    axis.onPopup = [this] {
        EXPECT_FALSE(__asan_address_is_poisoned(axis.popupArray + 1));
        EXPECT_TRUE(__asan_address_is_poisoned(axis.popupArray + 2)) << "nothing follows, no null either";
        return -1;
    };
    EXPECT_THAT(listAt(0, 10.5, 2), SizeIs(2));
#else
    GTEST_SKIP() << "only AddressSanitizer sees the end of an array";
#endif
}

TEST_F(CChartTradeObjectClicks, TellsTheLengthOfTheListThatIsShown)
{
    createMarkers();
    hearHistory({buy(10), buy(11), buy(9)});
    recalc();
    std::vector<int> lengths;
    axis.onPopup = [&] {
        lengths.push_back(overlay->property("popupLineCount").toInt());
        return -1;
    };
    listAt(0, 10.5, 2);
    listAt(0, 9.5, 1);
    EXPECT_THAT(lengths, ElementsAre(2, 1));
}

TEST_F(CChartTradeObjectClicks, TellsTheLengthOfAListThatIsShownInsideAnother)
{
    createMarkers();
    hearHistory({buy(10), buy(11), buy(9)});
    recalc();
    std::vector<int> lengths;
    axis.onPopup = [&] {
        lengths.push_back(overlay->property("popupLineCount").toInt());
        if (lengths.size() == 1) {
            axis.expectLines = 1;
            overlay->handleMousePress(0, axis.yOf(9.5));
        }
        return -1;
    };
    listAt(0, 10.5, 2);
    EXPECT_THAT(lengths, ElementsAre(2, 1)) << "each as its list opens";
}

TEST_F(CChartTradeObjectClicks, IgnoresTheOtherMouseOperationsAndWhatIsChosen)
{
    createMarkers();
    hearHistory({buy(10)});
    recalc();
    axis.onPopup = [] { return 0; };
    EXPECT_THAT(listAt(0, 10.5, 1), SizeIs(1));
    axis.popups.clear();
    axis.hostCalls = 0;
    const double y = axis.yOf(10.5);
    overlay->handleMousePressR(0, y);
    overlay->handleMouseRelease(0, y);
    overlay->handleMouseReleaseR(0, y);
    overlay->handleMouseMove(0, y);
    EXPECT_THAT(axis.popups, IsEmpty());
    EXPECT_EQ(axis.hostCalls, 0);
    EXPECT_THAT(questions(), IsEmpty());
}

} // namespace
