#include "tests/tradechartobject/objects/bspoint/BSPointTest.h"

using ::testing::ElementsAre;
using ::testing::SizeIs;
using ::testing::StartsWith;
using namespace TradeChart;

namespace {

class BSPointPastTrades : public BSPointTest
{
};

TEST_F(BSPointPastTrades, MarksTheDaysOfPastTradesAndAsksForARepaint)
{
    createOnThreeDays();
    hearHistory({{"B", "20240102", "9301500", "10.5", "300"},
                 {"S", "20240103", "9301500", "10.5", "300"},
                 {"B", "20240104", "9301500", "10.5", "300"},
                 {"S", "20240104", "9311500", "10.5", "300"}});
    EXPECT_EQ(drawn(), "BST");
    EXPECT_THAT(axis.updated, ElementsAre(static_cast<Korvane::IChartObject *>(overlay)));
}

TEST_F(BSPointPastTrades, ListsARepeatedAnswerTwice)
{
    createOnThreeDays();
    for (int time = 0; time < 2; ++time) {
        hearHistory(
            {{"B", "20240103", "9301500", "10.5", "300"}, {"B", "20240103", "9301600", "10.6", "100"}});
    }
    EXPECT_EQ(listOn(1), (QStringList{QStringLiteral("买入\t09:30:15\t成交价:10.50\t成交量:300"),
                                      QStringLiteral("买入\t09:30:16\t成交价:10.60\t成交量:100"),
                                      QStringLiteral("买入\t09:30:15\t成交价:10.50\t成交量:300"),
                                      QStringLiteral("买入\t09:30:16\t成交价:10.60\t成交量:100")}));
}

TEST_F(BSPointPastTrades, GroupsRowsOfMixedDays)
{
    createOnThreeDays();
    hearHistory({{"B", "20240104", "9301500", "1", "100"},
                 {"S", "20240102", "9301500", "2", "100"},
                 {"B", "20240104", "9301600", "3", "100"}});
    EXPECT_EQ(drawn(), "S B");
    EXPECT_THAT(listOn(2), SizeIs(2));
}

TEST_F(BSPointPastTrades, KeepsTradesOfDaysWithoutABarForLaterBars)
{
    createOnThreeDays();
    hearHistory({{"B", "20231229", "9301500", "1", "100"}, {"S", "20240106", "9301500", "1", "100"}});
    EXPECT_EQ(drawn(), "   ");
    calc(shanghai, {makeDayBar(20231229), makeDayBar(20240102), makeDayBar(20240105), makeDayBar(20240108)},
         4);
    EXPECT_EQ(drawn(), "B   ");
}

TEST_F(BSPointPastTrades, FindsTheTradesOfBarsInAnyOrder)
{
    createOnThreeDays();
    hearHistory({{"B", "20240102", "9301500", "1", "100"}, {"S", "20240104", "9301500", "1", "100"}});
    calc(shanghai,
         {makeDayBar(20240104), makeDayBar(20240102), makeDayBar(20240102), makeDayBar(20240109),
          makeDayBar(20240104)},
         4);
    EXPECT_EQ(drawn(), "SBB S");
}

TEST_F(BSPointPastTrades, FindsTheTradesBehindManyDaysThatHaveNoBar)
{
    createOnThreeDays();
    std::vector<SentTrade> rows;
    for (const char *date : {"20231225", "20231226", "20231227", "20231228", "20231229", "20240103"}) {
        rows.push_back({"B", date, "9301500", "1", "100"});
    }
    hearHistory(rows);
    calc(shanghai, threeDays, Korvane::DayPeriod);
    EXPECT_EQ(drawn(), " B ");
    calc(shanghai, {makeDayBar(20231229), makeDayBar(20240103)}, Korvane::DayPeriod);
    EXPECT_EQ(drawn(), "BB");
    calc(shanghai, {makeDayBar(20240103), makeDayBar(20231229)}, Korvane::DayPeriod);
    EXPECT_EQ(drawn(), "BB") << "also when the bars step back";
}

TEST_F(BSPointPastTrades, ReadsPastTradesFromBizdateAndMatchtimeOnly)
{
    createOnThreeDays();
    QJsonObject row = SentTrade{"B", "20240102", "9301500", "1", "100"}.in(pastTrades);
    row.insert(QStringLiteral("orderdate"), QStringLiteral("20240104"));
    row.insert(QStringLiteral("opertime"), QStringLiteral("14000000"));
    hear(Topic::TRADEQUERY, sentAnswer("HistoryTrade", QJsonArray{row}));
    EXPECT_EQ(drawn(), "B  ");
    EXPECT_THAT(listOn(0).value(0).toStdString(), StartsWith("买入\t09:30:15"));
}

TEST_F(BSPointPastTrades, MarksABarBeforeAllTimeByTheDayUnderWhichItListsTrades)
{
    createOnThreeDays();
    hearHistory({{"B", "", "9301500", "1", "100"}, {"S", "-4", "9301500", "2", "100"}});
    const auto before = [](int days) { return makeDayBar(static_cast<std::uint32_t>(-days)); };
    calc(shanghai, {before(6), before(5), before(4), before(1), makeDayBar(0), makeDayBar(1)},
         Korvane::DayPeriod);
    EXPECT_EQ(drawn(), " S BB ");
    EXPECT_THAT(listOn(1), SizeIs(1));
    EXPECT_THAT(listOn(3), SizeIs(1));
}

} // namespace
