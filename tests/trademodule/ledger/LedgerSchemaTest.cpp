#include "trademodule/ledger/LedgerSchema.h"
#include "tests/trademodule/support/LedgerFixture.h"
#include "trademodule/Error.h"
#include "trademodule/exchange/PaperExchange.h"
#include "trademodule/ledger/LedgerQueries_p.h"

#include <QSqlRecord>

namespace TradeModule {

namespace {

using ::testing::HasSubstr;
using ::testing::SizeIs;

using LedgerSchemaTest = LedgerFixture;

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

/// Every row of a table, by the columns that it has now.
class TableRows
{
public:
    TableRows(Database *database, const QString &table) : m_table(table)
    {
        const QSqlRecord record = rows(database, QStringLiteral("*")).record();
        for (int i = 0; i < record.count(); ++i) {
            m_columns.append(record.fieldName(i));
        }
        m_content = content(database);
    }

    std::string table() const { return m_table.toStdString(); }

    /// What is in those columns.
    QStringList content(Database *database) const
    {
        QStringList lines;
        QSqlQuery query = rows(database, m_columns.join(QLatin1Char(',')));
        while (query.next()) {
            QStringList cells;
            for (int i = 0; i < m_columns.size(); ++i) {
                cells.append(query.value(i).isNull() ? QStringLiteral("NULL") : query.value(i).toString());
            }
            lines.append(cells.join(QLatin1Char('|')));
        }
        return lines;
    }
    const QStringList &contentThen() const { return m_content; }

private:
    QSqlQuery rows(Database *database, const QString &columns) const
    {
        QSqlQuery query =
            database->prepared(QStringLiteral("SELECT %1 FROM %2 ORDER BY 1").arg(columns, m_table));
        database->run(&query, {});
        return query;
    }

    QString m_table;
    QStringList m_columns;
    QStringList m_content;
};

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

    /// Rows in every table that refers to others or is referred to, with gaps among their numbers.
    static void enterRows(Database *database)
    {
        database->run(
            QStringLiteral("INSERT INTO statement (id, file, imported_at) VALUES (7, 'a.csv', '')"));
        for (int i = 2; i < 50; i += 3) {
            database->run(
                QStringLiteral("INSERT INTO security (id, code, market, name) VALUES (?, ?, 'SH', ?)"),
                {i, QString::number(600000 + i), QStringLiteral("O'Neill 银行 %1").arg(i)});
            database->run(QStringLiteral("INSERT INTO holding VALUES (?, 200, 20.5, 1)"), {i});
            for (const char *const side : {"B", "S", "G"}) {
                database->run(
                    QStringLiteral(
                        "INSERT INTO execution (security_id, statement_id, side, trade_date, trade_time, "
                        "price, quantity, amount, fee, order_no, deal_no) VALUES (?, ?, ?, 20240103, "
                        "9300000, 99999, 300, 29999700, 1, 'o', 'd')"),
                    {i, i % 2 == 0 ? QVariant(7) : QVariant(QVariant::LongLong), QLatin1String(side)});
            }
        }
        if (GetParam() >= 2) {
            database->run(QStringLiteral(
                "INSERT INTO trade_order (id, security_id, side, order_date, order_time, price, quantity, "
                "status) VALUES (5, 2, 'B', 20240103, 9300000, 99999, 300, '8')"));
        }
        if (GetParam() >= 3) {
            database->run(QStringLiteral(
                "INSERT INTO price_reference (security_id, quote_date, price) VALUES (2, 20240103, 99999)"));
        }
    }

    /// Of all tables that the version has.
    static std::vector<TableRows> tables(Database *database)
    {
        std::vector<TableRows> tables;
        for (const char *const name : {"security", "statement", "execution", "holding", "account",
                                       "trade_order", "exchange_clock", "price_reference", "serving"}) {
            if (database->hasTable(QLatin1String(name))) {
                tables.emplace_back(database, QLatin1String(name));
            }
        }
        return tables;
    }

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

TEST_P(LedgerSchemaOfAnOlderLedger, KeepsEveryRowAndEveryColumn)
{
    std::vector<TableRows> before;
    {
        Database old(location());
        enterRows(&old);
        before = tables(&old);
    }

    Ledger ledger(location());

    for (const TableRows &table : before) {
        EXPECT_EQ(table.content(ledger.database()), table.contentThen()) << table.table();
        EXPECT_FALSE(table.contentThen().isEmpty()) << table.table();
    }
}

TEST_P(LedgerSchemaOfAnOlderLedger, RefusesRowsThatReferToNoneAfterwards)
{
    Ledger ledger(location());

    EXPECT_THROW(ledger.database()->run(QStringLiteral("INSERT INTO holding VALUES (4711, 1, 1.0, 0)")),
                 LedgerError);
    EXPECT_THROW(ledger.database()->run(QStringLiteral("DELETE FROM security")), LedgerError);
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
    quote.time = at(1001);
    exchange.take(quote);

    EXPECT_EQ(ledger.holding(bank()).quantity(), 300);
}

TEST_P(LedgerSchemaOfAnOlderLedger, IsLeftAsItWasByAMigrationThatFails)
{
    {
        Database old(location()); // the last step to come makes it, too
        old.run(QStringLiteral("CREATE TABLE told_minute (id INTEGER)"));
    }

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
    Rows holding = old.run(QStringLiteral("SELECT quantity FROM holding"));
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
    Rows rows = database.run((isSqlite ? QStringLiteral("EXPLAIN QUERY PLAN ") : QStringLiteral("EXPLAIN ")) +
                             question);
    std::string plan;
    while (rows.next()) {
        plan += rows.value(isSqlite ? 3 : 0).toString().toStdString() + "\n";
    }

    EXPECT_THAT(plan, HasSubstr(isSqlite ? "COVERING INDEX execution_by_time" : "execution_by_time"));
    EXPECT_THAT(plan, ::testing::Not(HasSubstr("Seq Scan on execution")));
}

} // namespace TradeModule
