#pragma once

#include "trademodule/ledger/ServingTable.h"
#include "trademodule/ledger/StillnessWatch.h"

#include <chrono>
#include <memory>

namespace TradeModule {

class ServingLock;

/// The right to serve a ledger, which one process has at a time: two would both deal its orders and both
/// answer its charts. It is kept as long as this object lives, and ends with its process, however that ends.
/// Who only reads or changes the ledger, such as an import, does not need it.
///
/// Who takes it enters itself in the ledger with the next **fence**, a number that every transaction of this
/// process then looks at. An owner that was ended from outside, or was thought dead, and wakes up finds a
/// higher one: its transactions, and the next beat(), fail as LeaseLost, and change nothing. The same comes
/// where the ledger's server was away and another process took the lease meanwhile.
class ServingLease
{
public:
    /// Takes nothing yet. The database stays the caller's and outlives this object.
    explicit ServingLease(Database *database);
    ~ServingLease();
    Q_DISABLE_COPY_MOVE(ServingLease)

    /// Takes the lease. A LedgerError, which names the host and the process that has it and since when, where
    /// another process does.
    void take();

    /// Takes the lease if nobody has it. For one that stands by: called twice a second, it ends an owner that
    /// has given no sign of life for ten seconds.
    bool tryFollow();

    /// Who has the lease, for people.
    QString ownersName();

    /// Why an owner that stands still is not ended by tryFollow(), and what to do, for people; mostly empty.
    QString hindrance() const;

    /// The owner's sign of life; to be given every betweenBeats.
    void beat();
    static constexpr std::chrono::seconds betweenBeats{2};

    /// Of the owner; what it was when the lease was taken.
    const LedgerServer &server() const { return m_own; }
    /// Who served before this one, for people.
    const QString &formerName() const { return m_formerName; }

private:
    bool tryTake();
    void takeAgain();
    void begin();
    void refuseOutrun();
    [[noreturn]] void refuseLost();

    Database *const m_database;
    ServingTable m_table;
    const std::unique_ptr<ServingLock> m_lock;
    StillnessWatch m_watch;
    LedgerServer m_own; ///< with fence 0 as long as we have no lease
    QString m_formerName;
    bool m_hasLock = false;
};

} // namespace TradeModule
