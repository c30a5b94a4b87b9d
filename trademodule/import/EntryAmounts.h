#pragma once

#include "trademodule/import/StatementRow.h"
#include "trademodule/ledger/Execution.h"
#include "trading/CodeRanges.h"

#include <optional>

namespace TradeModule {

using Trading::SecurityClass;

/// The numbers of a statement's entry. Each function throws an Error that names what cannot be.
class EntryAmounts
{
public:
    /// The row stays the caller's and outlives this object. Of bonds the kind must be told: their lots have
    /// ten.
    explicit EntryAmounts(const StatementRow &row, SecurityClass kind = SecurityClass::Share)
        : m_row(row),
          m_kind(kind)
    {
    }

    /// Shares with their sign, or 0.
    qint64 quantity() const;
    /// Not negative.
    Money price() const;
    /// As the statement says; 0 for none.
    Money statedAmount() const;
    /// What the entry changed on the account; nothing when the statement does not tell.
    std::optional<Money> net() const;

    /// True when a bond's quantity is in lots of ten, though no unit says so: the money tells.
    bool isInLots(const Execution &execution) const;
    /// Of an execution whose side, price and quantity are known: what is stated, which must be price ×
    /// quantity but for the rounding of an average price. Columns that slipped by one show here.
    Money amount(const Execution &execution) const;

    struct Fee
    {
        Money fee;
        bool isInDoubt = false; ///< the columns of fees do not come to what was paid
    };
    /// Of an execution whose amount is known, too: the column of the total, else what the account paid beyond
    /// the amount, else the sum of the columns.
    Fee fee(const Execution &execution) const;
    Money listedFees() const;
    /// Of a fee, what its own column says is stamp duty; nothing where that is more than the fee.
    Money stampDuty(Money fee) const;

    std::optional<qint64> sharesAfter() const;
    std::optional<Money> cashAfter() const;

private:
    std::optional<Money> incomeLessExpense() const;
    double number(Column column, const char *what) const;
    Money money(Column column, const char *what) const;
    Money sum(Column column, const char *what) const;
    void refuseOtherSize(const Execution &execution, Money computed) const;
    void refuseWrongSign(const Execution &execution, Money net) const;
    void refuseWrongSize(const Execution &execution, Money net) const;
    Money signedNet(const Execution &execution) const;

    const StatementRow &m_row;
    const SecurityClass m_kind;
};

} // namespace TradeModule
