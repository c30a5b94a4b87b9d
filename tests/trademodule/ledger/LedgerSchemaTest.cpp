#include "trademodule/ledger/LedgerSchema.h"
#include "tests/trademodule/support/LedgerFixture.h"
#include "trademodule/Error.h"
#include "trademodule/exchange/PaperExchange.h"
#include "trademodule/ledger/LedgerQueries_p.h"

namespace TradeModule {

namespace {

using ::testing::HasSubstr;
using ::testing::SizeIs;

using LedgerSchemaTest = LedgerFixture;

const DateRange always;

} // namespace

TEST_F(LedgerSchemaTest, KnowsItsVersion)
{
    Database database(location());

    EXPECT_EQ(schemaVersion(&database), currentSchemaVersion());
}

TEST_F(LedgerSchemaTest, MadeByANewerProgramIsLeftAlone)
{
    Database(location()).run(QStringLiteral("UPDATE ledger_version SET version = 999"));

    try {
        Ledger again(location());
        FAIL() << "opened";
    } catch (const Error &error) {
        EXPECT_THAT(error.what(), HasSubstr("newer program"));
    }
}

class LedgerSchemaOfAnOlderLedger : public ::testing::TestWithParam<int>
{
protected:
    void SetUp() override
    {
        if (const QString reason = TestLedger::unavailable(); !reason.isEmpty()) {
            GTEST_SKIP() << reason.toStdString();
        }
        m_home.emplace();
        Database database(location());
        migrateSchema(&database, GetParam());
        database.run(QStringLiteral("INSERT INTO security (id, code, market) VALUES (1, '000001', 'SZ')"));
        database.run(QStringLiteral("INSERT INTO holding VALUES (1, 100, 1005.0, 0)"));
        database.run(QStringLiteral(
            "INSERT INTO execution (security_id, side, trade_date, trade_time, price, quantity, amount, fee, "
            "order_no, deal_no) VALUES (1, 'B', 20240102, 0, 100000, 100, 10000000, 50000, '', '')"));
    }

    QString location() const { return m_home->location(); }

private:
    std::optional<TestLedger> m_home;
};

TEST_P(LedgerSchemaOfAnOlderLedger, IsBroughtUpToDateWithAllItHolds)
{
    {
        Database old(location());
        ASSERT_EQ(schemaVersion(&old), GetParam());
    }

    Ledger ledger(location());

    EXPECT_EQ(schemaVersion(ledger.database()), currentSchemaVersion());
    EXPECT_THAT(ledger.trades(bank(), always), SizeIs(1));
    EXPECT_EQ(ledger.holding(bank()).quantity(), 100);
}

TEST_P(LedgerSchemaOfAnOlderLedger, TakesOrdersAndQuotesAfterwards)
{
    Ledger ledger(location());
    PaperExchange exchange(&ledger);
    Quote quote{bank(), TradingDate::today(), at(1000)};
    quote.open = quote.high = quote.low = quote.close = Money::ofYuan(10).value();
    quote.volume = 100000;
    exchange.take(quote);

    exchange.place(bank(), Direction::Buy, quote.close, 200);
    exchange.take(quote);

    EXPECT_EQ(ledger.holding(bank()).quantity(), 300);
}

TEST_P(LedgerSchemaOfAnOlderLedger, IsLeftAsItWasByAMigrationThatFails)
{
    // a step to come makes it, too
    Database(location()).run(QStringLiteral("ALTER TABLE execution ADD COLUMN stamp_duty BIGINT"));

    EXPECT_THROW(Ledger ledger(location()), LedgerError);

    Database old(location());
    EXPECT_EQ(schemaVersion(&old), GetParam());
    EXPECT_TRUE(old.run(QStringLiteral("SELECT quantity FROM holding")).next());
}

TEST_P(LedgerSchemaOfAnOlderLedger, IsNotMigratedByADryRun)
{
    {
        Ledger ledger(location(), Ledger::Mode::DryRun);
        EXPECT_EQ(ledger.book(statementOf({fill(Side::Buy, bank(), 20240103, 10, 100)}), Ledger::Mode::DryRun)
                      .added,
                  1);
        EXPECT_EQ(ledger.holding(bank()).quantity(), 200);
    }
    Database old(location());
    EXPECT_EQ(schemaVersion(&old), GetParam());
    QSqlQuery holding = old.run(QStringLiteral("SELECT quantity FROM holding"));
    ASSERT_TRUE(holding.next());
    EXPECT_EQ(holding.value(0).toInt(), 100);
}

INSTANTIATE_TEST_SUITE_P(OfVersion, LedgerSchemaOfAnOlderLedger, ::testing::Range(1, currentSchemaVersion()),
                         ::testing::PrintToStringParamName());

TEST_F(LedgerSchemaTest, AnswersAYearOfASecurityFromAnIndex)
{
    Executions many;
    for (int i = 0; i < 20000; ++i) {
        const SecurityId security{QString::number(600000 + i % 200), Market::Shanghai};
        many.append(fill(Side::Buy, security, 20100101 + i / 2000 * 10000, 10, 100, QString::number(i)));
    }
    book(many);
    Database database(location());
    const bool isSqlite = database.kind() == Database::Kind::Sqlite;
    database.run(QStringLiteral("ANALYZE"));

    QString question = LedgerQueries::tradesOfSecurity();
    for (const char *value : {"'600007'", "'SH'", "20120101", "20121231"}) {
        question.replace(question.indexOf(QLatin1Char('?')), 1, QLatin1String(value));
    }
    QSqlQuery rows = database.run(
        (isSqlite ? QStringLiteral("EXPLAIN QUERY PLAN ") : QStringLiteral("EXPLAIN ")) + question);
    std::string plan;
    while (rows.next()) {
        plan += rows.value(isSqlite ? 3 : 0).toString().toStdString() + "\n";
    }

    EXPECT_THAT(plan, HasSubstr(isSqlite ? "COVERING INDEX execution_by_time" : "execution_by_time"));
    EXPECT_THAT(plan, ::testing::Not(HasSubstr("Seq Scan on execution")));
}

} // namespace TradeModule
