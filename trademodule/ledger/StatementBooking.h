#pragma once

#include "trademodule/ledger/FillKey.h"
#include "trademodule/ledger/Ledger.h"

namespace TradeModule {

/// Books one statement inside a transaction of the caller's: adds the entries that are not there yet, and
/// brings the holdings up to date.
class StatementBooking
{
public:
    /// Ledger and statement stay the caller's and outlive this object.
    StatementBooking(Ledger *ledger, const Statement &statement)
        : m_ledger(ledger),
          m_database(ledger->database()),
          m_statement(statement)
    {
    }

    /// To be called once.
    Booked book(const Ledger::Progress &progress);

private:
    void registerSecurities();
    FillCounts fillsInLedger();
    Executions newExecutions();
    void insert(const Executions &executions, const Ledger::Progress &progress);
    void noteNewest(const Executions &executions);
    QVariant registerStatement();
    void updateHoldings();

    Ledger *const m_ledger;
    Database *const m_database;
    const Statement &m_statement;
    QHash<SecurityId, qint64> m_securityIds;
    Booked m_booked;
};

} // namespace TradeModule
