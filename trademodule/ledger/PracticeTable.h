#pragma once

#include "trademodule/SharedTypes.h"
#include "trademodule/ledger/Database.h"

#include <optional>

namespace TradeModule {

/// The recorded day that an account practises. Only a ledger that was begun for practice has such a table:
/// the orders and trades of every other one are of the day on which they are made.
class PracticeTable
{
public:
    /// The database stays the caller's and outlives this object.
    explicit PracticeTable(Database *database) : m_database(database) {}

    /// Nothing in a ledger that is none for practice.
    std::optional<TradingDate> day();

    /// To be called once, in a transaction of the caller's, before the account trades.
    void begin(TradingDate day);

private:
    Database *const m_database;
};

} // namespace TradeModule
