#pragma once

#include "trademodule/import/StatementRow.h"
#include "trademodule/ledger/Execution.h"

namespace TradeModule {

/// The numbers of a statement's entry. Each function throws an Error that names what cannot be.
class EntryAmounts
{
public:
    /// The row stays the caller's and outlives this object.
    explicit EntryAmounts(const StatementRow &row) : m_row(row) {}

    /// Shares, or 0.
    qint64 quantity(Side side) const;
    Money price(Side side) const;
    /// Of an execution whose side, price and quantity are known.
    Money amount(const Execution &execution) const;
    /// Of an execution whose amount is known, too.
    Money fee(const Execution &execution) const;

private:
    double number(Column column, const char *what) const;
    Money money(Column column, const char *what) const;
    Money sum(Column column, const char *what) const;
    Money listedFees() const;

    const StatementRow &m_row;
};

} // namespace TradeModule
