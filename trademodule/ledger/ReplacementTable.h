#pragma once

#include "trademodule/ledger/Database.h"
#include "trademodule/ledger/Replacement.h"

#include <optional>

namespace TradeModule {

/// The replacements of orders that were ever asked for. Changes are made inside a transaction of the
/// caller's.
class ReplacementTable
{
public:
    /// The database stays the caller's and outlives this object.
    explicit ReplacementTable(Database *database) : m_database(database) {}

    void add(const Replacement &replacement);
    /// Writes what became of it.
    void update(const Replacement &replacement);

    std::optional<Replacement> find(const QString &clientNumber);
    /// The one that waits for the cancellation of an order.
    std::optional<Replacement> findWaiting(qint64 orderNumber);

private:
    std::optional<Replacement> first(const QString &condition, const QVariantList &values);

    Database *m_database;
};

} // namespace TradeModule
