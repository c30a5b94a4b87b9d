#include "trademodule/ledger/SessionLock.h"

#include "trademodule/Error.h"
#include "trademodule/ledger/Database.h"

namespace TradeModule {

namespace {

/// Known to every process that serves ledgers on PostgreSQL: do not change.
constexpr qint64 servingLock = 0x7365727665;

/// A session's number alone may belong to another one later.
const char *const session = "a.pid || ' ' || a.backend_start";
const char *const signOfSession = "a.pid || ' ' || a.state_change";

/// Who has the lock. The server lists a lock by the halves of its number.
QString ownersSession(const char *columns)
{
    constexpr qint64 lowHalf = 0xFFFFFFFF;
    return QStringLiteral(
               "SELECT %1 FROM pg_locks l JOIN pg_stat_activity a ON a.pid = l.pid "
               "JOIN pg_database d ON d.oid = l.database WHERE l.locktype = 'advisory' AND l.granted "
               "AND d.datname = current_database() AND l.objsubid = 1 AND l.classid = %2 AND l.objid = %3")
        .arg(QLatin1String(columns))
        .arg(servingLock >> 32)
        .arg(servingLock & lowHalf);
}

QString textOf(Rows row)
{
    return row.next() ? row.value(0).toString() : QString();
}

} // namespace

SessionLock::~SessionLock()
{
    try {
        m_database->run(QStringLiteral("SELECT pg_advisory_unlock_all()"));
    } catch (const Error &) { // no connection, no lock
    }
}

bool SessionLock::tryTake()
{
    endLostSession();
    Rows row = m_database->run(QStringLiteral("SELECT pg_try_advisory_lock(%1)").arg(servingLock));
    if (!row.next() || !row.value(0).toBool()) {
        return false;
    }
    m_session = textOf(m_database->run(QStringLiteral("SELECT %1 FROM pg_stat_activity a WHERE a.pid = "
                                                      "pg_backend_pid()")
                                           .arg(QLatin1String(session))));
    return true;
}

/// A connection that broke off on the way may live on at the server, with our lock.
void SessionLock::endLostSession()
{
    if (!m_session.isEmpty()) {
        m_database->run(
            ownersSession("pg_terminate_backend(a.pid)") +
                QStringLiteral(" AND a.pid <> pg_backend_pid() AND %1 = ?").arg(QLatin1String(session)),
            {m_session});
    }
}

void SessionLock::beat()
{
    m_database->run(QStringLiteral("SELECT 1"));
}

QString SessionLock::signOfLife()
{
    return textOf(m_database->run(ownersSession(signOfSession)));
}

/// Its process, when it wakes up, finds its connection and its lock gone.
bool SessionLock::endOwner(const ProcessIdentity & /*owner*/, const QString &sign)
{
    Rows row = m_database->run(ownersSession("pg_terminate_backend(a.pid)") +
                                   QStringLiteral(" AND %1 = ?").arg(QLatin1String(signOfSession)),
                               {sign});
    return row.next() && row.value(0).toBool();
}

} // namespace TradeModule
