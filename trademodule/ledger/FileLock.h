#pragma once

#include "trademodule/ledger/ServingLock.h"

namespace TradeModule {

/// A lock on a file, which the system drops with the process that holds it. The file, readable for its owner
/// only, holds the record and stays: to remove it would let two processes lock two files of one name.
class FileLock : public ServingLock
{
public:
    /// Makes the file when it is not there; a LedgerError when that cannot be.
    explicit FileLock(const QString &path);
    ~FileLock() override;

    bool tryTake(const QString &record) override;
    QString ownersRecord() override;

private:
    const int m_descriptor;
};

} // namespace TradeModule
