#pragma once

#include "trading/CodeRanges.h"

#include <QStringList>
#include <QVector>

#include <array>

namespace TradeModule {

class ImportProfile;

/// What a column of a statement means.
enum class Column {
    Date,
    Time,
    Code,
    Name,
    Side,     ///< holds nothing but the side
    Business, ///< holds what kind of entry it is, the side among them
    Remark,
    Price,
    Quantity,
    Amount,
    Net,      ///< what the entry changed on the account, negative for a buy
    Income,   ///< the same, where what came and what went have columns of their own
    Expense,  ///< and this one what went
    TotalFee, ///< all fees in one
    Commission,
    CommissionTwin, ///< another commission column, which may hold the same number once more
    OtherFee,
    StampDuty, ///< one of the fees
    OrderNo,
    DealNo,
    Market,
    Holder, ///< the shareholder's code, whose first character tells the market
    Account,
    Currency,
    SharesAfter, ///< what is held after the entry
    CashAfter,   ///< what the account has after the entry
    State,       ///< of the order: whether it was dealt
    Cancelled,   ///< whether the order was taken back, a yes or no
    Unused,      ///< known, and of no use here
};

/// What one in a column counts: of shares or yuan, and of bonds where that is another number.
struct ColumnUnit
{
    qint64 shares = 1;
    qint64 bonds = 1;
};

/// The columns of a statement, found by the names in its header line, the user's own names among them.
class StatementColumns
{
public:
    StatementColumns() = default;
    StatementColumns(const QStringList &headerCells, const ImportProfile &profile);

    /// True when the line can be the header of executed trades, with price, quantity and security, or of
    /// movements of money, with day, business and net amount.
    bool isHeader() const;
    /// How many of the names are known; a line of data has none.
    int knownNames() const;
    bool has(Column column) const { return !positionsOf(column).isEmpty(); }

    int count() const { return m_names.size(); }
    /// Where a column of this meaning stands, the best first.
    const QVector<int> &positionsOf(Column column) const { return m_positions[static_cast<size_t>(column)]; }
    /// The name in the header of the best column of this meaning.
    QString nameOf(Column column) const;
    /// True when there is a column of what entries changed on the account, or two.
    bool tellNet() const { return has(Column::Net) || has(Column::Income) || has(Column::Expense); }
    /// Names that say nothing to the import.
    const QStringList &unknownNames() const { return m_unknownNames; }
    /// The cells of these.
    QStringList unknownCells(const QStringList &cells) const;

    /// The cell of the best column of this meaning; empty when there is none or the line is too short.
    QString cell(Column column, const QStringList &cells) const;
    /// The cells of all columns of this meaning.
    QStringList cells(Column column, const QStringList &cells) const;

    /// What one in the best column of this meaning counts, by the unit in its name: 100 for 成交数量(手), but
    /// ten of bonds; 10000 for 成交金额(万元).
    qint64 unit(Column column, Trading::SecurityClass kind) const;
    /// The name of a column that counts in a unit which nobody knows; empty when there is none.
    QString nameOfUnknownUnit() const;

private:
    static constexpr size_t columnKinds = static_cast<size_t>(Column::Unused) + 1;

    QStringList m_names;
    QStringList m_unknownNames;
    QVector<int> m_unknownPositions; ///< one for each of the unknown names
    QVector<ColumnUnit> m_units;     ///< one for each name
    std::array<QVector<int>, columnKinds> m_positions;
};

} // namespace TradeModule
