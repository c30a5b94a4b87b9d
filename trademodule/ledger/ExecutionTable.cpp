#include "trademodule/ledger/ExecutionTable.h"

#include "trademodule/ledger/LedgerQueries_p.h"

namespace TradeModule {

namespace {

/// Rows of LedgerQueries::knownEntries...().
KnownEntries known(Rows rows, const SecurityId &security)
{
    KnownEntries entries;
    while (rows.next()) {
        const int beyond = ExecutionColumns::count();
        entries.append({rows.value(beyond).toLongLong(), ExecutionColumns::read(rows, security),
                        !rows.value(beyond + 1).isNull()});
    }
    return entries;
}

} // namespace

Executions ExecutionTable::trades(const SecurityId &security, DateRange days)
{
    Rows rows =
        m_database->run(LedgerQueries::tradesOfSecurity(), {security.code, marketLetters(security.market),
                                                            days.first.number(), days.last.number()});
    Executions executions;
    while (rows.next()) {
        executions.append(ExecutionColumns::read(rows, security));
    }
    return executions;
}

Executions ExecutionTable::trades(DateRange days)
{
    Executions executions;
    visitTrades(QString(), days, [&executions](const Execution &trade) { executions.append(trade); });
    return executions;
}

void ExecutionTable::visitTrades(const QString &code, DateRange days, const Visitor &visit)
{
    QVariantList values{days.first.number(), days.last.number()};
    if (!code.isEmpty()) {
        values.prepend(code);
    }
    Rows rows = m_database->run(
        code.isEmpty() ? LedgerQueries::tradesOfDays() : LedgerQueries::tradesOfCode(), values);
    while (rows.next()) {
        visit(ExecutionColumns::read(rows));
    }
}

void ExecutionTable::visitEntries(qint64 id, const SecurityId &security, DateRange days, const Visitor &visit)
{
    Rows rows =
        m_database->run(LedgerQueries::entriesOfSecurity(), {id, days.first.number(), days.last.number()});
    while (rows.next()) {
        visit(ExecutionColumns::read(rows, security));
    }
}

qint64 ExecutionTable::count()
{
    Rows row = m_database->run(QStringLiteral("SELECT COUNT(*) FROM execution"));
    row.next();
    return row.value(0).toLongLong();
}

bool ExecutionTable::hasEntries(qint64 id)
{
    return m_database->run(QStringLiteral("SELECT 1 FROM execution WHERE security_id = ? LIMIT 1"), {id})
        .next();
}

KnownEntries ExecutionTable::knownEntries(qint64 id, const SecurityId &security, DateRange days)
{
    return known(
        m_database->run(LedgerQueries::knownEntriesOfDays(), {id, days.first.number(), days.last.number()}),
        security);
}

KnownEntries ExecutionTable::knownAllotments(qint64 id, const SecurityId &security)
{
    return known(m_database->run(LedgerQueries::knownAllotments(), {id}), security);
}

bool ExecutionTable::hasLater(qint64 id, const Execution &execution)
{
    return m_database
        ->run(QStringLiteral("SELECT 1 FROM execution WHERE security_id = ? "
                             "AND (trade_date, trade_time) > (?, ?) LIMIT 1"),
              {id, execution.date.number(), execution.time.number()})
        .next();
}

void ExecutionTable::add(qint64 id, const Execution &execution)
{
    const QVariant noStatement(QVariant::LongLong);
    m_database->run(ExecutionColumns::insertion(),
                    ExecutionColumns::insertedValues(execution, id, noStatement));
}

} // namespace TradeModule
