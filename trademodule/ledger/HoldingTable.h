#pragma once

#include "trademodule/ledger/Database.h"
#include "trademodule/ledger/Position.h"

namespace TradeModule {

/// The holdings of a ledger: what its executions come to, kept so that a question need not add them up.
class HoldingTable
{
public:
    /// The database stays the caller's and outlives this object.
    explicit HoldingTable(Database *database) : m_database(database) {}

    /// An empty one for a security that the ledger does not know.
    Holding find(const SecurityId &security);
    /// What is held, by code.
    QVector<Position> positions();

    /// Writes a holding. `id` is the security's key in the ledger.
    void set(qint64 id, const Holding &holding);
    /// Writes what all entries of the security come to, and gives it back.
    Holding addUp(qint64 id, const SecurityId &security);
    /// The same for a security of which only the key is known.
    void addUp(qint64 id);

private:
    Database *const m_database;
};

} // namespace TradeModule
