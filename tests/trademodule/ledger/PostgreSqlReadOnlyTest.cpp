// A ledger whose server lets nothing be changed, as a copy that follows another server does.
#include "tests/trademodule/support/PostgreSqlServer.h"
#include "tests/trademodule/support/ProgramFixture.h"
#include "trading/Presence.h"

namespace TradeModule {

namespace {

using ::testing::HasSubstr;

class PostgreSqlReadOnly : public ProgramOnABus
{
protected:
    void SetUp() override
    {
        ProgramOnABus::SetUp();
        if (IsSkipped()) {
            return;
        }
        book({fill(Side::Buy, bank(), 20240102, 10, 100)});
        Database(location())
            .run(QStringLiteral("DO $$ BEGIN EXECUTE format('ALTER DATABASE %I SET "
                                "default_transaction_read_only = on', current_database()); END $$"));
    }
};

} // namespace

TEST_F(PostgreSqlReadOnly, IsAnsweredFromButNotTraded)
{
    serve();

    EXPECT_EQ(
        ask(R"({"cmd":"HolderCostPrice","market":"SZ","stkcode":"000001"})")[QStringLiteral("costprice")],
        QJsonValue(QStringLiteral("10.050")));
    EXPECT_TRUE(
        ask(R"({"cmd":"EntrustTodayTrade","market":"SZ","stkcode":"000001"})")[QStringLiteral("success")]
            .toBool());
    for (
        const char *const change :
        {R"({"cmd":"EntrustPlace","market":"SZ","stkcode":"000001","bsflag2":"0B","orderprice":"10",
              "orderqty":"100"})",
         R"({"cmd":"EntrustCancel","market":"SZ","stkcode":"000001","orderdate":"20240102","ordersno":"1"})"}) {
        const QJsonObject answer = ask(change);
        EXPECT_EQ(answer[QStringLiteral("success")], QJsonValue(false));
        EXPECT_THAT(answer[QStringLiteral("msg")].toString().toStdString(), HasSubstr("can only be read"));
    }
}

TEST_F(PostgreSqlReadOnly, IsAnnouncedAsSuch)
{
    serve();
    ASSERT_TRUE(chart().listen("Global", "TradePresence"));

    ASSERT_TRUE(chart().waitForMessages(1));
    const auto presence = Trading::TradePresence::ofJson(chart().messages[0].payload);
    ASSERT_TRUE(presence);
    EXPECT_TRUE(presence->isReadOnly);
}

TEST_F(PostgreSqlReadOnly, IsServedByOneOnly)
{
    serve();

    const Ended second = run(busOptions() + ledgerOptions() + QStringList{QStringLiteral("serve")});

    EXPECT_EQ(second.exitCode, 1);
    EXPECT_THAT(second.errors, HasSubstr("served already"));
}

TEST_F(PostgreSqlReadOnly, RefusesWhatWouldChangeIt)
{
    const Ended placed = runOnLedger({QStringLiteral("place"), QStringLiteral("000001"),
                                      QStringLiteral("buy"), QStringLiteral("10"), QStringLiteral("100")});

    EXPECT_EQ(placed.exitCode, 1);
    EXPECT_THAT(placed.errors, HasSubstr("can only be read"));
}

/// A server that lets nothing be written for a while, without ending a connection.
class PostgreSqlReadOnlyForAWhile : public ProgramOnABus
{
protected:
    void TearDown() override
    {
        setReadOnly(false);
        ProgramOnABus::TearDown();
    }

    static void setReadOnly(bool isReadOnly)
    {
        Database server(PostgreSqlServer::instance().location(QStringLiteral("postgres")));
        server.run(QStringLiteral("ALTER SYSTEM SET default_transaction_read_only = %1")
                       .arg(isReadOnly ? QStringLiteral("on") : QStringLiteral("off")));
        server.run(QStringLiteral("SELECT pg_reload_conf()"));
    }

    /// Ends every connection to the ledger but the one of this test.
    void endConnections()
    {
        ledger().database()->run(
            QStringLiteral("SELECT COUNT(pg_terminate_backend(pid)) FROM pg_stat_activity "
                           "WHERE datname = current_database() AND pid <> pg_backend_pid()"));
    }

    bool isReadOnly()
    {
        Rows row = ledger().database()->run(
            QStringLiteral("SELECT current_setting('transaction_read_only')::boolean"));
        return row.next() && row.value(0).toBool();
    }

    QByteArray quoteAt(const char *time) const
    {
        return QByteArray(
                   R"({"stkcode":"000001","market":"SZ","open":"10","high":"10","low":"10","close":"10",)"
                   R"("volume":"400","date":")") +
               TradingDate::today().text().toLatin1() + R"(","time":")" + time + R"("})";
    }
};

TEST_F(PostgreSqlReadOnlyForAWhile, DealsTheQuotesOfThatTimeAfterwardsInTheirOrder)
{
    serve();
    ASSERT_TRUE(
        ask(R"({"cmd":"EntrustPlace","market":"SZ","stkcode":"000001","bsflag2":"0B","orderprice":"10",
                        "orderqty":"1000"})")[QStringLiteral("success")]
            .toBool());
    setReadOnly(true);
    ASSERT_TRUE(waitUntil([this] { return isReadOnly(); }));

    for (const char *const time : {"0931", "0932", "0933"}) {
        chart().sendMessage("Market", "Quote", quoteAt(time));
    }
    ask(R"({"cmd":"TodayTrade","market":"SZ","stkcode":"000001"})"); // the quotes have come before
    ASSERT_EQ(tradeCount(), 0);

    setReadOnly(false);
    ASSERT_TRUE(waitUntil([this] { return tradeCount() == 3; }));
    const Executions trades = ledger().trades(bank(), DateRange());
    EXPECT_EQ(trades[0].time, at(931));
    EXPECT_EQ(trades[1].time, at(932));
    EXPECT_EQ(trades[2].time, at(933));
}

TEST_F(PostgreSqlReadOnlyForAWhile, IsNotTakenForGoodByWhoConnectsAgainMeanwhile)
{
    serve();
    ASSERT_TRUE(
        ask(R"({"cmd":"EntrustPlace","market":"SZ","stkcode":"000001","bsflag2":"0B","orderprice":"10",
                        "orderqty":"1000"})")[QStringLiteral("success")]
            .toBool());
    setReadOnly(true);
    ASSERT_TRUE(waitUntil([this] { return isReadOnly(); }));
    endConnections();

    for (const char *const time : {"0931", "0932", "0933"}) {
        chart().sendMessage("Market", "Quote", quoteAt(time));
    }
    ASSERT_TRUE(waitUntil([this] {
        return ask(R"({"cmd":"TodayTrade","market":"SZ","stkcode":"000001"})")[QStringLiteral("success")]
            .toBool();
    })) << "it has not connected again";
    ASSERT_EQ(tradeCount(), 0);

    setReadOnly(false);
    EXPECT_TRUE(waitUntil([this] { return tradeCount() == 3; }));
}

} // namespace TradeModule
