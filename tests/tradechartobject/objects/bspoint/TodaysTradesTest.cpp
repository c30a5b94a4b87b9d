#include "tests/support/ByName.h"
#include "tests/tradechartobject/objects/bspoint/BSPointTest.h"

using ::testing::IsEmpty;
using ::testing::SizeIs;
using ::testing::StartsWith;
using namespace TradeChart;

namespace {

class BSPointTodaysTrades : public BSPointTest
{
};

TEST_F(BSPointTodaysTrades, ReadsTodaysTradesFromOrderdateAndOpertimeOnly)
{
    createOnThreeDays();
    QJsonObject row = SentTrade{"B", "20240104", "14000000", "1", "100"}.in(todaysTrades);
    row.insert(QStringLiteral("bizdate"), QStringLiteral("20240102"));
    row.insert(QStringLiteral("matchtime"), QStringLiteral("9301500"));
    hear(Topic::TRADEQUERY, sentAnswer("TodayTrade", QJsonArray{row}));
    EXPECT_EQ(drawn(), "  B");
    EXPECT_THAT(listOn(2).value(0).toStdString(), StartsWith("买入\t14:00:00"));
}

TEST_F(BSPointTodaysTrades, ListsTodaysTradesInTheOrderOfTheAnswerAndPastOnesBehindThem)
{
    createOnThreeDays();
    hearToday({{"B", "20240104", "10000000", "2", "100"},
               {"B", "20240104", "9300000", "3", "100"},
               {"B", "20240104", "14000000", "1", "100"}});
    hearHistory({{"B", "20240104", "9000000", "4", "100"}});
    EXPECT_EQ(listOn(2), (QStringList{QStringLiteral("买入\t10:00:00\t成交价:2.00\t成交量:100"),
                                      QStringLiteral("买入\t09:30:00\t成交价:3.00\t成交量:100"),
                                      QStringLiteral("买入\t14:00:00\t成交价:1.00\t成交量:100"),
                                      QStringLiteral("买入\t09:00:00\t成交价:4.00\t成交量:100")}));
}

TEST_F(BSPointTodaysTrades, ReplacesTheDayByTodaysAnswer)
{
    createOnThreeDays();
    hearToday({{"B", "20240104", "9301500", "1", "100"}});
    hearToday({{"B", "20240104", "9301500", "1", "100"}, {"B", "20240104", "9301600", "2", "200"}});
    EXPECT_THAT(listOn(2), SizeIs(2));
    EXPECT_THAT(axis.updated, SizeIs(2));
}

TEST_F(BSPointTodaysTrades, ReplacesWhateverTheDayHeldByTodaysAnswerAndAddsHistoryToIt)
{
    createOnThreeDays();
    hearHistory({{"B", "20240104", "9301500", "1", "100"}, {"B", "20240104", "9301600", "1", "100"}});
    hearToday({{"B", "20240104", "9301500", "1", "100"}});
    EXPECT_THAT(listOn(2), SizeIs(1));
    hearHistory({{"B", "20240104", "9301500", "1", "100"}});
    EXPECT_THAT(listOn(2), SizeIs(2));
}

TEST_F(BSPointTodaysTrades, StoresAllOfTodaysRowsUnderTheDayOfTheLastOne)
{
    createOnThreeDays();
    hearToday({{"B", "20240102", "9301500", "1", "100"}, {"S", "20240103", "9301600", "2", "200"}});
    EXPECT_EQ(drawn(), " T ");
    EXPECT_THAT(listOn(1), SizeIs(2));
}

struct UndatedRow
{
    const char *name;
    QJsonValue row;
};

class BSPointTodaysTradesUndatedRow : public BSPointTest, public ::testing::WithParamInterface<UndatedRow>
{
};

TEST_P(BSPointTodaysTradesUndatedRow, PutsTodaysTradesOnDayZeroWhenItIsTheLast)
{
    createOnThreeDays();
    hear(Topic::TRADEQUERY,
         sentAnswer(
             "TodayTrade",
             QJsonArray{SentTrade{"B", "20240103", "9301500", "1", "100"}.in(todaysTrades), GetParam().row}));
    calc(shanghai,
         {makeDayBar(0), makeDayBar(20240103), makeDayBar(static_cast<std::uint32_t>(currentDate()))},
         Korvane::DayPeriod);
    EXPECT_THAT(listOn(0), SizeIs(2));
    EXPECT_THAT(listOn(1), IsEmpty());
    EXPECT_THAT(listOn(2), IsEmpty());
}

QJsonObject todaysRow(const QJsonValue &date)
{
    return with(SentTrade{"B", "", "9301600", "1", "100"}.in(todaysTrades), "orderdate", date);
}

INSTANTIATE_TEST_SUITE_P(Rows, BSPointTodaysTradesUndatedRow,
                         ::testing::Values(UndatedRow{"WithoutADate", todaysRow(QJsonValue::Undefined)},
                                           UndatedRow{"WithADateInWords", todaysRow(QStringLiteral("x"))},
                                           UndatedRow{"WithADateAsANumber", todaysRow(20240103)},
                                           UndatedRow{"ThatIsANumber", 5}),
                         ByName());

TEST_F(BSPointTodaysTrades, LeavesTheTradesOnAnEmptyAnswerOfToday)
{
    createOnThreeDays();
    hearToday({{"B", "20240104", "9301500", "1", "100"}});
    axis.updated.clear();
    hearToday({});
    EXPECT_EQ(drawn(), "  B");
    EXPECT_THAT(axis.updated, IsEmpty());
}

} // namespace
