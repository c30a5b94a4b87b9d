#pragma once

#include "trademodule/ledger/Ledger.h"
#include "trading/Quote.h"

#include <vector>

namespace TradeModule {

/// How far the minute of a security was told when something of it was dealt, or an order came: in the ledger,
/// so that a restart deals no share twice, and none of before the order.
class ToldMinutes
{
public:
    /// The ledger stays the caller's and outlives this object.
    explicit ToldMinutes(Ledger *ledger) : m_ledger(ledger) {}

    /// The last quotes of the day's securities, the latest last. What a minute opened with is its close in
    /// them.
    std::vector<Trading::Quote> ofDay(TradingDate day);

    /// In place of what was known of the security. Within the transaction of the change that it belongs to.
    void write(const Trading::Quote &quote);

private:
    Ledger *const m_ledger;
};

} // namespace TradeModule
