// The program itself, spoken to by a Chinese trader.
#include "tests/trademodule/support/ProgramFixture.h"
#include "trademodule/cli/Console.h"

namespace TradeModule {

namespace {

using ::testing::HasSubstr;
using ::testing::Not;

const QStringList chinese{QStringLiteral("--lang"), QStringLiteral("zh")};

/// The screen column where a text stands in a line.
int columnOf(const QString &text, const QString &line)
{
    EXPECT_TRUE(line.contains(text)) << line.toStdString();
    return screenWidth(line.left(line.indexOf(text)));
}

class ChineseProgram : public Program
{
protected:
    Ended inChinese(const QStringList &arguments) { return runOnLedger(chinese + arguments); }

    Ended placeBuy(const QString &price)
    {
        return inChinese({QStringLiteral("place"), QStringLiteral("600519"), QStringLiteral("buy"), price,
                          QStringLiteral("100")});
    }
};

} // namespace

TEST_F(ChineseProgram, ExplainsItself)
{
    const Ended all = run(chinese + QStringList{QStringLiteral("--help")});
    EXPECT_THAT(all.output, HasSubstr("用法：")) << all.errors;
    EXPECT_THAT(all.output, HasSubstr("  orders     列出某日的委托。"));
    EXPECT_THAT(all.output, Not(HasSubstr("Display")));

    const Ended one = run(chinese + QStringList{QStringLiteral("account"), QStringLiteral("--help")});
    EXPECT_THAT(one.output, HasSubstr("先将资金余额设为此金额（元）。"));
}

TEST_F(ChineseProgram, SaysWhyAnOrderIsRefused)
{
    const Ended ended = placeBuy(QStringLiteral("10.001"));

    EXPECT_EQ(ended.exitCode, 1);
    EXPECT_EQ(ended.errors, "trademodule: 价格应为 0.01 元的整数倍\n");
}

TEST_F(ChineseProgram, SaysWhyAFileCannotBeRead)
{
    EXPECT_EQ(inChinese({QStringLiteral("import"), QStringLiteral("/nowhere/statement.csv")}).errors,
              "trademodule: /nowhere/statement.csv: 无法读取：没有那个文件或目录\n");
}

TEST_F(ChineseProgram, ListsOrdersInAnAlignedTable)
{
    EXPECT_THAT(placeBuy(QStringLiteral("10.00")).output, HasSubstr("委托已提交，委托编号 1：未报"));

    const QStringList lines =
        QString::fromStdString(inChinese({QStringLiteral("orders")}).output).split(QLatin1Char('\n'));

    ASSERT_GE(lines.size(), 2);
    EXPECT_TRUE(lines[0].startsWith(QStringLiteral(u"委托编号  ")));
    for (const auto &[header, cell] : {std::pair(u"证券代码", u"600519"),
                                       {u"市场", u"SH"},
                                       {u"买卖方向", u"买入"},
                                       {u"价格", u"10.00"},
                                       {u"状态", u"未报"}}) {
        EXPECT_EQ(columnOf(QString::fromUtf16(header), lines[0]),
                  columnOf(QString::fromUtf16(cell), lines[1]))
            << QString::fromUtf16(header).toStdString();
    }
}

TEST_F(ChineseProgram, ReportsAnImport)
{
    const QString file = write("20210811,11:03:51,600519,贵州茅台,买入,1700.00,100,170000.00,1\n"
                               "2021-02-31,11:03:51,600519,贵州茅台,买入,1700.00,100,170000.00,2\n"
                               "20210812,11:03:51,,,银行转证券,0,0,100.00,3\n");

    const std::string refused = inChinese({QStringLiteral("import"), file}).output;
    EXPECT_THAT(refused, HasSubstr(":3: “2021-02-31”不是日期\n"));
    EXPECT_THAT(refused, HasSubstr("全部未导入：1 行无法识别"));

    const std::string done = inChinese({QStringLiteral("import"), QStringLiteral("--skip-bad"), file}).output;
    EXPECT_THAT(done, HasSubstr("资金：银证转账（1 行）\n"));
    EXPECT_THAT(done, HasSubstr("已导入 1 笔，账本中原有 0 笔\n"));
}

TEST_F(ChineseProgram, WritesTheSameJsonInEveryLanguage)
{
    placeBuy(QStringLiteral("10.00"));

    for (const char *command : {"orders", "trades", "positions", "account"}) {
        const QStringList arguments{QLatin1String(command), QStringLiteral("--json")};
        EXPECT_EQ(inChinese(arguments).output, runOnLedger(arguments).output) << command;
    }
}

TEST_F(ChineseProgram, SpeaksTheLanguageOfTheLocaleUnlessToldOtherwise)
{
    const QStringList help{QStringLiteral("--help")};
    const QStringList english{QStringLiteral("--lang"), QStringLiteral("en")};

    EXPECT_THAT(run(help, QStringLiteral("zh_CN.UTF-8")).output, HasSubstr("用法："));
    EXPECT_THAT(run(help, QStringLiteral("de_DE.UTF-8")).output, HasSubstr("Usage:"));
    EXPECT_THAT(run(help + english, QStringLiteral("zh_CN.UTF-8")).output, HasSubstr("Usage:"));
    EXPECT_THAT(run(help + chinese, QStringLiteral("de_DE.UTF-8")).output, HasSubstr("用法："));
}

TEST_F(ChineseProgram, RefusesALanguageItDoesNotSpeak)
{
    for (const char *word : {"xx", "", "ZH", "zh_CN"}) {
        const Ended ended =
            run({QStringLiteral("--lang=%1").arg(QLatin1String(word)), QStringLiteral("--help")});
        EXPECT_EQ(ended.exitCode, 2) << word;
        EXPECT_EQ(ended.errors,
                  "trademodule: --lang is \"" + std::string(word) + "\", but must be zh or en\n");
    }
}

using ChineseProgramOnABus = ProgramOnABus;

TEST_F(ChineseProgramOnABus, AnswersInTheLanguageItServesIn)
{
    serve(chinese);

    const QJsonObject refused = ask(R"({"cmd":"EntrustPlace","market":"SZ","stkcode":"000001","bsflag2":"0B",
                                        "orderprice":"10.001","orderqty":"100"})");

    EXPECT_EQ(refused[QStringLiteral("msg")].toString(), QStringLiteral(u"价格应为 0.01 元的整数倍"));
}

} // namespace TradeModule
