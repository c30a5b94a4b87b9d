#pragma once

#include "trademodule/ledger/Database.h"
#include "trademodule/ledger/MoneyEntry.h"

namespace TradeModule {

/// What of the account's money moved otherwise than by trades.
class MoneyTable
{
public:
    /// The database stays the caller's and outlives this object.
    explicit MoneyTable(Database *database) : m_database(database) {}

    /// All of it, oldest first.
    MoneyEntries entries();
    /// The entries of a statement that are not there yet: one that is n times in it and m times in the table
    /// is new n - m times.
    MoneyEntries newOf(const MoneyEntries &entries);
    void add(const MoneyEntries &entries, const QVariant &statementId);

private:
    Database *const m_database;
};

} // namespace TradeModule
