#include "tests/support/ByName.h"
#include "tests/trademodule/import/StatementTest.h"
#include "trademodule/Error.h"

#include <QDate>

namespace TradeModule {

namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

const char *const header =
    "成交日期,成交时间,证券代码,证券名称,买卖标志,成交价格,成交数量,成交金额,成交编号\n";

StatementContents readRows(const std::string &rows)
{
    return readText((header + rows).c_str());
}

std::string refusalOf(const char *text, const ReadOptions &options = {})
{
    try {
        readText(text, options);
    } catch (const Error &error) {
        return error.what();
    }
    return "no refusal";
}

} // namespace

TEST(StatementReader, IgnoresWhatStandsAroundTheEntries)
{
    const std::string row = "20210811,11:03:51,600000,浦发银行,买入,9.10,100,910.00,1\n";
    const StatementContents contents =
        readText(("# 导出时间 2021-08-12\n客户: 张三 资金账号: 1\n\n" + std::string(header) + row +
                  "\n--------,--------\n" + header + row + ",合计,,,,,100,910.00,\n打印日期: 2021-08-12\n")
                     .c_str());

    EXPECT_THAT(described(contents.executions),
                ElementsAre("20210811 11035100 buy SH600000 100 at 9.10 = 910.00 fee 0.00 deal 1"));
    EXPECT_EQ(contents.kinds.at(Outcome::Nothing).at(QStringLiteral("totals")), 1);
    EXPECT_THAT(reasons(contents), IsEmpty());
}

struct Footer
{
    std::string name;
    std::string text;
};

class StatementReaderFooter : public ::testing::TestWithParam<Footer>
{
};

TEST_P(StatementReaderFooter, IsNoEntryInUtf8NorInGbk)
{
    const QString text = QString::fromUtf8(header) +
                         QStringLiteral("20210811,11:03:51,600000,浦发银行,买入,9.10,100,910.00,1\r\n") +
                         QString::fromStdString(GetParam().text);
    for (const char *encoding : {"UTF-8", "GBK"}) {
        const QByteArray bytes = QTextCodec::codecForName(encoding)->fromUnicode(text);
        const StatementContents contents = readStatement(decodeStatement(bytes), {});
        EXPECT_EQ(contents.executions.size(), 1) << encoding;
        EXPECT_THAT(reasons(contents), IsEmpty()) << encoding;
    }
}

INSTANTIATE_TEST_SUITE_P(Of, StatementReaderFooter,
                         ::testing::Values(Footer{"Sum", ",合计,,,100,,3000,-3000,\r\n"},
                                           Footer{"Total", "总计,,,,,,100,910.00,\r\n"},
                                           Footer{"Page", "本页小计,,,,,,100,910.00,\r\n第1页 共1页\r\n"},
                                           Footer{"Printed", "\r\n打印日期：2021-08-12 10:00:00\r\n"},
                                           Footer{"Rule", "--------------------\r\n"},
                                           Footer{"Note", "备注：以上数据仅供参考,请以交割单为准\r\n"},
                                           Footer{"Commas", ",,,,,,,,\r\n"}, Footer{"EndOfFile", "\x1A"}),
                         ByName());

TEST(StatementReader, DropsARowThatRepeatsADeal)
{
    const std::string row = "20210811,11:03:51,600000,浦发银行,买入,9.10,100,910.00,1\n";

    const StatementContents contents = readRows(row + row);

    EXPECT_EQ(contents.executions.size(), 1);
    EXPECT_EQ(contents.repeatedRows, 1);
}

TEST(StatementReader, KeepsEqualFillsThatHaveNoDealNumberAndCountsThem)
{
    const std::string row = "20210811,11:03:51,600000,浦发银行,买入,9.10,100,910.00,\n";

    const StatementContents contents = readRows(row + row + row);

    EXPECT_EQ(contents.executions.size(), 3);
    EXPECT_EQ(contents.equalRows, 2);
}

TEST(StatementReader, KeepsTheOrderOfASecondInAListThatStartsWithTheNewest)
{
    const StatementContents contents = readRows("20210812,10:00:00,600000,浦发银行,卖出,9.20,100,920.00,3\n"
                                                "20210811,10:00:00,600000,浦发银行,卖出,9.10,100,910.00,2\n"
                                                "20210811,10:00:00,600000,浦发银行,买入,9.10,100,910.00,1\n");

    ASSERT_EQ(contents.executions.size(), 3);
    EXPECT_EQ(contents.executions[0].dealNo, QStringLiteral("1"));
    EXPECT_EQ(contents.executions[2].dealNo, QStringLiteral("3"));
}

TEST(StatementReader, FindsTheCodesOfAStatementWithoutThemInTheUsersList)
{
    // the side is in the remark, sells are negative
    const char *const text =
        "发生日期\t证券名称\t委托编号\t成交数量\t成交价格\t成交金额\t手续费\t印花税\t清算金额\t"
        "备注\t成交时间\n"
        "20210811\t浦发银行\t5\t-100\t9.10\t910.00\t5\t0.91\t904.09\t证券卖出\t10:00:00\n"
        "20210811\tXD浦发银\t6\t100\t9.10\t910.00\t5\t0\t-915.00\t证券买入\t10:00:00\n";
    ReadOptions options;
    options.securitiesByName.insert(QStringLiteral("浦发银行"), {QStringLiteral("600000"), Market::Shanghai});

    const StatementContents contents = readText(text, options);

    EXPECT_THAT(described(contents.executions),
                ElementsAre("20210811 10000000 sell SH600000 100 at 9.10 = 910.00 fee 5.91 order 5"));
    EXPECT_THAT(reasons(contents), ElementsAre("3: the name \"XD浦发银\" is not in the list of securities"));
}

TEST(StatementReader, SaysHowToImportAStatementWithoutCodes)
{
    EXPECT_THAT(refusalOf("发生日期\t证券名称\t成交数量\t成交价格\t备注\n"), HasSubstr("--securities"));
}

TEST(StatementReader, SaysHowToImportAStatementWithoutDates)
{
    EXPECT_THAT(refusalOf("成交时间\t证券代码\t操作\t成交数量\t成交均价\n"), HasSubstr("--date"));
}

TEST(StatementReader, DoesNotGuessBetweenTheStatementsDatesAndTheUsers)
{
    ReadOptions options;
    options.date = TradingDate::of(2024, 1, 2);
    EXPECT_THAT(refusalOf("成交日期\t证券代码\t操作\t成交数量\t成交均价\n", options),
                HasSubstr("leave --date out"));
}

TEST(StatementReader, SaysWhatIsMissingInATextThatIsNoStatement)
{
    EXPECT_THAT(refusalOf("hello,world\n1,2\n"), HasSubstr("成交价格"));
    EXPECT_THAT(refusalOf(""), HasSubstr("header"));
}

struct BadCell
{
    std::string name;
    std::string row;
    std::string reason;
};

class StatementReaderBadRow : public ::testing::TestWithParam<BadCell>
{
};

TEST_P(StatementReaderBadRow, IsReportedWithItsLineAndReason)
{
    const StatementContents contents =
        readRows("20210811,10:00:00,600000,浦发银行,买入,9.10,100,910.00,1\n" + GetParam().row + "\n");

    EXPECT_EQ(contents.executions.size(), 1);
    ASSERT_EQ(contents.badRows.size(), 1);
    EXPECT_EQ(contents.badRows[0].line, 3);
    EXPECT_THAT(contents.badRows[0].reason.toStdString(), HasSubstr(GetParam().reason));
}

INSTANTIATE_TEST_SUITE_P(
    Of, StatementReaderBadRow,
    ::testing::Values(
        BadCell{"Date", "2021081,10:00:00,600000,浦发银行,买入,9.10,100,910.00,2", "\"2021081\" is no date"},
        BadCell{"DateThatIsNone", "20210231,10:00:00,600000,浦发银行,买入,9.10,100,910.00,2", "is no date"},
        BadCell{"FutureDate", "20991231,10:00:00,600000,浦发银行,买入,9.10,100,910.00,2", "in the future"},
        BadCell{"Time", "20210811,25:00:00,600000,浦发银行,买入,9.10,100,910.00,2",
                "\"25:00:00\" is no time"},
        BadCell{"Code", "20210811,10:00:00,浦发,浦发银行,买入,9.10,100,910.00,2", "\"浦发\" is no code"},
        BadCell{"Side", "20210811,10:00:00,600000,浦发银行,交换,9.10,100,910.00,2", "neither buy nor sell"},
        BadCell{"Price", "20210811,10:00:00,600000,浦发银行,买入,9.x,100,910.00,2",
                "price \"9.x\" is no number"},
        BadCell{"NegativePrice", "20210811,10:00:00,600000,浦发银行,买入,-9.1,100,910.00,2",
                "price is negative"},
        BadCell{"Quantity", "20210811,10:00:00,600000,浦发银行,买入,9.10,1oo,910.00,2", "quantity \"1oo\""},
        BadCell{"PartOfAShare", "20210811,10:00:00,600000,浦发银行,买入,9.10,100.5,914.55,2", "whole shares"},
        BadCell{"NegativeBuy", "20210811,10:00:00,600000,浦发银行,买入,9.10,-100,910.00,2", "negative"},
        BadCell{"EndlessDealNumber",
                "20210811,10:00:00,600000,浦发银行,买入,9.10,100,910.00," + std::string(65, '7'),
                "longer than the 64 characters"},
        BadCell{"AmountOfMoreThanAnyAccountHas",
                "20210811,10:00:00,600000,浦发银行,买入,1000000,1000000000000,,2",
                "price × quantity, is too large: 1000000.00 × 1000000000000"},
        BadCell{"SpoiltNumber", "20210811,10:00:00,600000,浦发银行,买入,9.10,100,910.00,1.05E+14",
                "the column 成交编号 holds \"1.05E+14\""},
        BadCell{"CutShort", "20210811,10:00:00,600000,浦发银行,买入,9.10,10", "cut short"},
        BadCell{"TooLong", "20210811,10:00:00,600000,浦发,银行,买入,9.10,100,910.00,2",
                "neither buy nor sell"},
        BadCell{"OneCellTooMany", "20210811,10:00:00,600000,浦发银行,买入,9.10,100,910.00,2,x",
                "the header only 9"},
        BadCell{"CodeOfNoMarket", "20210811,10:00:00,SH300750,浦发银行,买入,9.10,100,910.00,2",
                "there is no code 300750 on the market SH"},
        BadCell{"SlippedColumns", "20210811,10:00:00,600000,浦发银行,买入,100,910.00,1,2",
                "not price × quantity"}),
    ByName());

TEST(StatementReader, RefusesASellThatPaidMoney)
{
    const StatementContents contents =
        readText("成交日期,证券代码,买卖标志,成交价格,成交数量,成交金额,发生金额\n"
                 "20210811,600000,卖出,9.10,100,910.00,-915.02\n");

    EXPECT_THAT(reasons(contents), ElementsAre(HasSubstr("that of a buy")));
}

TEST(StatementReader, RefusesABuyThatReceivedMoney)
{
    const StatementContents contents =
        readText("成交日期,证券代码,买卖标志,成交价格,成交数量,成交金额,发生金额\n"
                 "20210811,600000,买入,9.10,100,910.00,905.02\n");

    EXPECT_THAT(reasons(contents), ElementsAre(HasSubstr("that of a sell")));
}

TEST(StatementReader, TakesTheDirectionFromWordsWhereNoAmountHasASign)
{
    const StatementContents contents =
        readText("成交日期,证券代码,业务名称,成交价格,成交数量,成交金额,发生金额\n"
                 "20210811,600000,证券买入,9.10,100,910.00,915.02\n"
                 "20210812,600000,证券卖出,9.20,100,920.00,914.10\n"
                 "20210813,600000,红利入账,0,0,0,32.00\n"
                 "20210813,600000,红利税补缴,0,0,0,3.20\n"
                 "20210814,,银行转取,0,0,0,500.00\n");

    EXPECT_THAT(described(contents.executions),
                ElementsAre("20210811 00000000 buy SH600000 100 at 9.10 = 910.00 fee 5.02",
                            "20210812 00000000 sell SH600000 100 at 9.20 = 920.00 fee 5.90"));
    ASSERT_EQ(contents.money.size(), 3);
    EXPECT_EQ(contents.money[0].amount, Money::ofCents(3200));
    EXPECT_EQ(contents.money[1].amount, Money::ofCents(-320));
    EXPECT_EQ(contents.money[2].amount, Money::ofCents(-50000));
    EXPECT_THAT(reasons(contents), IsEmpty());
}

TEST(StatementReader, RefusesMoneyWithoutASignWhoseWordSaysNoDirection)
{
    const StatementContents contents =
        readText("成交日期,证券代码,业务名称,成交价格,成交数量,成交金额,发生金额\n"
                 "20210811,600000,证券买入,9.10,100,910.00,915.02\n"
                 "20210814,,银证转账,0,0,0,500.00\n");

    EXPECT_THAT(reasons(contents),
                ElementsAre(HasSubstr("3: \"银证转账\" does not say whether money came or went")));
}

TEST(StatementReader, ChecksBuysAndSellsWithoutSignsAgainstTheAmount)
{
    const StatementContents contents =
        readText("成交日期,证券代码,业务名称,成交价格,成交数量,成交金额,发生金额\n"
                 "20210811,600000,证券买入,9.10,100,910.00,915.02\n"
                 "20210812,600000,证券买入,9.10,100,910.00,904.98\n"
                 "20210813,600000,证券卖出,9.10,100,910.00,915.02\n");

    EXPECT_THAT(reasons(contents),
                ElementsAre(HasSubstr("3: the entry says buy"), HasSubstr("4: the entry says sell")));
}

TEST(StatementReader, RefusesRowsOfATableThatIsNoStatement)
{
    const StatementContents contents =
        readText("成交日期,证券代码,操作,成交价格,成交数量\n20210811,600000,买入,9.10,100\n"
                 "证券代码,证券名称,库存数量,市场名称\n600000,浦发银行,100,上海\n");

    EXPECT_EQ(contents.executions.size(), 1);
    EXPECT_THAT(reasons(contents), ElementsAre(HasSubstr("3: another table begins here")));
}

TEST(StatementReader, RefusesAStatementOfTwoAccountsUnlessOneIsChosen)
{
    const char *const text =
        "成交日期,证券代码,操作,成交价格,成交数量,资金帐号\n20210811,600000,买入,9.10,100,111\n"
        "20210811,600000,买入,9.10,300,222\n";
    EXPECT_THAT(refusalOf(text), HasSubstr("several accounts, 111, 222"));

    ReadOptions options;
    options.accounts = QStringList{QStringLiteral("222")};
    const StatementContents contents = readText(text, options);

    ASSERT_EQ(contents.executions.size(), 1);
    EXPECT_EQ(contents.executions[0].quantity, 300);
    EXPECT_EQ(contents.account, QStringLiteral("222"));
}

TEST(StatementReader, RefusesTablesOfTwoAccountsBelowTheirNamesUnlessOneIsChosen)
{
    const char *const text = "资金账号：880001\n成交日期,证券代码,操作,成交价格,成交数量\n"
                             "20210811,600000,买入,9.10,100\n"
                             "资金账号：,880002\n成交日期,证券代码,操作,成交价格,成交数量\n"
                             "20210811,600000,买入,9.10,300\n";
    EXPECT_THAT(refusalOf(text), HasSubstr("several accounts, 880001, 880002"));

    for (const auto &[account, quantity] : {std::pair("880001", 100), std::pair("880002", 300)}) {
        ReadOptions options;
        options.accounts = QStringList{QLatin1String(account)};
        const StatementContents contents = readText(text, options);
        ASSERT_EQ(contents.executions.size(), 1);
        EXPECT_EQ(contents.executions[0].quantity, quantity);
    }
}

TEST(StatementReader, TakesAnAccountInATitleForThatOfTheOneInTheColumn)
{
    const StatementContents contents =
        readText("客户号：1234 资金账号：88****01\n成交日期,证券代码,操作,成交价格,成交数量,资金账号\n"
                 "20210811,600000,买入,9.10,100,880001\n");

    EXPECT_EQ(contents.executions.size(), 1);
    EXPECT_EQ(contents.account, QStringLiteral("880001"));
}

TEST(StatementReader, RefusesADealWhoseOrderIsSaidToBeTakenBack)
{
    const StatementContents contents =
        readText("成交日期,证券代码,操作,成交价格,成交数量,成交金额,委托状态,撤单标志\n"
                 "20210811,600000,买入,9.10,100,910.00,已撤,否\n"
                 "20210811,600000,买入,9.10,100,910.00,已成,是\n"
                 "20210811,600000,买入,9.10,100,910.00,已成,否\n");

    EXPECT_EQ(contents.executions.size(), 1);
    EXPECT_THAT(reasons(contents), ElementsAre(HasSubstr("2: \"已撤\" says that nothing was dealt"),
                                               HasSubstr("3: \"是\" says that nothing was dealt")));
    EXPECT_EQ(contents.badRows[0].column, QStringLiteral("委托状态"));
}

TEST(StatementReader, RefusesAQuantityInLotsThatOnlyTheAccountsMoneyShows)
{
    const StatementContents contents = readText("成交日期,证券代码,操作,成交价格,成交数量,发生金额\n"
                                                "20240104,600000,买入,7.00,10,-7005.07\n");

    EXPECT_THAT(reasons(contents), ElementsAre(HasSubstr("is the quantity in lots?")));
}

TEST(StatementReader, RefusesOneCodeOnTwoMarketsThatNothingTells)
{
    const StatementContents contents = readText("成交日期,证券代码,操作,成交价格,成交数量,市场代码\n"
                                                "20240102,000001,买入,10.00,100,0\n"
                                                "20240102,000001,买入,3000.00,100,1\n"
                                                "20240102,600000,买入,7.00,100,1\n");

    EXPECT_EQ(contents.executions.size(), 2);
    EXPECT_THAT(reasons(contents), ElementsAre(HasSubstr("3: the code 000001 stands beside the markets")));
}

TEST(StatementReader, TakesNoSecurityForATotalByItsName)
{
    const StatementContents contents = readText("成交日期,证券名称,证券代码,操作,成交价格,成交数量\n"
                                                "20240102,合计科技,600000,买入,7.00,1000\n"
                                                "20240102,日合计,,,,1000\n");

    EXPECT_EQ(contents.executions.size(), 1);
    EXPECT_THAT(reasons(contents), IsEmpty());
}

TEST(StatementReader, RefusesAColumnOfAnUnknownUnit)
{
    EXPECT_THAT(refusalOf("成交日期,证券代码,操作,成交价格,成交数量(十手)\n20240102,600000,买入,7.00,10\n"),
                HasSubstr("the unit in the name of the column 成交数量"));
    const StatementContents contents = readText("成交日期,证券代码,操作,成交价格(人民币),成交数量(百手)\n"
                                                "20240102,600000,买入,7.00,1\n20240102,113050,买入,110,1\n");
    EXPECT_THAT(described(contents.executions),
                ElementsAre("20240102 00000000 buy SH600000 10000 at 7.00 = 70000.00 fee 0.00",
                            "20240102 00000000 buy SH113050 1000 at 110.00 = 110000.00 fee 0.00"));
}

TEST(StatementReader, CountsPurchasesOfLessThanALot)
{
    const StatementContents contents = readText("成交日期,证券代码,操作,成交价格,成交数量\n"
                                                "20240104,600000,买入,7.00,10\n"
                                                "20240104,600000,买入,7.00,200\n"
                                                "20240104,113050,买入,115.00,10\n"
                                                "20240104,600000,卖出,7.00,10\n");

    EXPECT_EQ(contents.purchases.rows, 3);
    EXPECT_EQ(contents.belowALot.rows, 1);
    EXPECT_EQ(contents.belowALot.firstLine, 2);
}

TEST(StatementReader, NamesColumnsThatItDoesNotKnow)
{
    const StatementContents contents =
        readText("成交日期,证券代码,操作,成交价格,成交数量,神秘列\n20210811,600000,买入,9.10,100,7\n");

    EXPECT_EQ(contents.unknownColumns, QStringList{QStringLiteral("神秘列")});
}

TEST(StatementReader, ReadsColumnsAndWordsOfAProfile)
{
    ReadOptions options;
    options.profile = ImportProfile::ofText(QStringLiteral("column 发生日 = date\nword 撮合 = buy\n"));

    const StatementContents contents =
        readText("发生日,证券代码,操作,成交价格,成交数量\n20210811,600000,撮合,9.10,100\n", options);

    EXPECT_THAT(described(contents.executions),
                ElementsAre("20210811 00000000 buy SH600000 100 at 9.10 = 910.00 fee 0.00"));
}

TEST(StatementReader, KeepsTheNewestNameOfASecurity)
{
    const StatementContents contents =
        readText("成交日期,证券代码,证券名称,操作,成交价格,成交数量\n20210812,600000,新名,买入,9.10,100\n"
                 "20210811,600000,旧名,买入,9.10,100\n");

    EXPECT_EQ(contents.names.value({QStringLiteral("600000"), Market::Shanghai}), QStringLiteral("新名"));
}

TEST(StatementReader, NamesTheFirstRowWhoseCashDoesNotFollow)
{
    const StatementContents contents =
        readText("发生日期,业务名称,发生金额,资金余额\n20240102,银行转存,100.00,100.00\n"
                 "20240103,银行转存,100.00,200.00\n20240104,银行转存,100.00,350.00\n");

    ASSERT_TRUE(contents.cashDisagreement);
    EXPECT_EQ(contents.cashDisagreement->line, 4);
    EXPECT_EQ(contents.cashDisagreement->expected.text(), QStringLiteral("300.00"));
    ASSERT_TRUE(contents.cash);
    EXPECT_EQ(contents.cash->balance.text(), QStringLiteral("350.00"));
}

TEST(StatementReader, AcceptsCashInAnyOrderWithinADay)
{
    const StatementContents contents =
        readText("发生日期,业务名称,发生金额,资金余额\n20240102,银行转存,100.00,100.00\n"
                 "20240103,银行转取,-50.00,250.00\n20240103,银行转存,200.00,300.00\n");

    EXPECT_FALSE(contents.cashDisagreement);
}

TEST(StatementReader, TakesAnApplicationForMoneyThatWentWhereNoNetAmountTells)
{
    const StatementContents contents = readText("成交日期,证券代码,操作,成交价格,成交数量,成交金额\n"
                                                "20210811,600000,新股申购,10.00,1000,10000.00\n");

    ASSERT_EQ(contents.money.size(), 1);
    EXPECT_EQ(contents.money[0].amount.text(), QStringLiteral("-10000.00"));
}

TEST(StatementReader, TakesAFundOfNoExchangeForShares)
{
    const StatementContents contents = readText("成交日期,证券代码,操作,成交价格,成交数量,交易市场\n"
                                                "20210811,000001,基金申购,1.00,1000,开放式基金\n");

    EXPECT_THAT(described(contents.executions),
                ElementsAre("20210811 00000000 in OC000001 1000 at 1.00 = 1000.00 fee 0.00"));
}

TEST(StatementReader, CountsACommissionThatStandsInTwoColumnsOnce)
{
    const StatementContents contents =
        readText("成交日期,证券代码,买卖标志,成交价格,成交数量,手续费,佣金,印花税\n"
                 "20210811,600000,卖出,9.10,100,5.00,5.00,0.91\n"
                 "20210812,600000,卖出,9.10,100,1.00,5.00,0.91\n");

    ASSERT_EQ(contents.executions.size(), 2);
    EXPECT_EQ(contents.executions[0].fee.text(), QStringLiteral("5.91"));
    EXPECT_EQ(contents.executions[1].fee.text(), QStringLiteral("6.91"));
}

TEST(StatementReader, TellsTheStampDutyOfAFeeApart)
{
    const StatementContents contents =
        readText("成交日期,证券代码,买卖标志,成交价格,成交数量,手续费,股票印花税,过户费\n"
                 "20210811,600000,卖出,9.10,100,5.00,0.91,0.01\n"
                 "20210812,600000,买入,9.10,100,5.00,0.00,0.01\n");

    ASSERT_EQ(contents.executions.size(), 2);
    EXPECT_EQ(contents.executions[0].fee.text(), QStringLiteral("5.92"));
    EXPECT_EQ(contents.executions[0].stampDuty.text(), QStringLiteral("0.91"));
    EXPECT_EQ(contents.executions[1].stampDuty.text(), QStringLiteral("0.00"));
}

TEST(StatementReader, KnowsNoStampDutyWhereFeesAreOneSum)
{
    const StatementContents contents = readText("成交日期,证券代码,买卖标志,成交价格,成交数量,总费用\n"
                                                "20210811,600000,卖出,9.10,100,5.92\n");

    ASSERT_EQ(contents.executions.size(), 1);
    EXPECT_EQ(contents.executions[0].fee.text(), QStringLiteral("5.92"));
    EXPECT_TRUE(contents.executions[0].stampDuty.isZero());
}

TEST(StatementReader, TakesTheMarketFromItsWordsBeforeTheHolderBeforeTheCode)
{
    const StatementContents contents =
        readText("成交日期,证券代码,买卖标志,成交价格,成交数量,交易市场,股东代码\n"
                 "20210811,000001,买入,9.10,100,深A,A1\n"
                 "20210811,159915,买入,2.10,100,,0123\n"
                 "20210811,600000.SH,买入,9.10,100,2,\n"
                 "20210811,SZ000002,买入,9.10,100,,\n"
                 "20210811,830799,买入,9.10,100,,\n");

    ASSERT_EQ(contents.executions.size(), 5);
    EXPECT_EQ(contents.executions[0].security.market, Market::Shenzhen);
    EXPECT_EQ(contents.executions[1].security.market, Market::Shenzhen);
    EXPECT_EQ(contents.executions[2].security.market, Market::Shanghai);
    EXPECT_EQ(contents.executions[3].security.market, Market::Shenzhen);
    EXPECT_EQ(contents.executions[4].security.market, Market::Beijing);
}

TEST(StatementReader, UnderstandsNumbersForSidesOnlyInAColumnOfSides)
{
    const StatementContents sides = readText("成交日期,证券代码,买卖标志,成交价格,成交数量\n"
                                             "20210811,600000,1,9.10,100\n20210811,600000,2,9.10,100\n");
    const StatementContents businesses = readText("成交日期,证券代码,业务名称,成交价格,成交数量\n"
                                                  "20210811,600000,1,9.10,100\n");

    ASSERT_EQ(sides.executions.size(), 2);
    EXPECT_EQ(sides.executions[0].side, Side::Buy);
    EXPECT_EQ(sides.executions[1].side, Side::Sell);
    EXPECT_EQ(businesses.badRows.size(), 1);
}

} // namespace TradeModule
