#pragma once

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
        IsFull,  ///< what makes a file longer fails
        IoError, ///< what changes a file, or waits until it is on the disk, fails
        Unread,  ///< what reads a file fails
    };
    enum class Lasting { Once, UntilMended };

    /// False where Qt's driver has another SQLite than this program: then nothing can be made to fail.
    static bool install();

    FailingDisk() { mend(); }
    ~FailingDisk() { mend(); }
    FailingDisk(const FailingDisk &) = delete;
    FailingDisk &operator=(const FailingDisk &) = delete;

    /// Has the n-th operation from now on fail, and with it, if it lasts, all that follow. The first is 1.
    void failAt(int operation, Fault fault, Lasting lasting);
    /// True when an operation has failed since.
    bool hasFailed() const;
    /// Nothing fails any more.
    void mend();
};

} // namespace TradeModule
