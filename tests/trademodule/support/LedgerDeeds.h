#pragma once

#include "trademodule/ledger/Ledger.h"

#include <gmock/gmock.h>

#include <string>
#include <vector>

namespace TradeModule {

/// What is done to a ledger, in one change, and again when it failed: done twice, it is as if done once.
struct Deed
{
    const char *name;
    /// Makes the ledger as it is before. The database is empty.
    void (*before)(const QString &location);
    /// The ledger was opened for it, which is a part of the deed.
    void (*act)(Ledger *ledger);
    enum class Failure {
        UndoesIt,
        MayComeAfterIt, ///< opening a ledger goes on when it was made or brought up to date
    } failure = Failure::UndoesIt;
};

/// A new ledger, migrations, an import and its undo, cash, an order, its cancellation and a bar that deals
/// it, the lease.
const std::vector<Deed> &ledgerDeeds();

/// What whoever did it was told.
enum class End {
    Done,
    Failed,
    Unknown ///< said to be done or not
};

/// Opens the ledger and does it. Nothing but what may be tried again is taken for a failure.
End endOf(const Deed &deed, const QString &location);

/// All that the ledger holds; when statements came, and how many, is left out. On PostgreSQL, whose counters
/// go on when a change is undone, numbers of rows, too.
std::string contentOf(const QString &location);

/// The content before a deed and after it.
struct DeedStates
{
    std::string before;
    std::string after;

    /// What a ledger holds when the deed ended so.
    ::testing::Matcher<std::string> afterAnEnd(End end) const;
};

/// That the books add up, see audit().
void expectToAddUp(const QString &location);

} // namespace TradeModule
