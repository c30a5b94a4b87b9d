#pragma once

#include "trademodule/ledger/ServingLock.h"

namespace TradeModule {

/// A lock of a server's session, which the server drops with the connection. It is held by the connection
/// that changes the ledger: where the lock was lost, nothing is changed on it either. The record is the name
/// that the session gives itself.
class SessionLock : public ServingLock
{
public:
    /// The database stays the caller's and outlives this object.
    explicit SessionLock(Database *database) : m_database(database) {}
    ~SessionLock() override;

    bool tryTake(const QString &record) override;
    QString ownersRecord() override;

private:
    void endLostSession(const QString &record);

    Database *const m_database;
    int m_session = 0; ///< the server's number of the connection that took the lock last
};

} // namespace TradeModule
