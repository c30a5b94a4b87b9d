#include "trademodule/ledger/SessionLock.h"

#include "trademodule/Error.h"
#include "trademodule/ProgramLanguage.h"
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

/// The server shows the sessions of other users to those only who may see them.
QString SessionLock::signOfLife()
{
    Rows row = m_database->run(ownersSession(signOfSession));
    if (!row.next()) {
        return {};
    }
    setHindrance(
        row.value(0).isNull()
            ? translated("the session of the one that serves is hidden from this database user: if it "
                         "stood still, nobody would know. Give this user the role pg_read_all_stats, or "
                         "use the same one")
            : hindrance());
    return row.value(0).toString();
}

/// Its process, when it wakes up, finds its connection and its lock gone.
void SessionLock::endOwner(const ProcessIdentity & /*owner*/, const QString &sign)
{
    m_endings = sign == m_endedSign ? m_endings + 1 : 1;
    m_endedSign = sign;
    try {
        terminate(sign);
    } catch (const LedgerUnavailable &) {
        throw;
    } catch (const LedgerError &refusal) {
        setHindrance(
            translated("this database user may not end the session of the one that serves, which gives "
                       "no sign of life: give it the role pg_signal_backend, or use the same user. %1")
                .arg(refusal.reason()));
    }
}

/// A session that is frozen at the server hears of its end when it wakes up.
void SessionLock::terminate(const QString &sign)
{
    constexpr int soonEnough = 6;
    Rows row = m_database->run(ownersSession("pg_terminate_backend(a.pid), a.pid") +
                                   QStringLiteral(" AND %1 = ?").arg(QLatin1String(signOfSession)),
                               {sign});
    if (row.next() && m_endings > soonEnough) {
        setHindrance(
            translated("the session of the one that serves was told to end and does not: its process %1 "
                       "at the database's server must be ended there")
                .arg(row.value(1).toLongLong()));
    }
}

} // namespace TradeModule
