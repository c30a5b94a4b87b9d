#include "trademodule/ledger/ServingLease.h"

#include "trademodule/Error.h"
#include "trademodule/ProgramLanguage.h"
#include "trademodule/ledger/ServingLock.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDeadlineTimer>
#include <QSysInfo>
#include <QThread>

#include <chrono>

namespace TradeModule {

namespace {

using namespace std::chrono_literals;

/// A process that was just killed may need a moment until it is gone.
constexpr std::chrono::milliseconds longestFarewell = 1s;
constexpr std::chrono::milliseconds betweenTries = 20ms;

/// Process, time and host in one line. The host comes last: a lock may cut the line off.
QString ownRecord()
{
    return QStringLiteral("%1 %2 %3")
        .arg(QCoreApplication::applicationPid())
        .arg(QDateTime::currentDateTime().toString(Qt::ISODate), QSysInfo::machineHostName());
}

QString refusal(const QString &ownersRecord)
{
    const QStringList words = ownersRecord.split(QLatin1Char(' '));
    if (words.size() != 3) {
        return translated("another process serves this ledger already");
    }
    return translated("this ledger is served already: by process %1 on %2, since %3")
        .arg(words[0], words[2], words[1]);
}

} // namespace

ServingLease::ServingLease(Database *database)
    : m_database(database),
      m_record(ownRecord()),
      m_lock(ServingLock::of(database))
{
    take();
    m_database->setReconnected([this] { take(); });
}

ServingLease::~ServingLease()
{
    m_database->setReconnected({});
}

void ServingLease::take()
{
    const QDeadlineTimer deadline(longestFarewell);
    while (!m_lock->tryTake(m_record)) {
        if (deadline.hasExpired()) {
            throw LedgerError(refusal(m_lock->ownersRecord()));
        }
        QThread::msleep(betweenTries.count());
    }
}

} // namespace TradeModule
