#pragma once

#include "tests/trademodule/support/UnsyncedWrites.h"

namespace TradeModule {

/// The disk below SQLite's ledgers, for tests: what a program asks of it can be counted, and made to fail.
/// From install() on it is below every ledger that the test program opens; it does nothing of itself.
///
///     FailingDisk disk;
///     disk.failAt(3, FailingDisk::Fault::IsFull, FailingDisk::Lasting::UntilMended);
///     EXPECT_THROW(…, LedgerUnavailable);
///     disk.mend();
class FailingDisk
{
public:
    enum class Fault {
        IsFull,   ///< what makes a file longer fails
        IoError,  ///< what changes a file, or waits until it is on the disk, fails
        Unread,   ///< what reads a file, or looks after one, fails
        Unlocked, ///< what locks a file fails
        NoPower, ///< from one change of a file on nothing is done any more, and what was not waited for is in
                 ///< doubt
    };
    enum class Lasting { Once, UntilMended };

    /// False where Qt's driver has another SQLite than this program: then nothing can be made to fail.
    static bool install();

    FailingDisk() { mend(); }
    ~FailingDisk() { mend(); }
    FailingDisk(const FailingDisk &) = delete;
    FailingDisk &operator=(const FailingDisk &) = delete;

    /// Has the n-th operation from now on fail, and with it, if it lasts, all that follow. The first is 1. Of
    /// those that the fault concerns each counts; power goes for good.
    void failAt(int operation, Fault fault, Lasting lasting);
    /// True when an operation has failed since.
    bool hasFailed() const;
    /// Nothing fails any more.
    void mend();

    /// After Fault::NoPower: the files as the next start of the machine finds them. Nobody may have them
    /// open.
    void returnPower(UnsyncedWrites::Survives survives, unsigned seed);
};

} // namespace TradeModule
