#include "tests/support/ByName.h"
#include "tests/tradechartobject/objects/bspoint/BSPointTest.h"

using namespace TradeChart;

namespace {

struct SideText
{
    const char *name;
    QJsonValue sent;
    char drawn;
};

class BSPointFieldsSide : public BSPointTest, public ::testing::WithParamInterface<SideText>
{
};

TEST_P(BSPointFieldsSide, IsABuyForTheSingleLetterOnly)
{
    createOnThreeDays();
    QJsonObject row = SentTrade{"", "20240103", "9301500", "1", "100"}.in(pastTrades);
    row.insert(QStringLiteral("bsflag2"), GetParam().sent);
    hear(Topic::TRADEQUERY, sentAnswer("HistoryTrade", QJsonArray{row}));
    EXPECT_EQ(drawn(), std::string(" ") + GetParam().drawn + " ");
    row.insert(QStringLiteral("orderdate"), QStringLiteral("20240104"));
    hear(Topic::TRADEQUERY, sentAnswer("TodayTrade", QJsonArray{row}));
    EXPECT_EQ(drawn(), std::string(" ") + GetParam().drawn + GetParam().drawn);
}

INSTANTIATE_TEST_SUITE_P(Texts, BSPointFieldsSide,
                         ::testing::Values(SideText{"CapitalB", QStringLiteral("B"), 'B'},
                                           SideText{"SmallB", QStringLiteral("b"), 'S'},
                                           SideText{"OrderBuyCode", QStringLiteral("0B"), 'S'},
                                           SideText{"CapitalS", QStringLiteral("S"), 'S'},
                                           SideText{"BWithABlank", QStringLiteral("B "), 'S'},
                                           SideText{"Empty", QString(), 'S'},
                                           SideText{"Missing", QJsonValue(QJsonValue::Undefined), 'S'},
                                           SideText{"Number", 1, 'S'}),
                         ByName());

struct TimeText
{
    const char *name;
    const char *time;
    const char *shown;
};

class BSPointFieldsTime : public BSPointTest, public ::testing::WithParamInterface<TimeText>
{
};

TEST_P(BSPointFieldsTime, CarriesHundredthsThatAreDropped)
{
    createOnThreeDays();
    hearHistory({{"B", "20240102", GetParam().time, "10.5", "300"}});
    hearToday({{"B", "20240103", GetParam().time, "10.5", "300"}});
    const QString line =
        QStringLiteral("买入\t%1\t成交价:10.50\t成交量:300").arg(QLatin1String(GetParam().shown));
    EXPECT_EQ(listOn(0), QStringList{line});
    EXPECT_EQ(listOn(1), QStringList{line});
}

INSTANTIATE_TEST_SUITE_P(Times, BSPointFieldsTime,
                         ::testing::Values(TimeText{"WithoutLeadingZero", "9301500", "09:30:15"},
                                           TimeText{"WithLeadingZero", "09301599", "09:30:15"},
                                           TimeText{"Afternoon", "14595999", "14:59:59"},
                                           TimeText{"WithoutHundredthsMovesTwoPlaces", "93015", "00:09:30"},
                                           TimeText{"Words", "noon", "00:00:00"},
                                           TimeText{"Empty", "", "00:00:00"}),
                         ByName());

class BSPointFields : public BSPointTest
{
};

TEST_F(BSPointFields, StoresARowWithoutFieldsAsASellOfNothingOnDayZero)
{
    createOnThreeDays();
    hear(Topic::TRADEQUERY, sentAnswer("HistoryTrade", QJsonArray{QJsonObject(), 5, QStringLiteral("x")}));
    calc(shanghai, {makeDayBar(0), makeDayBar(20240102)}, Korvane::DayPeriod);
    EXPECT_EQ(drawn(), "S ");
    EXPECT_EQ(listOn(0), (QStringList{QStringLiteral("卖出\t00:00:00\t成交价:0.00\t成交量:0"),
                                      QStringLiteral("卖出\t00:00:00\t成交价:0.00\t成交量:0"),
                                      QStringLiteral("卖出\t00:00:00\t成交价:0.00\t成交量:0")}));
}

TEST_F(BSPointFields, ReadsJsonNumbersAsZero)
{
    createOnThreeDays();
    const QJsonObject row{{QStringLiteral("bsflag2"), QStringLiteral("B")},
                          {QStringLiteral("bizdate"), QStringLiteral("20240103")},
                          {QStringLiteral("matchtime"), 9301500},
                          {QStringLiteral("matchprice"), 10.5},
                          {QStringLiteral("matchqty"), 300}};
    hear(Topic::TRADEQUERY, sentAnswer("HistoryTrade", QJsonArray{row}));
    EXPECT_EQ(listOn(1), QStringList{QStringLiteral("买入\t00:00:00\t成交价:0.00\t成交量:0")});
}

struct OddRow
{
    const char *name;
    QJsonObject row;
    const char *line;
};

class BSPointFieldsOfAnOddRow : public BSPointTest, public ::testing::WithParamInterface<OddRow>
{
};

TEST_P(BSPointFieldsOfAnOddRow, StandsOnTheDayItsDateReadsAs)
{
    createOnThreeDays();
    hear(Topic::TRADEQUERY, sentAnswer("HistoryTrade", QJsonArray{GetParam().row}));
    calc(shanghai, {makeDayBar(0), makeDayBar(20240102)}, Korvane::DayPeriod);
    EXPECT_EQ(listOn(GetParam().row.value(QStringLiteral("bizdate")).toString() == QStringLiteral("20240102")
                         ? 1
                         : 0),
              QStringList{QString::fromUtf8(GetParam().line)});
}

QJsonObject oddRow(const QJsonValue &date, const char *time, const char *price, const char *quantity)
{
    return with(SentTrade{"B", "", time, price, quantity}.in(pastTrades), "bizdate", date);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, BSPointFieldsOfAnOddRow,
    ::testing::Values(
        OddRow{"ADateAsANumber", oddRow(20240102, "9301500", "1", "1"),
               "买入\t09:30:15\t成交价:1.00\t成交量:1"},
        OddRow{"ADateBeyondAllRange", oddRow(QStringLiteral("99999999999"), "9301500", "1", "1"),
               "买入\t09:30:15\t成交价:1.00\t成交量:1"},
        OddRow{"ADateWithALetter", oddRow(QStringLiteral("20240102x"), "9301500", "1", "1"),
               "买入\t09:30:15\t成交价:1.00\t成交量:1"},
        OddRow{"APriceInWords", oddRow(QStringLiteral("20240102"), "9301500", "abc", "1"),
               "买入\t09:30:15\t成交价:0.00\t成交量:1"},
        OddRow{"APriceThatIsNoNumber", oddRow(QStringLiteral("20240102"), "9301500", "nan", "inf"),
               "买入\t09:30:15\t成交价:nan\t成交量:inf"},
        OddRow{"ATimeBelowZeroCutTowardsZero", oddRow(QStringLiteral("20240102"), "-150", "1", "1"),
               "买入\t99:99:99\t成交价:1.00\t成交量:1"}),
    ByName());

} // namespace
