// Cash and results of an imported account against what its statement tells after each entry.
#include "tests/trademodule/support/ProgramFixture.h"

#include <QJsonArray>

namespace TradeModule {

namespace {

using ::testing::HasSubstr;
using ::testing::Not;

/// An entry as brokers list them: kind, price, quantity, amount, fees, what it changed, what it left.
struct Line
{
    const char *day;
    const char *kind;
    const char *code;
    const char *rest; ///< price, quantity, amount, commission, stamp duty, transfer fee, change
    const char *balance;
};

/// Reckoned by hand: 50,000 come in; the liquor earns 15,100 - 20.25 - 14,005.14, dividends 30 less 3 of tax.
constexpr Line story[] = {
    {"20240102", "银行转存", "", "0,0,0,0,0,0,50000.00", "50000.00"},
    {"20240103", "证券买入", "600519", "140.00,100,14000.00,5.00,0.00,0.14,-14005.14", "35994.86"},
    {"20240105", "证券买入", "600000", "10.00,1000,10000.00,5.00,0.00,0.10,-10005.10", "25989.76"},
    {"20240110", "红利入账", "600000", "0,0,0,0,0,0,30.00", "26019.76"},
    {"20240111", "股息红利税补缴", "600000", "0,0,0,0,0,0,-3.00", "26016.76"},
    {"20240201", "证券卖出", "600519", "151.00,100,15100.00,5.00,15.10,0.15,15079.75", "41096.51"},
    {"20240321", "利息归本", "", "0,0,0,0,0,0,1.23", "41097.74"},
    {"20240401", "银行转取", "", "0,0,0,0,0,0,-1000.00", "40097.74"},
};

/// The cash columns of brokers' clients.
class BrokersCash : public Program, public ::testing::WithParamInterface<const char *>
{
protected:
    /// The entries [first, end) of the story.
    QString statement(size_t first = 0, size_t end = std::size(story), bool isNewestFirst = false)
    {
        QList<QByteArray> lines;
        for (size_t place = first; place < end; ++place) {
            const Line &line = story[place];
            lines.insert(isNewestFirst ? 0 : lines.size(), QByteArray(line.day) + ',' + line.kind + ',' +
                                                               line.code + ',' + line.rest + ',' +
                                                               line.balance + '\n');
        }
        return writeFile(
            QStringLiteral("cash%1.csv").arg(first),
            QByteArray("成交日期,业务名称,证券代码,成交价格,成交数量,成交金额,手续费,印花税,过户费,"
                       "发生金额,") +
                GetParam() + '\n' + lines.join());
    }

    QString said(const QStringList &arguments, const char *key)
    {
        const Ended ended = runOnLedger(arguments + QStringList{QStringLiteral("--json")});
        EXPECT_EQ(ended.exitCode, 0) << ended.errors;
        const QJsonArray rows = QJsonDocument::fromJson(QByteArray::fromStdString(ended.output)).array();
        return rows.isEmpty() ? QString() : rows.last().toObject()[QLatin1String(key)].toString();
    }

    QString cash() { return said({QStringLiteral("account")}, "cash"); }

    double figure(const char *key)
    {
        return said({QStringLiteral("results"), QStringLiteral("--by"), QStringLiteral("year")}, key)
            .toDouble();
    }
};

} // namespace

TEST_P(BrokersCash, IsTheAccounts)
{
    const Ended imported = import(statement());

    EXPECT_EQ(imported.exitCode, 0) << imported.errors;
    EXPECT_THAT(imported.errors + imported.output, Not(HasSubstr("disagree")));
    EXPECT_EQ(cash(), QStringLiteral("40097.74"));
    EXPECT_EQ(said({QStringLiteral("account")}, "available"), QStringLiteral("40097.74"));
}

TEST_P(BrokersCash, IsTheSameOfAListThatBeginsWithTheNewest)
{
    EXPECT_EQ(import(statement(0, std::size(story), true)).exitCode, 0);

    EXPECT_EQ(cash(), QStringLiteral("40097.74"));
}

TEST_P(BrokersCash, IsThatOfTheNewestStatementWhicheverComesLast)
{
    EXPECT_EQ(import(statement(5)).exitCode, 0);
    EXPECT_EQ(import(statement(0, 5)).exitCode, 0);

    EXPECT_EQ(cash(), QStringLiteral("40097.74"));
}

/// What moved otherwise is 50,000 in and 1,000 out: the rest of the cash is what the results explain.
TEST_P(BrokersCash, IsExplainedByTheResults)
{
    EXPECT_EQ(import(statement()).exitCode, 0);

    EXPECT_EQ(said({QStringLiteral("results"), QStringLiteral("--code"), QStringLiteral("600519")}, "profit"),
              QStringLiteral("1074.61")); // 15,100 - 20.25 - 14,005.14
    EXPECT_DOUBLE_EQ(figure("stampduty"), 15.10);
    EXPECT_NEAR(49000 - figure("bought") + figure("sold") - figure("fees") + figure("dividends") -
                    figure("taxes") + figure("interest"),
                40097.74, 0.001);
}

INSTANTIATE_TEST_SUITE_P(InColumn, BrokersCash,
                         ::testing::Values("资金余额", "资金本次余额", "剩余金额", "本次金额", "后资金额"));

} // namespace TradeModule
