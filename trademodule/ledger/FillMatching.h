#pragma once

#include "trademodule/ledger/Execution.h"

#include <QVector>

namespace TradeModule {

/// An entry of the ledger with its key there.
struct KnownEntry
{
    qint64 id;
    Execution execution;
    bool isImported; ///< a statement told it; else the paper exchange dealt it
};

using KnownEntries = QVector<KnownEntry>;

/// What a statement tells of a security on one day, held against what the ledger has of it.
///
/// A fill that is n times in the statement and m times in the ledger is new n - m times. FillKey tells which
/// fills are the same. Where one kind of export lacks what the other has — a deal number, the time, the order
/// — the same side, price and quantity are the same fill, as long as nothing that both tell speaks against
/// it.
struct FillMatching
{
    struct Pair
    {
        const Execution *told;
        const KnownEntry *known;
    };

    QVector<const Execution *> added;
    QVector<Pair> same;
    int inAnotherForm = 0; ///< of the pairs

    /// Entries that look like others of the ledger taken together: as much was dealt in all, in other pieces
    /// or under other numbers. Nobody can tell whether they are the same.
    QVector<const Execution *> doubtful;

    /// What it is given stays the caller's and outlives the result.
    static FillMatching of(const QVector<const Execution *> &told, const KnownEntries &known);
};

} // namespace TradeModule
