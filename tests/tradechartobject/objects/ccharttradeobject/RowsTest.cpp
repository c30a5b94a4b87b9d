#include "tests/support/ByName.h"
#include "tests/tradechartobject/objects/ccharttradeobject/CChartTradeObjectTest.h"

namespace {

class CChartTradeObjectRows : public CChartTradeObjectTest
{
};

TEST_F(CChartTradeObjectRows, PutsTodaysRowsBehindAndPastRowsInFrontInTheirOrder)
{
    createMarkers();
    EXPECT_TRUE(overlay->parseTradeInfo({buy(11), buy(12)}, true));
    EXPECT_TRUE(overlay->parseTradeInfo({buy(13), buy(14)}, false));
    EXPECT_TRUE(overlay->parseTradeInfo({buy(15)}, true));
    EXPECT_TRUE(overlay->parseTradeInfo({}, true));
    EXPECT_TRUE(overlay->parseTradeInfo({}, false));
    recalc();
    EXPECT_EQ(listAt(0, 10.5, 5),
              (QStringList{line("买入", "13.00"), line("买入", "14.00"), line("买入", "11.00"),
                           line("买入", "12.00"), line("买入", "15.00")}));
}

TEST_F(CChartTradeObjectRows, StandsEveryTradeOnTheFirstBarWhateverItsDate)
{
    createMarkers();
    hearHistory({buy(10), with(buy(10), "date", QStringLiteral("20240104"))});
    recalc();
    EXPECT_EQ(drawn(), "0 - -");
    EXPECT_EQ(listAt(0, 10.5, 2), (QStringList{line("买入", "10.00"), line("买入", "10.00")}));
}

struct RowCase
{
    const char *name;
    QJsonValue row;
    QString listed;
};

class CChartTradeObjectRowsEach : public CChartTradeObjectTest, public ::testing::WithParamInterface<RowCase>
{
};

TEST_P(CChartTradeObjectRowsEach, IsReadFromJsonNumbersAndBooleans)
{
    createMarkers();
    hearHistory({GetParam().row});
    std::vector<Korvane::AnalyData> bars = threeDays;
    bars[0].close = -1.0;
    calc(shanghai, bars, Korvane::DayPeriod);
    EXPECT_EQ(listAt(0, 10.5, 1), QStringList{GetParam().listed});
}

INSTANTIATE_TEST_SUITE_P(
    Rows, CChartTradeObjectRowsEach,
    ::testing::Values(RowCase{"ABuy", buy(10.5, 300), line("买入", "10.50", "300")},
                      RowCase{"ASell", sell(10.5, 300), line("卖出", "10.50", "300")},
                      RowCase{"WithTextsAsASellOfNothing",
                              QJsonObject{{QStringLiteral("buy"), QStringLiteral("true")},
                                          {QStringLiteral("price"), QStringLiteral("10.5")},
                                          {QStringLiteral("vol"), QStringLiteral("300")}},
                              line("卖出", "0.00", "0")},
                      RowCase{"WithoutFieldsAsASellOfNothing", QJsonObject(), line("卖出", "0.00", "0")},
                      RowCase{"ThatIsNoObjectAsASellOfNothing", 5, line("卖出", "0.00", "0")},
                      RowCase{"WithTheBusesOwnSideAsASell",
                              QJsonObject{{QStringLiteral("bsflag2"), QStringLiteral("B")},
                                          {QStringLiteral("price"), 1.0}},
                              line("卖出", "1.00", "0")}),
    ByName());

} // namespace
