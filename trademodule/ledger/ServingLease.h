#pragma once

#include "trademodule/ledger/Database.h"

#include <memory>

namespace TradeModule {

class ServingLock;

/// The right to serve a ledger, which one process has at a time: two would both deal its orders and both
/// answer its charts. It is kept as long as this object lives, and ends with its process, however that ends.
/// Who only reads or changes the ledger, such as an import, does not need it.
///
/// Where the ledger's server was away, the lease is taken anew with the next use of the ledger. When another
/// process has it by then, every use fails as a LedgerError from then on: what has lost its right changes
/// nothing.
class ServingLease
{
public:
    /// Takes the lease. A LedgerError, which names the host and the process that has it and since when, where
    /// another process does. The database stays the caller's and outlives this object.
    explicit ServingLease(Database *database);
    ~ServingLease();
    Q_DISABLE_COPY_MOVE(ServingLease)

private:
    void take();

    Database *const m_database;
    const QString m_record; ///< who we are, for those that are refused
    const std::unique_ptr<ServingLock> m_lock;
};

} // namespace TradeModule
