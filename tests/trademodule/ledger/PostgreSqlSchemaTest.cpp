// A ledger whose tables are in a schema of their own, as on a server that many use.
#include "tests/trademodule/support/PostgreSqlServer.h"
#include "tests/trademodule/support/ProgramFixture.h"
#include "trademodule/ledger/LedgerSchema.h"

namespace TradeModule {

namespace {

class PostgreSqlSchema : public ::testing::Test
{
protected:
    void SetUp() override
    {
        if (const QString reason = TestLedger::unavailable(); !reason.isEmpty()) {
            GTEST_SKIP() << reason.toStdString();
        }
        m_home.emplace();
        Database database(location());
        database.run(QStringLiteral("CREATE SCHEMA desk"));
        database.run(QStringLiteral("DO $$ BEGIN EXECUTE format('ALTER DATABASE %I SET search_path = desk', "
                                    "current_database()); END $$"));
    }

    QString location() const { return m_home->location(); }

    int tablesIn(const char *schema)
    {
        Database database(location());
        Rows row = database.run(
            QStringLiteral("SELECT COUNT(*) FROM information_schema.tables WHERE table_schema = ?"),
            {QLatin1String(schema)});
        return row.next() ? row.value(0).toInt() : -1;
    }

private:
    std::optional<TestLedger> m_home;
};

} // namespace

TEST_F(PostgreSqlSchema, HasAllTablesAndIsFoundAgain)
{
    Ledger(location()).book(statementOf({fill(Side::Buy, bank(), 20240102, 10, 100)}), Ledger::Mode::Keep);

    Ledger again(location());

    EXPECT_EQ(again.holding(bank()).quantity(), 100);
    EXPECT_EQ(schemaVersion(again.database()), currentSchemaVersion());
    EXPECT_EQ(tablesIn("public"), 0);
    EXPECT_GT(tablesIn("desk"), 10);
}

TEST_F(PostgreSqlSchema, HasTheLedgerOfAnOlderProgramBroughtUpToDate)
{
    {
        Database old(location());
        migrateSchema(&old, 4);
    }

    Ledger ledger(location());

    EXPECT_EQ(schemaVersion(ledger.database()), currentSchemaVersion());
    EXPECT_EQ(tablesIn("public"), 0);
}

TEST_F(PostgreSqlSchema, IsNotTheOneOfAnotherLedgerInTheSameDatabase)
{
    Ledger(location()).book(statementOf({fill(Side::Buy, bank(), 20240102, 10, 100)}), Ledger::Mode::Keep);
    Database database(location());
    database.run(QStringLiteral("CREATE SCHEMA other"));
    database.run(QStringLiteral("DO $$ BEGIN EXECUTE format('ALTER DATABASE %I SET search_path = other', "
                                "current_database()); END $$"));

    Ledger other(location());

    EXPECT_EQ(other.holding(bank()).quantity(), 0);
    EXPECT_GT(tablesIn("other"), 10);
}

} // namespace TradeModule
