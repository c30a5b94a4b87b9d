#pragma once

#include "trademodule/import/Entry.h"

#include <QHash>
#include <QVector>

namespace TradeModule {

/// New shares and rights: a statement may tell of them when they are paid for, when they come in, or both
/// times, and in several words. Collects these rows, and says at the end which of them brings the shares.
///
/// Where shares came in, the payments are their cost, and money alone. Where only payments are told, they
/// bring the shares. A notice that says once more what another row pays for is nothing.
class Allotments
{
public:
    struct Row
    {
        Entry entry;
        int line;
    };

    void add(const Entry &entry, int line) { m_rows[entry.shares->security].append({entry, line}); }

    /// The rows of all as they count: with shares, with money, or with neither.
    QVector<Row> resolved() const;

private:
    QHash<SecurityId, QVector<Row>> m_rows;
};

} // namespace TradeModule
