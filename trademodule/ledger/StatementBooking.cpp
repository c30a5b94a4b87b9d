#include "trademodule/ledger/StatementBooking.h"

#include "trademodule/ledger/ExecutionColumns.h"
#include "trademodule/ledger/ExecutionTable.h"
#include "trademodule/ledger/HoldingTable.h"

#include <QDateTime>

#include <algorithm>

namespace TradeModule {

namespace {

DateRange daysOf(const Executions &executions)
{
    const auto [first, last] =
        std::minmax_element(executions.begin(), executions.end(),
                            [](const Execution &a, const Execution &b) { return a.date < b.date; });
    return {first->date, last->date};
}

} // namespace

Booked StatementBooking::book(const Ledger::Progress &progress)
{
    registerSecurities();
    const Executions added = newExecutions();
    m_booked.added = added.size();
    m_booked.alreadyThere = m_statement.executions.size() - added.size();
    if (!added.isEmpty()) {
        insert(added, progress);
        noteNewest(added);
    }
    updateHoldings();
    return m_booked;
}

void StatementBooking::registerSecurities()
{
    for (const Execution &execution : m_statement.executions) {
        m_securityIds.insert(execution.security, 0);
    }
    for (auto security = m_securityIds.begin(); security != m_securityIds.end(); ++security) {
        security.value() =
            m_ledger->registerSecurity(security.key(), m_statement.names.value(security.key()));
    }
}

FillCounts StatementBooking::fillsInLedger()
{
    FillCounts counts;
    const DateRange days = daysOf(m_statement.executions);
    for (auto security = m_securityIds.cbegin(); security != m_securityIds.cend(); ++security) {
        ExecutionTable(m_database)
            .visitEntries(security.value(), security.key(), days,
                          [&counts](const Execution &entry) { ++counts[FillKey(entry)]; });
    }
    return counts;
}

/// A fill that is n times in the statement and m times in the ledger is new n - m times.
Executions StatementBooking::newExecutions()
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

QVariant StatementBooking::registerStatement()
{
    QSqlQuery row = m_database->run(
        QStringLiteral("INSERT INTO statement (file, imported_at) VALUES (?, ?) RETURNING id"),
        {m_statement.file, QDateTime::currentDateTimeUtc().toString(Qt::ISODate)});
    row.next();
    return row.value(0);
}

void StatementBooking::insert(const Executions &executions, const Ledger::Progress &progress)
{
    constexpr int progressStep = 1000;
    const QVariant statementId = registerStatement();
    QSqlQuery insertion = m_database->prepared(ExecutionColumns::insertion());
    for (int i = 0; i < executions.size(); ++i) {
        const qint64 securityId = m_securityIds.value(executions[i].security);
        m_database->run(&insertion, ExecutionColumns::insertedValues(executions[i], securityId, statementId));
        if (progress && (i % progressStep == 0 || i + 1 == executions.size())) {
            progress(i + 1, executions.size());
        }
    }
}

void StatementBooking::noteNewest(const Executions &executions)
{
    QHash<SecurityId, Execution> newest;
    for (const Execution &execution : executions) {
        newest.insert(execution.security, execution);
    }
    m_booked.lastAdded = newest.values().toVector();
}

void StatementBooking::updateHoldings()
{
    HoldingTable holdings(m_database);
    for (auto security = m_securityIds.cbegin(); security != m_securityIds.cend(); ++security) {
        if (holdings.addUp(security.value(), security.key()).unexplained() > 0) {
            m_booked.unexplained.append(security.key());
        }
    }
}

} // namespace TradeModule
