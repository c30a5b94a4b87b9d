#pragma once

#include "trademodule/import/DayOrder.h"

#include <QVector>

namespace TradeModule {

/// Rows that take an earlier row of the statement back (冲销, 撤销): neither of the two counts.
class Reversals
{
public:
    /// What a row takes back, as it was told first.
    struct Row
    {
        Execution taken;
        int line;
    };

    void add(const Execution &taken, int line) { m_rows.append({taken, line}); }

    /// Drops the entries that are taken back: of one with the same deal or order number, else of the last one
    /// of that day or before. Returns the rows that take back what the statement does not tell.
    QVector<Row> takeBack(ListedEntries *entries) const;

private:
    QVector<Row> m_rows;
};

} // namespace TradeModule
