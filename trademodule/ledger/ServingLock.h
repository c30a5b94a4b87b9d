#pragma once

#include <QString>

#include <memory>

namespace TradeModule {

class Database;

/// What one process at a time can hold of a ledger. It is let go when the object goes or its process ends.
class ServingLock
{
public:
    ServingLock() = default;
    virtual ~ServingLock() = default;
    Q_DISABLE_COPY_MOVE(ServingLock)

    /// Takes the lock and leaves a record, one line about its owner, or returns false at once when another
    /// process has it. Taken again, it stays taken.
    virtual bool tryTake(const QString &record) = 0;

    /// The record of the process that has the lock; empty when it cannot be read.
    virtual QString ownersRecord() = 0;

    /// Of the ledger in a database, which outlives the lock.
    static std::unique_ptr<ServingLock> of(Database *database);
};

} // namespace TradeModule
