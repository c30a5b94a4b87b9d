#include "trademodule/ledger/SessionLock.h"

#include "trademodule/Error.h"
#include "trademodule/ledger/Database.h"

namespace TradeModule {

namespace {

/// Known to every process that serves ledgers on PostgreSQL: do not change.
constexpr qint64 servingLock = 0x7365727665;

/// The server lists a lock by the halves of its number.
QString ownersSession(const QString &columns)
{
    constexpr qint64 lowHalf = 0xFFFFFFFF;
    return QStringLiteral(
               "SELECT %1 FROM pg_locks l JOIN pg_stat_activity a ON a.pid = l.pid "
               "JOIN pg_database d ON d.oid = l.database WHERE l.locktype = 'advisory' AND l.granted "
               "AND d.datname = current_database() AND l.objsubid = 1 AND l.classid = %2 AND l.objid = %3")
        .arg(columns)
        .arg(servingLock >> 32)
        .arg(servingLock & lowHalf);
}

} // namespace

SessionLock::~SessionLock()
{
    try {
        m_database->run(QStringLiteral("SELECT pg_advisory_unlock_all()"));
    } catch (const Error &) { // no connection, no lock
    }
}

bool SessionLock::tryTake(const QString &record)
{
    endLostSession(record);
    QSqlQuery row =
        m_database->run(QStringLiteral("SELECT pg_try_advisory_lock(%1), pg_backend_pid()").arg(servingLock));
    if (!row.next() || !row.value(0).toBool()) {
        return false;
    }
    m_session = row.value(1).toInt();
    m_database->run(QStringLiteral("SELECT set_config('application_name', ?, false)"), {record});
    return true;
}

/// A connection that broke off on the way may live on at the server, with our lock.
void SessionLock::endLostSession(const QString &record)
{
    m_database->run(ownersSession(QStringLiteral("pg_terminate_backend(a.pid)")) +
                        QStringLiteral(" AND a.pid = ? AND a.pid <> pg_backend_pid() "
                                       "AND a.application_name = left(?, 63)"), // so much is kept of it
                    {m_session, record});
}

QString SessionLock::ownersRecord()
{
    QSqlQuery row = m_database->run(ownersSession(QStringLiteral("a.application_name")));
    return row.next() ? row.value(0).toString() : QString();
}

} // namespace TradeModule
