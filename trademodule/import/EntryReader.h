#pragma once

#include "trademodule/import/LeftOut.h"
#include "trademodule/import/ReadOptions.h"
#include "trademodule/import/StatementRow.h"
#include "trademodule/ledger/Execution.h"

#include <variant>

namespace TradeModule {

/// What a line of a statement is.
using Entry = std::variant<Execution, LeftOut>;

/// Reads the entries of a statement, one row after the other.
class EntryReader
{
public:
    /// The options stay the caller's and outlive this object.
    explicit EntryReader(const ReadOptions &options) : m_options(options) {}

    /// An Error says why the row cannot be read.
    Entry read(const StatementRow &row) const;

private:
    Entry readTrade(const StatementRow &row, Side side) const;
    TradingDate dateOf(const StatementRow &row) const;

    const ReadOptions &m_options;
};

} // namespace TradeModule
