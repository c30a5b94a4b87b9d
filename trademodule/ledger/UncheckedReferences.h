#pragma once

#include "trademodule/ledger/Database.h"

namespace TradeModule {

/// As long as it lives, a SQLite database does not look after the references between its tables: so a table
/// is made anew under those that refer to it. Inside a transaction that cannot be asked for: this object is
/// made before it and goes after it. PostgreSQL changes its tables in place and needs nothing of this.
class UncheckedReferences
{
public:
    /// The database stays the caller's and outlives this object.
    explicit UncheckedReferences(Database *database);
    ~UncheckedReferences();
    Q_DISABLE_COPY_MOVE(UncheckedReferences)

    /// A LedgerError, which names the table, when a row refers to none: to be called before the commit.
    static void refuseBroken(Database *database);

private:
    Database *const m_database;
};

} // namespace TradeModule
