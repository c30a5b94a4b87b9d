#pragma once

#include "trademodule/ledger/Database.h"
#include "trademodule/ledger/ProcessIdentity.h"

namespace TradeModule {

/// Who serves a ledger, or did last.
struct LedgerServer
{
    ProcessIdentity process;
    QString since;    ///< when it began, for people; empty when nobody ever served the ledger
    qint64 fence = 0; ///< raised by each that begins; 0 when nobody ever did
};

/// A ledger's word on who serves it.
class ServingTable
{
public:
    /// The database stays the caller's and outlives this object.
    explicit ServingTable(Database *database) : m_database(database) {}

    LedgerServer server();
    qint64 fence();

    /// Enters this process as the one that serves from now on, with the next fence; a transaction of its own.
    /// A ledger that can only be read keeps its fence, and does not hear of it.
    LedgerServer enter();

private:
    Database *const m_database;
};

} // namespace TradeModule
