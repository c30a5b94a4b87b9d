#pragma once

#include "trademodule/ledger/ServingLock.h"

namespace TradeModule {

/// A lock on a file, which the system drops with the process that holds it. The file, readable for its owner
/// only, is empty and stays: to remove it would let two processes lock two files of one name.
///
/// The sign of life is the file's time. Nothing of it needs to reach the disk, so that it waits for none, and
/// the system writes it some time with all else; a word in the ledger would be a commit every other second.
class FileLock : public ServingLock
{
public:
    /// Makes the file when it is not there; a LedgerError when that cannot be.
    explicit FileLock(const QString &path);
    ~FileLock() override;

    bool tryTake() override;
    void beat() override;
    QString signOfLife() override;
    void endOwner(const ProcessIdentity &owner, const QString &sign) override;

private:
    const int m_descriptor;
};

} // namespace TradeModule
