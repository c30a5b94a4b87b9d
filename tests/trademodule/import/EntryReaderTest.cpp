// What single rows do, of business and columns that few brokers have.
#include "trademodule/import/EntryReader.h"
#include "tests/trademodule/import/StatementTest.h"

namespace TradeModule {

namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;

std::vector<std::string> money(const StatementContents &contents)
{
    std::vector<std::string> lines;
    for (const MoneyEntry &entry : contents.money) {
        lines.push_back((entry.amount.text() + QLatin1Char(' ') + entry.currency).toStdString());
    }
    return lines;
}

const char *const usual = "成交日期,证券代码,业务名称,成交数量,成交价格,发生金额\n";

StatementContents readRows(const char *rows)
{
    return readStatement(QString::fromUtf8(usual) + QString::fromUtf8(rows), {});
}

} // namespace

TEST(EntryReader, TakesIncomeAndExpenseFromColumnsOfTheirOwn)
{
    const StatementContents contents =
        readText("成交日期,证券代码,业务名称,成交数量,成交价格,收入金额,支出金额,资金余额\n"
                 "20240102,,银行转证券,0,0,500000,0,500000\n"
                 "20240103,600519,证券买入,100,1700.00,,170044.20,329955.80\n"
                 "20240104,600519,证券卖出,100,1710.00,170870.04,,500825.84\n");
    EXPECT_THAT(reasons(contents), IsEmpty());
    EXPECT_THAT(described(contents.executions), ElementsAre(HasSubstr("fee 44.20"), HasSubstr("fee 129.96")));
    EXPECT_THAT(money(contents), ElementsAre("500000.00 CNY"));
    EXPECT_FALSE(contents.cashDisagreement);
}

TEST(EntryReader, RefusesIncomeWhereAPurchaseIsTold)
{
    const StatementContents contents = readText("成交日期,证券代码,业务名称,成交数量,成交价格,借方,贷方\n"
                                                "20240103,600519,证券买入,100,1700.00,,170044.20\n");
    EXPECT_THAT(reasons(contents), SizeIs(1));
}

TEST(EntryReader, RefusesMoneyOfWhichOnlyAnUnknownColumnTellsTheAmount)
{
    const StatementContents contents = readText("成交日期,证券代码,业务名称,成交数量,成交价格,甲乙数\n"
                                                "20240103,600519,证券买入,100,1700.00,170000\n"
                                                "20240104,,银行转证券,0,0,5000\n");
    EXPECT_THAT(reasons(contents), ElementsAre(HasSubstr("甲乙数")));
}

TEST(EntryReader, RefusesAPriceWithoutAQuantityUnderAnUnknownWord)
{
    const StatementContents contents =
        readText("成交日期,证券代码,业务名称,买入数量,卖出数量,成交价格,发生金额\n"
                 "20240103,600519,交易,100,0,1700.00,-170044.20\n");
    EXPECT_THAT(reasons(contents), ElementsAre(HasSubstr("neither buy nor sell")));
}

TEST(EntryReader, RefusesCorrectionsOfShares)
{
    const StatementContents contents = readRows("20240103,600519,卖出更正,100,1700.00,169955.80\n"
                                                "20240103,,利息更正,0,0,-0.12\n");
    EXPECT_THAT(reasons(contents), ElementsAre(HasSubstr("卖出更正")));
    EXPECT_THAT(money(contents), ElementsAre("-0.12 CNY"));
}

TEST(EntryReader, TakesATimeBesideTheDateWhereTheTimeIsEmpty)
{
    const StatementContents contents = readText("成交日期,成交时间,证券代码,业务名称,成交数量,成交价格\n"
                                                "20240103,09:35:12,600519,证券买入,100,1700.00\n"
                                                "2024/1/4 09:36:12,,600519,证券买入,100,1700.00\n");
    EXPECT_THAT(described(contents.executions),
                ElementsAre(HasSubstr("20240103 093512"), HasSubstr("20240104 093612")));
}

TEST(EntryReader, TakesMoneyThatCameBackForNoShares)
{
    const StatementContents contents = readRows("20240103,600519,新股认购款划回,100,17.00,1700.00\n");
    EXPECT_THAT(contents.executions, IsEmpty());
    EXPECT_THAT(money(contents), ElementsAre("1700.00 CNY"));
}

TEST(EntryReader, KnowsAManagersFundFromTheShareOfTheSameCode)
{
    const StatementContents contents = readRows("20240103,000509,基金申购,1000,1.00,-1000.00\n"
                                                "20240104,000509,基金赎回,1000,1.00,1000.00\n"
                                                "20240105,000509,证券买入,100,5.00,-505.00\n"
                                                "20240105,510300,基金买入,100,5.00,-505.00\n");
    EXPECT_THAT(described(contents.executions),
                ElementsAre(HasSubstr("in OC000509"), HasSubstr("out OC000509"), HasSubstr("buy SZ000509"),
                            HasSubstr("buy SH510300")));
}

TEST(EntryReader, MovesTheSharesThatAreGivenForUnitsOfAFund)
{
    const StatementContents contents = readRows("20240103,600519,ETF申购,100,0,0\n"
                                                "20240103,510300,ETF申购,900000,0,0\n"
                                                "20240104,510300,ETF赎回,900000,0,0\n"
                                                "20240104,600519,ETF赎回,100,0,0\n");
    EXPECT_THAT(described(contents.executions),
                ElementsAre(HasSubstr("out SH600519"), HasSubstr("in SH510300"), HasSubstr("out SH510300"),
                            HasSubstr("in SH600519")));
}

TEST(EntryReader, TellsTheMoneyOfBSharesInTheirCurrency)
{
    const StatementContents contents = readRows("20240103,900901,红利入账,0,0,10.00\n"
                                                "20240103,200002,红利入账,0,0,20.00\n"
                                                "20240103,000001,红利入账,0,0,30.00\n");
    EXPECT_THAT(money(contents), ElementsAre("10.00 USD", "20.00 HKD", "30.00 CNY"));
}

TEST(EntryReader, LeavesOutTextsAndTotalsWhereverTheyStand)
{
    const StatementContents contents = readText("证券代码,成交日期,业务名称,成交数量,成交价格,发生金额\n"
                                                "600519,20240103,证券买入,100,1700.00,-170044.20\n"
                                                "第1页,,,,,\n"
                                                ",,总计,100,,-170044.20\n");
    EXPECT_THAT(reasons(contents), IsEmpty());
    EXPECT_THAT(contents.executions, SizeIs(1));
}

TEST(EntryReader, TakesTwoPaymentsOfOneSecurityForTwo)
{
    const StatementContents contents = readRows("20240103,600519,网下配售,100,17.00,-1700.00\n"
                                                "20240103,600519,定向增发,100,17.00,-1700.00\n");
    EXPECT_THAT(contents.executions, SizeIs(2));
    EXPECT_THAT(contents.money, IsEmpty());
}

} // namespace TradeModule
