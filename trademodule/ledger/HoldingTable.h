#pragma once

#include "trademodule/ledger/AccountHistory.h"
#include "trademodule/ledger/Position.h"

namespace TradeModule {

/// The holdings of a ledger: what its executions come to, kept so that a question need not add them up.
class HoldingTable
{
public:
    /// The database stays the caller's and outlives this object.
    explicit HoldingTable(Database *database) : m_database(database) {}

    /// How costs are reckoned.
    CostMethod method();
    /// Reckons all costs anew.
    void setMethod(CostMethod method);

    /// An empty one for a security that the ledger does not know.
    Holding find(const SecurityId &security);
    /// What is held, by code.
    QVector<Position> positions();

    /// Writes a holding. `id` is the security's key in the ledger.
    void set(qint64 id, const Holding &holding);
    /// Writes what all that happened to the security comes to, and gives it back.
    Holding addUp(const KnownSecurity &security);
    /// The same for all securities, or those of a code.
    void addUpAll(const QString &code = {});

private:
    Database *const m_database;
};

} // namespace TradeModule
