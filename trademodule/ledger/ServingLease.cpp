#include "trademodule/ledger/ServingLease.h"

#include "trademodule/Error.h"
#include "trademodule/ProgramLanguage.h"
#include "trademodule/ledger/ServingLock.h"

#include <QDeadlineTimer>
#include <QThread>

namespace TradeModule {

namespace {

using namespace std::chrono_literals;

/// A process that was just killed may need a moment until it is gone.
constexpr std::chrono::milliseconds longestFarewell = 1s;
constexpr std::chrono::milliseconds betweenTries = 20ms;

/// An owner that gives no sign of life for so long is frozen.
constexpr std::chrono::milliseconds longestStillness = 10s;

} // namespace

ServingLease::ServingLease(Database *database)
    : m_database(database),
      m_table(database),
      m_lock(ServingLock::of(database)),
      m_watch(longestStillness)
{
}

ServingLease::~ServingLease()
{
    m_database->setReconnected({});
    m_database->setGuard({});
}

void ServingLease::take()
{
    if (!tryTake()) {
        throw LedgerError(translated("this ledger is served already: %1").arg(ownersName()));
    }
    begin();
}

bool ServingLease::tryFollow()
{
    if (m_lock->tryTake()) {
        begin();
        return true;
    }
    const QString sign = m_lock->signOfLife();
    // Those that only read are not in the table: whom it names may be well.
    if (m_watch.isStill(sign) && !m_database->isReadOnly()) {
        m_lock->endOwner(m_table.server().process, sign);
    }
    return false;
}

QString ServingLease::hindrance() const
{
    return m_lock->hindrance();
}

bool ServingLease::tryTake()
{
    const QDeadlineTimer deadline(longestFarewell);
    while (!m_lock->tryTake()) {
        if (deadline.hasExpired()) {
            return false;
        }
        QThread::msleep(betweenTries.count());
    }
    return true;
}

void ServingLease::begin()
{
    m_formerName = ownersName();
    m_own = m_table.enter();
    m_hasLock = true;
    m_database->setReconnected([this] { takeAgain(); });
    m_database->setGuard([this] { refuseOutrun(); });
}

/// The server that was away has forgotten who had the lock, or a frozen session of ours still has it. The
/// fence alone tells whether another process has followed.
void ServingLease::takeAgain()
{
    m_hasLock = tryTake();
    refuseOutrun();
}

void ServingLease::beat()
{
    m_lock->beat();
    m_hasLock = m_hasLock || m_lock->tryTake();
    refuseOutrun();
}

void ServingLease::refuseOutrun()
{
    if (m_table.fence() != m_own.fence) {
        refuseLost();
    }
}

void ServingLease::refuseLost()
{
    throw LeaseLost(translated("another process serves this ledger now: %1").arg(ownersName()));
}

QString ServingLease::ownersName()
{
    if (m_database->isReadOnly()) {
        return translated("another process, only for reading");
    }
    const LedgerServer server = m_table.server();
    return translated("process %1 on %2, since %3")
        .arg(QString::number(server.process.number), server.process.host, server.since);
}

} // namespace TradeModule
