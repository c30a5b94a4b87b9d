#pragma once

#include <QString>

#include <memory>

namespace TradeModule {

class Database;
struct ProcessIdentity;

/// What one process at a time can hold of a ledger. It is let go when the object goes or its process ends.
class ServingLock
{
public:
    ServingLock() = default;
    virtual ~ServingLock() = default;
    Q_DISABLE_COPY_MOVE(ServingLock)

    /// Takes the lock, or returns false at once when another process has it. Taken again, it stays taken.
    virtual bool tryTake() = 0;

    /// The owner's sign of life: signOfLife() is another one afterwards, for every process.
    virtual void beat() = 0;
    virtual QString signOfLife() = 0;

    /// Ends who has the lock, if its sign of life is still `sign`. `owner` is who entered itself in the
    /// ledger. Called again and again as long as the lock is not free.
    virtual void endOwner(const ProcessIdentity &owner, const QString &sign) = 0;

    /// Why an owner that stands still is not ended from here, and what to do about it, for people; empty
    /// while nothing is known to be in the way.
    const QString &hindrance() const { return m_hindrance; }

    /// Of the ledger in a database, which outlives the lock.
    static std::unique_ptr<ServingLock> of(Database *database);

protected:
    void setHindrance(const QString &hindrance) { m_hindrance = hindrance; }

private:
    QString m_hindrance;
};

} // namespace TradeModule
