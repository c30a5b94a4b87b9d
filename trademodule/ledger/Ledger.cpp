#include "trademodule/ledger/Ledger.h"

#include "trademodule/Error.h"
#include "trademodule/Language.h"
#include "trademodule/ledger/FillKey.h"
#include "trademodule/ledger/LedgerQueries_p.h"
#include "trademodule/ledger/LedgerSchema.h"
#include "trademodule/ledger/Transaction.h"

#include <QDateTime>

#include <algorithm>

namespace TradeModule {

namespace {

struct SideRow
{
    Side side;
    const char *letter;
};

constexpr SideRow SideRows[] = {{Side::Buy, "B"}, {Side::Sell, "S"}, {Side::Bonus, "G"}};

QString letterOf(Side side)
{
    const auto *row = std::find_if(std::begin(SideRows), std::end(SideRows),
                                   [side](const SideRow &candidate) { return candidate.side == side; });
    return QString::fromLatin1(row->letter);
}

Side sideOf(const QString &letter)
{
    for (const SideRow &row : SideRows) {
        if (letter == QLatin1String(row.letter)) {
            return row.side;
        }
    }
    throw Error(translated("the ledger holds a trade of the unknown side \"%1\"").arg(letter));
}

/// A row of LedgerQueries::executionColumns().
Execution executionOf(const QSqlQuery &row, const SecurityId &security)
{
    Execution execution;
    execution.security = security;
    execution.side = sideOf(row.value(0).toString());
    execution.date = row.value(1).toInt();
    execution.time = row.value(2).toInt();
    execution.price = Money::ofSteps(row.value(3).toLongLong());
    execution.quantity = row.value(4).toLongLong();
    execution.amount = Money::ofSteps(row.value(5).toLongLong());
    execution.fee = Money::ofSteps(row.value(6).toLongLong());
    execution.orderNo = row.value(7).toString();
    execution.dealNo = row.value(8).toString();
    return execution;
}

/// The security in a row of LedgerQueries::executionAndSecurityColumns().
SecurityId securityOf(const QSqlQuery &row)
{
    return {row.value(9).toString(), marketOfLetters(row.value(10).toString()).value_or(Market::Shanghai)};
}

Executions executionsOf(QSqlQuery rows)
{
    Executions executions;
    while (rows.next()) {
        executions.append(executionOf(rows, securityOf(rows)));
    }
    return executions;
}

Executions executionsOf(QSqlQuery rows, const SecurityId &security)
{
    Executions executions;
    while (rows.next()) {
        executions.append(executionOf(rows, security));
    }
    return executions;
}

DateRange daysOf(const Executions &executions)
{
    const auto [first, last] =
        std::minmax_element(executions.begin(), executions.end(),
                            [](const Execution &a, const Execution &b) { return a.date < b.date; });
    return {first->date, last->date};
}

QString insertExecution()
{
    return QStringLiteral(
        "INSERT INTO execution (security_id, statement_id, side, trade_date, trade_time, price, "
        "quantity, amount, fee, order_no, deal_no) VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)");
}

QVariantList valuesOf(const Execution &execution, qint64 securityId, const QVariant &statementId)
{
    const QLatin1String notNull("");
    return {securityId,
            statementId,
            letterOf(execution.side),
            execution.date,
            execution.time,
            execution.price.steps(),
            execution.quantity,
            execution.amount.steps(),
            execution.fee.steps(),
            notNull + execution.orderNo,
            notNull + execution.dealNo};
}

void writeHolding(Database *database, qint64 securityId, const Holding &holding)
{
    database->run(QStringLiteral("INSERT INTO holding (security_id, quantity, cost, unexplained) "
                                 "VALUES (?, ?, ?, ?) ON CONFLICT (security_id) DO UPDATE SET "
                                 "quantity = excluded.quantity, cost = excluded.cost, "
                                 "unexplained = excluded.unexplained"),
                  {securityId, holding.quantity(), holding.cost(), holding.unexplained()});
}

QSqlQuery entriesOf(Database *database, qint64 securityId, DateRange days)
{
    return database->run(LedgerQueries::entriesOfSecurity(), {securityId, days.first, days.last});
}

/// From all entries of the security, in order of time.
Holding holdingOf(Database *database, qint64 securityId, const SecurityId &security)
{
    Holding holding;
    QSqlQuery rows = entriesOf(database, securityId, DateRange());
    while (rows.next()) {
        holding.add(executionOf(rows, security));
    }
    return holding;
}

bool hasLater(Database *database, qint64 securityId, const Execution &execution)
{
    return database
        ->run(QStringLiteral("SELECT 1 FROM execution WHERE security_id = ? "
                             "AND (trade_date, trade_time) > (?, ?) LIMIT 1"),
              {securityId, execution.date, execution.time})
        .next();
}

} // namespace

/// Books one statement inside a transaction.
class Ledger::Writer
{
public:
    Writer(Ledger *ledger, const Statement &statement)
        : m_ledger(ledger),
          m_database(ledger->database()),
          m_statement(statement)
    {
    }

    Booked book(const Progress &progress);

private:
    void registerSecurities();
    FillCounts fillsInLedger();
    Executions newExecutions();
    void insert(const Executions &executions, const Progress &progress);
    QVariant registerStatement();
    void updateHoldings();

    Ledger *const m_ledger;
    Database *const m_database;
    const Statement &m_statement;
    QHash<SecurityId, qint64> m_securityIds;
    Booked m_booked;
};

Booked Ledger::Writer::book(const Progress &progress)
{
    registerSecurities();
    const Executions added = newExecutions();
    m_booked.added = added.size();
    m_booked.alreadyThere = m_statement.executions.size() - added.size();
    if (!added.isEmpty()) {
        insert(added, progress);
    }
    updateHoldings();
    return m_booked;
}

void Ledger::Writer::registerSecurities()
{
    for (const Execution &execution : m_statement.executions) {
        m_securityIds.insert(execution.security, 0);
    }
    for (auto security = m_securityIds.begin(); security != m_securityIds.end(); ++security) {
        security.value() =
            m_ledger->registerSecurity(security.key(), m_statement.names.value(security.key()));
    }
}

FillCounts Ledger::Writer::fillsInLedger()
{
    FillCounts counts;
    const DateRange days = daysOf(m_statement.executions);
    for (auto security = m_securityIds.cbegin(); security != m_securityIds.cend(); ++security) {
        QSqlQuery rows = entriesOf(m_database, security.value(), days);
        while (rows.next()) {
            ++counts[FillKey(executionOf(rows, security.key()))];
        }
    }
    return counts;
}

Executions Ledger::Writer::newExecutions()
{
    if (m_statement.executions.isEmpty()) {
        return {};
    }
    FillCounts known = fillsInLedger();
    Executions added;
    for (const Execution &execution : m_statement.executions) {
        const auto fill = known.find(FillKey(execution));
        if (fill != known.end() && *fill > 0) {
            --*fill;
        } else {
            added.append(execution);
        }
    }
    return added;
}

QVariant Ledger::Writer::registerStatement()
{
    QSqlQuery row = m_database->run(
        QStringLiteral("INSERT INTO statement (file, imported_at) VALUES (?, ?) RETURNING id"),
        {m_statement.file, QDateTime::currentDateTimeUtc().toString(Qt::ISODate)});
    row.next();
    return row.value(0);
}

void Ledger::Writer::insert(const Executions &executions, const Progress &progress)
{
    constexpr int ProgressStep = 1000;
    const QVariant statementId = registerStatement();
    QSqlQuery insertion = m_database->prepared(insertExecution());
    for (int i = 0; i < executions.size(); ++i) {
        const qint64 securityId = m_securityIds.value(executions[i].security);
        m_database->run(&insertion, valuesOf(executions[i], securityId, statementId));
        if (progress && (i % ProgressStep == 0 || i + 1 == executions.size())) {
            progress(i + 1, executions.size());
        }
    }
    QHash<SecurityId, Execution> newest;
    for (const Execution &execution : executions) {
        newest.insert(execution.security, execution);
    }
    m_booked.lastAdded = newest.values().toVector();
}

void Ledger::Writer::updateHoldings()
{
    for (auto security = m_securityIds.cbegin(); security != m_securityIds.cend(); ++security) {
        const Holding holding = holdingOf(m_database, security.value(), security.key());
        writeHolding(m_database, security.value(), holding);
        if (holding.unexplained() > 0) {
            m_booked.unexplained.append(security.key());
        }
    }
}

Ledger::Ledger(const QString &location) : m_database(location)
{
    migrateSchema(&m_database);
}

qint64 Ledger::registerSecurity(const SecurityId &security, const QString &name)
{
    const QString market = marketLetters(security.market);
    m_database.run(QStringLiteral("INSERT INTO security (code, market, name) VALUES (?, ?, ?) "
                                  "ON CONFLICT (code, market) DO UPDATE SET name = CASE "
                                  "WHEN excluded.name = '' THEN security.name ELSE excluded.name END"),
                   {security.code, market, QLatin1String("") + name});
    QSqlQuery id = m_database.run(QStringLiteral("SELECT id FROM security WHERE code = ? AND market = ?"),
                                  {security.code, market});
    id.next();
    return id.value(0).toLongLong();
}

void Ledger::add(const Execution &execution)
{
    const qint64 securityId = registerSecurity(execution.security, QString());
    Holding after = holding(execution.security);
    after.add(execution);
    m_database.run(insertExecution(), valuesOf(execution, securityId, QVariant(QVariant::LongLong)));
    if (hasLater(&m_database, securityId, execution)) {
        after = holdingOf(&m_database, securityId, execution.security);
    }
    writeHolding(&m_database, securityId, after);
}

Booked Ledger::book(const Statement &statement, Mode mode, const Progress &progress)
{
    Transaction transaction(&m_database);
    const Booked booked = Writer(this, statement).book(progress);
    if (mode == Mode::Keep) {
        transaction.commit();
    }
    return booked;
}

Executions Ledger::trades(const SecurityId &security, DateRange days)
{
    return executionsOf(
        m_database.run(LedgerQueries::tradesOfSecurity(),
                       {security.code, marketLetters(security.market), days.first, days.last}),
        security);
}

Executions Ledger::trades(const QString &code, DateRange days)
{
    return executionsOf(m_database.run(LedgerQueries::tradesOfCode(), {code, days.first, days.last}));
}

Executions Ledger::trades(DateRange days)
{
    return executionsOf(m_database.run(LedgerQueries::tradesOfDays(), {days.first, days.last}));
}

Holding Ledger::holding(const SecurityId &security)
{
    QSqlQuery row = m_database.run(QStringLiteral("SELECT h.quantity, h.cost, h.unexplained FROM holding h "
                                                  "JOIN security s ON s.id = h.security_id "
                                                  "WHERE s.code = ? AND s.market = ?"),
                                   {security.code, marketLetters(security.market)});
    if (!row.next()) {
        return {};
    }
    return {row.value(0).toLongLong(), row.value(1).toDouble(), row.value(2).toLongLong()};
}

QVector<Position> Ledger::positions()
{
    QSqlQuery rows = m_database.run(
        QStringLiteral("SELECT s.code, s.market, s.name, h.quantity, h.cost, h.unexplained FROM holding h "
                       "JOIN security s ON s.id = h.security_id WHERE h.quantity > 0 ORDER BY s.code"));
    QVector<Position> positions;
    while (rows.next()) {
        const SecurityId security{rows.value(0).toString(),
                                  marketOfLetters(rows.value(1).toString()).value_or(Market::Shanghai)};
        const Holding holding(rows.value(3).toLongLong(), rows.value(4).toDouble(),
                              rows.value(5).toLongLong());
        positions.append({security, rows.value(2).toString(), holding});
    }
    return positions;
}

} // namespace TradeModule
