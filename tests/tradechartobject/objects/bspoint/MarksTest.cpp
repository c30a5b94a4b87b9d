#include "tests/support/ByName.h"
#include "tests/tradechartobject/objects/bspoint/BSPointTest.h"

using ::testing::ElementsAre;
using ::testing::SizeIs;

namespace {

class BSPointMarks : public BSPointTest
{
};

TEST_F(BSPointMarks, KeepsTheMarksWithoutBars)
{
    createOnThreeDays();
    hearHistory({{"B", "20240103", "9301500", "10.5", "300"}});
    EXPECT_TRUE(calc(shanghai, {}, Korvane::DayPeriod));
    bus().takesMessages = false;
    EXPECT_FALSE(calc(shanghai, {makeDayBar(20240201), makeDayBar(20240202), makeDayBar(20240205)},
                      Korvane::DayPeriod));
    EXPECT_EQ(drawn(), " B ") << "no calcIt has computed them anew";
}

TEST_F(BSPointMarks, KeepsTheMarksWhenAnAnswerComesWhileThereAreNoBars)
{
    createOnThreeDays();
    hearHistory({{"B", "20240103", "9301500", "10.5", "300"}});
    EXPECT_TRUE(calc(shanghai, {}, Korvane::DayPeriod));
    hearToday({{"S", "20240102", "9301500", "1", "100"}});
    bus().takesMessages = false;
    EXPECT_FALSE(calc(shanghai, {makeDayBar(20240201), makeDayBar(20240202), makeDayBar(20240205)},
                      Korvane::DayPeriod));
    EXPECT_EQ(drawn(), " B ");
}

TEST_F(BSPointMarks, LeavesTheMarksWhenTheQuestionIsRefused)
{
    createOnThreeDays();
    hearHistory({{"B", "20240102", "9301500", "10.5", "300"}});
    bus().takesMessages = false;
    EXPECT_FALSE(calc(
        shanghai, {makeDayBar(20240103), makeDayBar(20240104), makeDayBar(20240105), makeDayBar(20240108)},
        Korvane::DayPeriod));
    EXPECT_EQ(drawn(), "B   ") << "the mark stays on its bar number; the new bar has none";
    EXPECT_THAT(painter.calls[0].prices, ElementsAre(11, 11, 11, 11));
}

TEST_F(BSPointMarks, StaysInsideItsMarksWhenTheFirstQuestionIsRefused)
{
    create();
    bus().takesMessages = false;
    EXPECT_FALSE(calc(shanghai, threeDays, Korvane::DayPeriod));
    EXPECT_EQ(drawn(), "   ");
    EXPECT_EQ(overlay->hitTest(10, anchorY(12)), -1);
    hearHistory({{"B", "20240103", "9301500", "10.5", "300"}});
    EXPECT_EQ(drawn(), " B ");
}

TEST_F(BSPointMarks, MarksBeforeItAsksForTheRepaint)
{
    createOnThreeDays();
    std::vector<std::string> seen;
    axis.onUpdate = [&] {
        seen.push_back(drawn());
        calc(shanghai, threeDays, Korvane::DayPeriod);
    };
    hearHistory({{"B", "20240102", "9301500", "1", "1"}});
    hearToday({{"S", "20240104", "9301500", "1", "1"}});
    EXPECT_THAT(seen, ElementsAre("B  ", "B S"));
    EXPECT_EQ(drawn(), "B S");
}

TEST_F(BSPointMarks, OnlyAddsMarksBetweenTwoCalcIts)
{
    createOnThreeDays();
    hearToday({{"B", "20240104", "9301500", "1", "100"}});
    hearToday({{"B", "20240103", "9301500", "1", "100"}});
    hearToday({{"S", "20240104", "9301500", "1", "100"}});
    EXPECT_EQ(drawn(), " BT") << "the buy that was there is still marked";
    calc(shanghai, threeDays, Korvane::DayPeriod);
    EXPECT_EQ(drawn(), " BS");
}

TEST_F(BSPointMarks, KeepsTheMarkOfBothSidesBesideALaterOneUntilCalcIt)
{
    createOnThreeDays();
    hearHistory({{"B", "20240104", "9301500", "1", "100"}, {"S", "20240104", "9301500", "2", "100"}});
    hearToday({{"B", "20240104", "9301500", "1", "100"}});
    EXPECT_EQ(drawn(), "  #");
    EXPECT_THAT(listOn(2), SizeIs(1));
    calc(shanghai, threeDays, Korvane::DayPeriod);
    EXPECT_EQ(drawn(), "  B");
}

struct OtherSide
{
    const char *name;
    const char *listed;
    const char *later;
    const char *text;
};

/// Two markers stand on the last bar, that of both sides and a later one of a single side.
class BSPointMarksOfBothSides : public BSPointTest, public ::testing::WithParamInterface<OtherSide>
{
};

TEST_P(BSPointMarksOfBothSides, ListsTheSideOfEachTrade)
{
    createOnThreeDays();
    hearHistory({{GetParam().listed, "20240103", "9301500", "1", "100"},
                 {"B", "20240104", "9301500", "1", "100"},
                 {"S", "20240104", "9301500", "1", "100"}});
    hearToday({{GetParam().later, "20240104", "9301500", "1", "100"}});
    bus().takesMessages = false;
    EXPECT_FALSE(calc(shanghai, {makeDayBar(20231229), threeDays[0], threeDays[1]}, Korvane::DayPeriod));
    EXPECT_EQ(drawn().back(), '#');
    EXPECT_EQ(listOn(2), QStringList{QString::fromUtf8(GetParam().text) +
                                     QStringLiteral("\t09:30:15\t成交价:1.00\t成交量:100")});
}

INSTANTIATE_TEST_SUITE_P(Sides, BSPointMarksOfBothSides,
                         ::testing::Values(OtherSide{"ASellUnderBuys", "S", "B", "卖出"},
                                           OtherSide{"ABuyUnderSells", "B", "S", "买入"}),
                         ByName());

TEST_F(BSPointMarks, ListsABuyUnderAMarkOfSells)
{
    createOnThreeDays();
    hearHistory({{"S", "20240102", "9301500", "1", "100"}, {"B", "20240103", "9301500", "1", "100"}});
    bus().takesMessages = false;
    EXPECT_FALSE(calc(shanghai, {threeDays[1]}, Korvane::DayPeriod))
        << "the sell mark of the bar before stays";
    EXPECT_EQ(listOn(0), QStringList{QStringLiteral("卖出\t09:30:15\t成交价:1.00\t成交量:100")});
}

TEST_F(BSPointMarks, ListsUnderTheMarkerAsItStandsNotUnderTheTradesOwnSide)
{
    createOnThreeDays();
    hearHistory({{"B", "20240102", "9301500", "1", "100"}, {"S", "20240103", "9301500", "1", "100"}});
    bus().takesMessages = false;
    EXPECT_FALSE(calc(shanghai, {threeDays[1]}, Korvane::DayPeriod))
        << "the buy mark of the bar before stays";
    EXPECT_EQ(listOn(0), QStringList{QStringLiteral("买入\t09:30:15\t成交价:1.00\t成交量:100")});
}

} // namespace
