#pragma once

#include "terminal/trade/RecordTable.h"
#include "terminal/trades/AccountTrade.h"

namespace Terminal {

enum class TradeColumn { Day, Time, Side, Quantity, Price, Amount, Order };

/// Trades, newest first.
class TradesTable : public RecordTable<AccountTrade, TradeColumn>
{
public:
    TradesTable();

    /// Takes trades that are oldest first.
    void setTrades(const Trades &trades);

    /// The number of a row's trade among those that were set, and the row of a trade.
    size_t tradeOf(int row) const { return records().size() - 1 - static_cast<size_t>(row); }
    int rowOf(size_t trade) const { return static_cast<int>(records().size() - 1 - trade); }
};

} // namespace Terminal
