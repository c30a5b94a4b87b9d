#pragma once

#include <QStringList>
#include <QVector>

#include <map>

namespace TradeModule {

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
    TotalFee, ///< all fees in one
    Commission,
    CommissionTwin, ///< another commission column, which may hold the same number once more
    OtherFee,
    OrderNo,
    DealNo,
    Market,
    Holder, ///< the shareholder's code, whose first character tells the market
};

/// The columns of a statement, found by the names in its header line.
class StatementColumns
{
public:
    StatementColumns() = default;
    explicit StatementColumns(const QStringList &headerCells);

    /// True when the line can be the header of executed trades: it names price, quantity and security.
    bool isHeader() const;
    bool has(Column column) const { return m_positions.find(column) != m_positions.end(); }

    /// The cell of the best column of this meaning; empty when there is none or the line is too short.
    QString cell(Column column, const QStringList &cells) const;
    /// The cells of all columns of this meaning.
    QStringList cells(Column column, const QStringList &cells) const;

private:
    std::map<Column, QVector<int>> m_positions; // best first
};

} // namespace TradeModule
