// The program itself, on a real database and a real bus.
#include "tests/trademodule/support/ProgramFixture.h"

#include <QJsonArray>

namespace TradeModule {

namespace {

using ::testing::HasSubstr;

class CostCommandTest : public ProgramOnABus
{
protected:
    Ended cost(const QStringList &arguments)
    {
        return runOnLedger(busOptions() + QStringList{QStringLiteral("cost")} + arguments);
    }

    void bookTrades()
    {
        book({fill(Side::Buy, bank(), 20240102, 10, 100), fill(Side::Buy, bank(), 20240103, 12, 100),
              fill(Side::Sell, bank(), 20240104, 11, 100)});
    }
};

} // namespace

TEST_F(CostCommandTest, ShowsTheMethodOfTheLedger)
{
    EXPECT_EQ(cost({}).output, "average (moving average)\n");
}

TEST_F(CostCommandTest, SetsTheMethodForPositions)
{
    bookTrades();

    const Ended set = cost({QStringLiteral("fifo")});

    EXPECT_EQ(set.exitCode, 0) << set.errors;
    EXPECT_THAT(set.output, HasSubstr("fifo (first in, first out)\n"));
    EXPECT_THAT(runOnLedger({QStringLiteral("positions")}).output,
                HasSubstr("12.050     1205.00  first in, first out"));
    EXPECT_EQ(QJsonDocument::fromJson(
                  QByteArray::fromStdString(
                      runOnLedger({QStringLiteral("positions"), QStringLiteral("--json")}).output))
                  .array()[0]
                  .toObject()[QStringLiteral("method")]
                  .toString(),
              QStringLiteral("fifo"));
}

TEST_F(CostCommandTest, RefusesAMethodThatThereIsNot)
{
    const Ended ended = cost({QStringLiteral("lifo")});

    EXPECT_EQ(ended.exitCode, 2);
    EXPECT_THAT(ended.errors, HasSubstr("\"lifo\" is no way to reckon costs"));
    EXPECT_EQ(cost({QStringLiteral("fifo"), QStringLiteral("average")}).exitCode, 2);
    EXPECT_EQ(ledger().costMethod(), CostMethod::Average);
}

TEST_F(CostCommandTest, ChangesTheAnswersOfAServingModuleAndTellsTheCharts)
{
    bookTrades();
    serve();
    ASSERT_TRUE(chart().listen("Global", "TradeNotify"));
    const QByteArray question = R"({"cmd":"HolderCostPrice","stkcode":"000001","market":"SZ"})";
    ASSERT_EQ(ask(question)[QStringLiteral("costprice")].toString(), QStringLiteral("11.050"));

    ASSERT_EQ(cost({QStringLiteral("diluted")}).exitCode, 0);

    const QJsonObject answer = ask(question);
    EXPECT_EQ(answer[QStringLiteral("costprice")].toString(), QStringLiteral("11.150"));
    EXPECT_EQ(answer[QStringLiteral("costmethod")].toString(), QStringLiteral("diluted"));
    const QJsonObject account = ask(R"({"cmd":"AccountInfo"})");
    EXPECT_EQ(account[QStringLiteral("costmethod")].toString(), QStringLiteral("diluted"));
    EXPECT_EQ(account[QStringLiteral("data")]
                  .toObject()[QStringLiteral("positions")]
                  .toArray()[0]
                  .toObject()[QStringLiteral("costprice")]
                  .toString(),
              QStringLiteral("11.150"));
    EXPECT_TRUE(waitUntil([this] { return !chart().messages.isEmpty(); }));
}

} // namespace TradeModule
