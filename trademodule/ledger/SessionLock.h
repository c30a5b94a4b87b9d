#pragma once

#include "trademodule/ledger/ServingLock.h"

namespace TradeModule {

/// A lock of a server's session, which the server drops with the connection. It is held by the connection
/// that changes the ledger: where the lock was lost, nothing is changed on it either.
///
/// The sign of life is when the server heard the session last: every statement is one, and none is written.
class SessionLock : public ServingLock
{
public:
    /// The database stays the caller's and outlives this object.
    explicit SessionLock(Database *database) : m_database(database) {}
    ~SessionLock() override;

    bool tryTake() override;
    void beat() override;
    QString signOfLife() override;
    void endOwner(const ProcessIdentity &owner, const QString &sign) override;

private:
    void endLostSession();
    void terminate(const QString &sign);

    Database *const m_database;
    QString m_session;   ///< the connection that took the lock last
    QString m_endedSign; ///< of the owner's session that was told to end last
    int m_endings = 0;   ///< so many times
};

} // namespace TradeModule
