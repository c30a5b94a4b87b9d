#pragma once

#include "trademodule/import/CellError.h"
#include "trademodule/import/StatementColumns.h"

namespace TradeModule {

/// A line of a statement under its header.
class StatementRow
{
public:
    /// Columns and cells stay the caller's and outlive this object.
    StatementRow(const StatementColumns &columns, const QStringList &cells, bool areAmountsUnsigned)
        : m_columns(columns),
          m_cells(cells),
          m_areAmountsUnsigned(areAmountsUnsigned)
    {
    }

    const StatementColumns &columns() const { return m_columns; }
    const QStringList &allCells() const { return m_cells; }

    /// True when net amounts are written without signs: only words tell what came and what went.
    bool areAmountsUnsigned() const { return m_areAmountsUnsigned; }

    bool has(Column column) const { return m_columns.has(column); }
    /// The cell of the best column of a meaning; empty when there is none.
    QString cell(Column column) const { return m_columns.cell(column, m_cells); }
    /// The cells of all columns of a meaning.
    QStringList cells(Column column) const { return m_columns.cells(column, m_cells); }

    /// What to throw when the cell of a column makes no sense.
    CellError errorIn(Column column, const QString &reason) const
    {
        return CellError(reason, m_columns.nameOf(column));
    }

private:
    const StatementColumns &m_columns;
    const QStringList &m_cells;
    const bool m_areAmountsUnsigned;
};

} // namespace TradeModule
