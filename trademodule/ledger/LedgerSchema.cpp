#include "trademodule/ledger/LedgerSchema.h"

#include "trademodule/Error.h"
#include "trademodule/ProgramLanguage.h"
#include "trademodule/ledger/LedgerCopy.h"
#include "trademodule/ledger/Transaction.h"
#include "trademodule/ledger/UncheckedReferences.h"

#include <QFile>
#include <QStringList>

#include <vector>

namespace TradeModule {

namespace {

// %ID% stands for the type of a generated key, %BYTES% for that of bytes; %SQLITE% and %POSTGRESQL% mark what
// is for one database alone. Dates are yyyymmdd, times hhmmsscc; price, amount and fee are in steps of 0.0001
// yuan, holding.cost in yuan. A step that was released is never changed: a new one is added.
const std::vector<QStringList> &migrations()
{
    static const std::vector<QStringList> steps = {
        {
            QStringLiteral(R"(CREATE TABLE security (
                id %ID%,
                code TEXT NOT NULL,
                market TEXT NOT NULL CHECK (market IN ('SH', 'SZ')),
                name TEXT NOT NULL DEFAULT '',
                UNIQUE (code, market)))"),
            QStringLiteral(R"(CREATE TABLE statement (
                id %ID%,
                file TEXT NOT NULL,
                imported_at TEXT NOT NULL))"),
            QStringLiteral(R"(CREATE TABLE execution (
                id %ID%,
                security_id BIGINT NOT NULL REFERENCES security (id),
                statement_id BIGINT REFERENCES statement (id),
                side TEXT NOT NULL CHECK (side IN ('B', 'S', 'G')),
                trade_date INTEGER NOT NULL,
                trade_time INTEGER NOT NULL,
                price BIGINT NOT NULL CHECK (price >= 0),
                quantity BIGINT NOT NULL CHECK (quantity > 0),
                amount BIGINT NOT NULL,
                fee BIGINT NOT NULL,
                order_no TEXT NOT NULL,
                deal_no TEXT NOT NULL))"),
            QStringLiteral("CREATE INDEX execution_by_time "
                           "ON execution (security_id, trade_date, trade_time, id)"),
            QStringLiteral(R"(CREATE TABLE holding (
                security_id BIGINT PRIMARY KEY REFERENCES security (id),
                quantity BIGINT NOT NULL CHECK (quantity >= 0),
                cost DOUBLE PRECISION NOT NULL,
                unexplained BIGINT NOT NULL))"),
        },
        {
            QStringLiteral(R"(CREATE TABLE account (
                id INTEGER PRIMARY KEY CHECK (id = 1),
                cash BIGINT NOT NULL))"),
            // a million yuan to play with: see the paper exchange
            QStringLiteral("INSERT INTO account (id, cash) VALUES (1, 10000000000)"),
            QStringLiteral(R"(CREATE TABLE trade_order (
                id %ID%,
                security_id BIGINT NOT NULL REFERENCES security (id),
                side TEXT NOT NULL CHECK (side IN ('B', 'S')),
                order_date INTEGER NOT NULL,
                order_time INTEGER NOT NULL,
                price BIGINT NOT NULL CHECK (price > 0),
                quantity BIGINT NOT NULL CHECK (quantity > 0),
                status TEXT NOT NULL,
                matched_quantity BIGINT NOT NULL DEFAULT 0,
                matched_amount BIGINT NOT NULL DEFAULT 0,
                cancelled_quantity BIGINT NOT NULL DEFAULT 0,
                CHECK (matched_quantity + cancelled_quantity <= quantity)))"),
            QStringLiteral("CREATE INDEX order_by_day ON trade_order (order_date, security_id)"),
            QStringLiteral("CREATE INDEX order_by_status ON trade_order (status)"),
        },
        {
            QStringLiteral(R"(CREATE TABLE exchange_clock (
                id INTEGER PRIMARY KEY CHECK (id = 1),
                quote_date INTEGER NOT NULL,
                quote_time INTEGER NOT NULL))"),
            QStringLiteral("INSERT INTO exchange_clock (id, quote_date, quote_time) VALUES (1, 0, 0)"),
            QStringLiteral(R"(CREATE TABLE price_reference (
                security_id BIGINT PRIMARY KEY REFERENCES security (id),
                quote_date INTEGER NOT NULL,
                price BIGINT NOT NULL CHECK (price > 0)))"),
        },
        {
            // whole rows in it: a security's year lies in a few pages, not on one page for every trade
            QStringLiteral("DROP INDEX execution_by_time"),
            QStringLiteral(
                "CREATE INDEX execution_by_time ON execution (security_id, trade_date, trade_time, "
                "id, side, price, quantity, amount, fee, order_no, deal_no)"),
        },
        {
            QStringLiteral("ALTER TABLE trade_order ADD COLUMN client_no TEXT"),
            QStringLiteral("CREATE UNIQUE INDEX order_by_client_no ON trade_order (client_no)"),
            // who serves the ledger; before the first one nobody
            QStringLiteral(R"(CREATE TABLE serving (
                id INTEGER PRIMARY KEY CHECK (id = 1),
                fence BIGINT NOT NULL,
                host TEXT NOT NULL,
                process BIGINT NOT NULL,
                process_start TEXT NOT NULL,
                since TEXT NOT NULL))"),
            QStringLiteral("INSERT INTO serving (id, fence, host, process, process_start, since) "
                           "VALUES (1, 0, '', 0, '', '')"),
            QStringLiteral("ALTER TABLE price_reference ADD COLUMN quote_time INTEGER NOT NULL DEFAULT 0"),
        },
        {
            // entries that are no trades, and markets that charts do not know
            QStringLiteral("%POSTGRESQL% ALTER TABLE security DROP CONSTRAINT security_market_check"),
            QStringLiteral("%POSTGRESQL% ALTER TABLE execution DROP CONSTRAINT execution_side_check"),
            // SQLite has no such command: the two tables are made anew, see UncheckedReferences
            QStringLiteral(R"(%SQLITE% CREATE TABLE new_security (
                id %ID%,
                code TEXT NOT NULL,
                market TEXT NOT NULL,
                name TEXT NOT NULL DEFAULT '',
                UNIQUE (code, market)))"),
            QStringLiteral("%SQLITE% INSERT INTO new_security (id, code, market, name) "
                           "SELECT id, code, market, name FROM security"),
            QStringLiteral("%SQLITE% DROP TABLE security"),
            QStringLiteral("%SQLITE% ALTER TABLE new_security RENAME TO security"),
            QStringLiteral(R"(%SQLITE% CREATE TABLE new_execution (
                id %ID%,
                security_id BIGINT NOT NULL REFERENCES security (id),
                statement_id BIGINT REFERENCES statement (id),
                side TEXT NOT NULL,
                trade_date INTEGER NOT NULL,
                trade_time INTEGER NOT NULL,
                price BIGINT NOT NULL CHECK (price >= 0),
                quantity BIGINT NOT NULL CHECK (quantity > 0),
                amount BIGINT NOT NULL,
                fee BIGINT NOT NULL,
                order_no TEXT NOT NULL,
                deal_no TEXT NOT NULL))"),
            QStringLiteral(
                "%SQLITE% INSERT INTO new_execution (id, security_id, statement_id, side, trade_date, "
                "trade_time, price, quantity, amount, fee, order_no, deal_no) SELECT id, security_id, "
                "statement_id, side, trade_date, trade_time, price, quantity, amount, fee, order_no, deal_no "
                "FROM execution"),
            QStringLiteral("%SQLITE% DROP TABLE execution"),
            QStringLiteral("%SQLITE% ALTER TABLE new_execution RENAME TO execution"),
            QStringLiteral("%SQLITE% CREATE INDEX execution_by_time ON execution (security_id, trade_date, "
                           "trade_time, id, side, price, quantity, amount, fee, order_no, deal_no)"),
            QStringLiteral("ALTER TABLE statement ADD COLUMN account TEXT NOT NULL DEFAULT ''"),
            QStringLiteral("ALTER TABLE statement ADD COLUMN added INTEGER NOT NULL DEFAULT 0"),
            QStringLiteral("ALTER TABLE statement ADD COLUMN already_there INTEGER NOT NULL DEFAULT 0"),
            QStringLiteral("ALTER TABLE statement ADD COLUMN money INTEGER NOT NULL DEFAULT 0"),
            QStringLiteral("ALTER TABLE statement ADD COLUMN first_date INTEGER NOT NULL DEFAULT 0"),
            QStringLiteral("ALTER TABLE statement ADD COLUMN last_date INTEGER NOT NULL DEFAULT 0"),
            QStringLiteral(
                "ALTER TABLE statement ADD COLUMN balance BIGINT"), // cash that the statement tells
            QStringLiteral("ALTER TABLE statement ADD COLUMN balance_date INTEGER"),
            QStringLiteral("ALTER TABLE statement ADD COLUMN balance_time INTEGER"),
            QStringLiteral("ALTER TABLE statement ADD COLUMN cash_before BIGINT"), // the account's before it
            QStringLiteral(
                "UPDATE statement SET added = (SELECT COUNT(*) FROM execution e WHERE e.statement_id = "
                "statement.id), first_date = COALESCE((SELECT MIN(e.trade_date) FROM execution e WHERE "
                "e.statement_id = statement.id), 0), last_date = COALESCE((SELECT MAX(e.trade_date) FROM "
                "execution e WHERE e.statement_id = statement.id), 0)"),
            QStringLiteral(R"(CREATE TABLE money_entry (
                id %ID%,
                statement_id BIGINT NOT NULL REFERENCES statement (id),
                entry_date INTEGER NOT NULL,
                entry_time INTEGER NOT NULL,
                kind TEXT NOT NULL,
                amount BIGINT NOT NULL,
                currency TEXT NOT NULL,
                code TEXT NOT NULL,
                note TEXT NOT NULL,
                number TEXT NOT NULL))"),
            // fees that were not known before this statement
            QStringLiteral(R"(CREATE TABLE completed_fee (
                statement_id BIGINT NOT NULL REFERENCES statement (id),
                execution_id BIGINT NOT NULL REFERENCES execution (id)))"),
            QStringLiteral(R"(CREATE TABLE import_profile (
                id INTEGER PRIMARY KEY CHECK (id = 1),
                text TEXT NOT NULL))"),
            QStringLiteral("ALTER TABLE account ADD COLUMN cost_method TEXT NOT NULL DEFAULT 'average'"),
        },
        {
            // by which is found out whether a change was made whose end was not confirmed
            QStringLiteral(R"(CREATE TABLE change_mark (
                mark BIGINT PRIMARY KEY,
                made_on INTEGER NOT NULL))"),
        },
        {
            QStringLiteral("ALTER TABLE statement ADD COLUMN holders TEXT NOT NULL DEFAULT ''"),
            // the account's cash without any statement's balance, when this statement came
            QStringLiteral("ALTER TABLE statement ADD COLUMN own_cash BIGINT"),
            // the part of cash that balances told, and the import after which the user entered an amount
            QStringLiteral("ALTER TABLE account ADD COLUMN stated_cash BIGINT NOT NULL DEFAULT 0"),
            QStringLiteral("ALTER TABLE account ADD COLUMN entered_after BIGINT NOT NULL DEFAULT 0"),
            QStringLiteral("UPDATE statement SET own_cash = (SELECT f.cash_before FROM statement f WHERE "
                           "f.balance IS NOT NULL ORDER BY f.id LIMIT 1) WHERE balance IS NOT NULL"),
            QStringLiteral("UPDATE account SET stated_cash = COALESCE((SELECT s.balance - s.own_cash FROM "
                           "statement s WHERE s.balance IS NOT NULL ORDER BY s.balance_date DESC, "
                           "s.balance_time DESC, s.id DESC LIMIT 1), 0)"),
            // cash that is not the newest balance was entered after it, and no undo may touch it
            QStringLiteral(
                "UPDATE account SET stated_cash = 0, entered_after = (SELECT MAX(id) FROM "
                "statement) WHERE cash <> (SELECT s.balance FROM statement s WHERE s.balance IS NOT "
                "NULL ORDER BY s.balance_date DESC, s.balance_time DESC, s.id DESC LIMIT 1)"),
            // how many numbers imports have had: none has the number of one that was taken back
            QStringLiteral("ALTER TABLE account ADD COLUMN imports BIGINT NOT NULL DEFAULT 0"),
            QStringLiteral("UPDATE account SET imports = (SELECT COALESCE(MAX(id), 0) FROM statement)"),
            // what statements told whose days the ledger knew already, to book it anew
            QStringLiteral(R"(CREATE TABLE told_statement (
                statement_id BIGINT NOT NULL REFERENCES statement (id),
                part INTEGER NOT NULL,
                entries %BYTES% NOT NULL,
                PRIMARY KEY (statement_id, part)))"),
        },
        {
            // of the fee
            QStringLiteral("ALTER TABLE execution ADD COLUMN stamp_duty BIGINT NOT NULL DEFAULT 0"),
            QStringLiteral("DROP INDEX execution_by_time"), // it holds whole rows
            QStringLiteral(
                "CREATE INDEX execution_by_time ON execution (security_id, trade_date, trade_time, "
                "id, side, price, quantity, amount, fee, order_no, deal_no, stamp_duty)"),
        },
        {
            // by which whoever imports finds out whether it was done, when nothing has told him
            QStringLiteral("ALTER TABLE statement ADD COLUMN mark TEXT NOT NULL DEFAULT ''"),
        },
        {
            // what is left of an order is placed at another price when its cancellation is confirmed
            QStringLiteral(R"(CREATE TABLE order_replacement (
                client_no TEXT PRIMARY KEY,
                order_id BIGINT NOT NULL REFERENCES trade_order (id),
                price BIGINT NOT NULL CHECK (price > 0),
                state TEXT NOT NULL,
                new_order_id BIGINT REFERENCES trade_order (id),
                reason TEXT NOT NULL DEFAULT ''))"),
            QStringLiteral("CREATE INDEX replacement_by_order ON order_replacement (order_id)"),
        },
        {
            // how far the exchange had dealt a minute; recorded: the day that a replay plays, 0 of the
            // market's own
            QStringLiteral(R"(CREATE TABLE told_minute (
                security_id BIGINT PRIMARY KEY REFERENCES security (id),
                quote_date INTEGER NOT NULL,
                quote_time INTEGER NOT NULL,
                high BIGINT NOT NULL,
                low BIGINT NOT NULL,
                close BIGINT NOT NULL,
                volume BIGINT NOT NULL,
                recorded INTEGER NOT NULL))"),
        },
    };
    return steps;
}

/// Nothing for a statement of the other database alone.
QString inDialect(QString sql, Database::Kind kind)
{
    const bool isSqlite = kind == Database::Kind::Sqlite;
    const QString ownMark = isSqlite ? QStringLiteral("%SQLITE%") : QStringLiteral("%POSTGRESQL%");
    const QString otherMark = isSqlite ? QStringLiteral("%POSTGRESQL%") : QStringLiteral("%SQLITE%");
    if (sql.startsWith(otherMark)) {
        return QString();
    }
    return sql.remove(ownMark)
        .replace(QStringLiteral("%ID%"),
                 isSqlite ? QStringLiteral("INTEGER PRIMARY KEY")
                          : QStringLiteral("BIGINT GENERATED BY DEFAULT AS IDENTITY PRIMARY KEY"))
        .replace(QStringLiteral("%BYTES%"), isSqlite ? QStringLiteral("BLOB") : QStringLiteral("BYTEA"));
}

void refuseNewer(int version)
{
    if (version > currentSchemaVersion()) {
        throw Error(translated("the ledger has version %1, this program knows up to %2: use a newer program")
                        .arg(version)
                        .arg(currentSchemaVersion()));
    }
}

void applyMigrations(Database *database, int to)
{
    const int from = schemaVersion(database); // another process may have been faster
    refuseNewer(from);
    if (from >= to) {
        return;
    }
    if (from == 0) {
        database->run(QStringLiteral("CREATE TABLE ledger_version (version INTEGER NOT NULL)"));
        database->run(QStringLiteral("INSERT INTO ledger_version (version) VALUES (0)"));
    }
    for (auto step = static_cast<size_t>(from); step < static_cast<size_t>(to); ++step) {
        for (const QString &sql : migrations()[step]) {
            const QString statement = inDialect(sql, database->kind());
            if (!statement.isEmpty()) {
                database->run(statement);
            }
        }
    }
    database->run(QStringLiteral("UPDATE ledger_version SET version = ?"), {to});
    UncheckedReferences::refuseBroken(database);
}

/// Where a statement of the version makes the table.
void markChangesIfPossible(Database *database)
{
    if (database->hasTable(QStringLiteral("change_mark"))) {
        database->markChanges();
    }
}

void removeCopy(const QString &copy)
{
    if (!copy.isEmpty()) {
        QFile::remove(copy);
    }
}

} // namespace

int currentSchemaVersion()
{
    return static_cast<int>(migrations().size());
}

int schemaVersion(Database *database)
{
    if (!database->hasTable(QStringLiteral("ledger_version"))) {
        return 0;
    }
    Rows query = database->run(QStringLiteral("SELECT version FROM ledger_version"));
    return query.next() ? query.value(0).toInt() : 0;
}

void migrateWithin(Database *database)
{
    applyMigrations(database, currentSchemaVersion());
}

void migrateSchema(Database *database)
{
    migrateSchema(database, currentSchemaVersion());
}

void migrateSchema(Database *database, int to)
{
    const int found = schemaVersion(database);
    refuseNewer(found);
    if (found == to) {
        markChangesIfPossible(database);
        return;
    }
    if (database->isReadOnly()) {
        throw Error(translated("the ledger has version %1 and can only be read: it cannot be brought up to "
                               "version %2, which this program needs")
                        .arg(found)
                        .arg(to));
    }
    const QString copy = found > 0 ? copyAside(database, found) : QString();
    try {
        const UncheckedReferences tablesAreMadeAnew(database);
        Transaction transaction(database);
        applyMigrations(database, to);
        transaction.commit();
    } catch (const OutcomeUnknown &) {
        throw; // the tables may be the new ones
    } catch (...) {
        removeCopy(copy); // the ledger is as it was, and each further try would leave one more
        throw;
    }
    markChangesIfPossible(database);
}

} // namespace TradeModule
