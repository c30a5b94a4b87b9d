#pragma once

#include "trademodule/import/AlignedColumns.h"
#include "trademodule/import/LineSplitting.h"
#include "trademodule/import/SheetRow.h"
#include "trademodule/import/StatementColumns.h"

#include <optional>

namespace TradeModule {

/// The header of a statement's table: what its columns mean, and how the lines under it are cut.
class TableHeader
{
public:
    /// The header that a row is; nothing when it is none.
    static std::optional<TableHeader> of(const SheetRow &row, const ImportProfile &profile);

    /// The columns that a row names, cut in the way that makes most of it.
    static StatementColumns columnsOf(const SheetRow &row, const ImportProfile &profile);

    /// False of nearly all rows that are none: headers have no digits.
    static bool mayBeHeader(const SheetRow &row);

    /// True of a row with names of columns that do not make a statement: another table begins.
    static bool isOfAnotherTable(const SheetRow &row, const ImportProfile &profile);

    const StatementColumns &columns() const { return m_columns; }
    QStringList cells(const SheetRow &row) const;
    /// True when the row says the same once more.
    bool isRepeatedBy(const SheetRow &row) const;

private:
    TableHeader(const SheetRow &row, Separator separator, const StatementColumns &columns);

    SheetRow m_row;
    Separator m_separator;
    StatementColumns m_columns;
    std::optional<AlignedColumns> m_aligned; ///< when blanks keep the cells apart
};

} // namespace TradeModule
