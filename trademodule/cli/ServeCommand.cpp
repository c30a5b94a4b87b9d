#include "trademodule/ProgramLanguage.h"
#include "trademodule/bus/TradeService.h"
#include "trademodule/cli/Commands.h"
#include "trademodule/cli/RefusalLog.h"
#include "trademodule/cli/ServiceLog.h"
#include "trademodule/cli/ServiceManager.h"
#include "trademodule/cli/Standby.h"
#include "trademodule/cli/UsageError.h"
#include "trademodule/ledger/ServingLease.h"
#include "trading/ModuleVocabulary.h"
#include "trading/TerminationSignals.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QFileInfo>
#include <QTimer>
#include <QUuid>

#include <chrono>

namespace TradeModule {

namespace {

/// How long a change waits for another process that changes the ledger: well below the three seconds after
/// which the asker gives up, while it is done all the same.
constexpr std::chrono::milliseconds patience(500);

void endWith(const QString &reason, ServiceLog *log)
{
    log->tell(reason);
    QCoreApplication::exit(Failed);
}

/// What becomes of a ledger that is away for a while the service says.
void beat(ServingLease *lease, ServiceLog *log)
{
    try {
        lease->beat();
    } catch (const LeaseLost &lost) {
        endWith(lost.reason(), log);
    } catch (const LedgerError &) {
    }
}

/// A terminal that ends waits two seconds for the module that it started.
constexpr std::chrono::milliseconds timeToEnd(1700);

/// How long the database's server may take for a statement before it is left as one that hangs.
constexpr std::chrono::seconds longestStatement(5);

/// A file by the one name that it has for every program of this machine.
QString placeOf(Ledger *ledger)
{
    const QString canonical = QFileInfo(ledger->database()->location()).canonicalFilePath();
    const bool isFile = ledger->database()->kind() == Database::Kind::Sqlite;
    return isFile && !canonical.isEmpty() ? canonical : ledger->shownLocation();
}

/// What other programs on the bus are told of this one.
Trading::TradePresence presenceOf(Ledger *ledger, const LedgerServer &server)
{
    Trading::TradePresence presence;
    presence.instance = QUuid::createUuid().toString(QUuid::WithoutBraces);
    presence.isOnline = true;
    presence.fence = server.fence;
    presence.version = QCoreApplication::applicationVersion();
    presence.protocol = QStringLiteral("1");
    presence.can = QStringList{
        QLatin1String(Trading::Capability::CLIENTNO), QLatin1String(Trading::Capability::ACTIONS),
        QLatin1String(Trading::Capability::REPLACE), QLatin1String(Trading::Capability::OPENORDERS),
        QLatin1String(Trading::Capability::STATUS)};
    presence.host = server.process.host;
    presence.process = server.process.number;
    presence.processStart = server.process.start;
    presence.since = QDateTime::fromString(server.since, Qt::ISODate);
    presence.isReadOnly = ledger->isReadOnly();
    presence.ledger = placeOf(ledger);
    return presence;
}

QString serverText(const Trading::TradePresence &presence)
{
    return translated("process %1 on %2, since %3")
        .arg(QString::number(presence.process), presence.host, presence.since.toString(Qt::ISODate));
}

/// One account on one bus: who came second must not be told as one that answers.
void tellOccupied(const Trading::TradePresence &other, bool standsBy, ServiceLog *log)
{
    const QString who =
        translated("another trading module serves the ledger %1 on this bus: %2; an order would be placed in "
                   "both. Give each account a bus or a prefix of its own")
            .arg(other.ledger, serverText(other));
    if (!standsBy) {
        endWith(who, log);
        return;
    }
    const QString standing = translated("standing by, %1").arg(who);
    log->tell(standing);
    ServiceManager().tellReady(standing);
}

void tellSilent(const Trading::TradePresence &other, ServiceLog *log)
{
    log->tell(translated("the trading module of the ledger %1 is announced on this bus and does not answer: "
                         "%2. Unless it does, it counts as gone after %3 seconds")
                  .arg(other.ledger, serverText(other))
                  .arg(ModulePresence::longestSilence.count()));
}

void tellBegun(const QString &bus, const Ledger &ledger, const LedgerServer &server, ServiceLog *log)
{
    const QString begun = translated("serving the ledger %1 on the bus of %2, fence %3")
                              .arg(ledger.shownLocation(), bus)
                              .arg(server.fence);
    log->tell(begun);
    ServiceManager().tellReady(begun);
}

/// Says with each change how things stand on the bus.
void tellStanding(const TradeService &service, const Invocation &invocation, const Ledger &ledger,
                  const LedgerServer &server, ServiceLog *log)
{
    const bool standsBy = invocation.isSet(QStringLiteral("standby"));
    QObject::connect(&service, &TradeService::leaseLost, &service,
                     [log](const QString &reason) { endWith(reason, log); });
    QObject::connect(&service, &TradeService::begun, &service,
                     [bus = invocation.bus(), &ledger, server, log] { tellBegun(bus, ledger, server, log); });
    QObject::connect(&service, &TradeService::silent, &service,
                     [log](const Trading::TradePresence &other) { tellSilent(other, log); });
    QObject::connect(
        &service, &TradeService::occupied, &service,
        [standsBy, log](const Trading::TradePresence &other) { tellOccupied(other, standsBy, log); });
}

int answerCharts(const Invocation &invocation, Ledger *ledger, ServingLease *lease, ServiceLog *log)
{
    ledger->setPatience(patience);
    ledger->database()->reconnectAside();
    const TradeService service(invocation.bus(), ledger, presenceOf(ledger, lease->server()));
    tellStanding(service, invocation, *ledger, lease->server(), log);
    RefusalLog refusals([log](const QString &text) { log->tell(text); });
    QObject::connect(&service, &TradeService::refused, &service,
                     [&refusals](const QString &what) { refusals.add(what); });
    QObject::connect(&service, &TradeService::languageAsked, &service,
                     [&invocation](const QString &word) { invocation.language()->set(word); });
    QTimer heart;
    QObject::connect(&heart, &QTimer::timeout, &service, [lease, log] {
        beat(lease, log);
        ServiceManager().tellAlive();
    });
    heart.start(ServingLease::betweenBeats);
    QObject::connect(qApp, &QCoreApplication::aboutToQuit, &service, [] { ServiceManager().tellEnding(); });
    const int code = QCoreApplication::exec();
    refusals.tellCounts();
    return code;
}

int serveWith(const Invocation &invocation, ServiceLog *log)
{
    Ledger ledger(invocation.ledgerOrNew());
    log->tell(translated("version %1 begins with the ledger %2 and the bus of %3")
                  .arg(QCoreApplication::applicationVersion(), ledger.shownLocation(), invocation.bus()));
    ledger.database()->setLongestStatement(longestStatement);
    ServingLease lease(ledger.database());
    if (!invocation.isSet(QStringLiteral("standby"))) {
        lease.take();
    } else if (!standByFor(&lease, log)) {
        return Succeeded;
    }
    const int code = answerCharts(invocation, &ledger, &lease, log);
    log->tell(translated("serves no more"));
    return code;
}

/// What ends it is in its log file, too, and on standard error as with every command.
int serve(const Invocation &invocation)
{
    if (invocation.bus().isEmpty()) {
        throw UsageError(translated("give the directory of the terminal with --bus DIR"));
    }
    const Trading::TerminationSignals signalsQuit(timeToEnd);
    const QString file = invocation.value(QStringLiteral("log-file"));
    ServiceLog log(file);
    try {
        return serveWith(invocation, &log);
    } catch (const Error &error) {
        if (!file.isEmpty()) {
            log.tell(error.reason());
        }
        throw;
    }
}

} // namespace

Command serveCommand()
{
    return {
        QStringLiteral("serve"),
        translated("Answers the charts of a terminal until it is told to end."),
        {},
        {{QStringLiteral("standby"),
          translated("Waits while another process serves the ledger, and follows it when it ends.")},
         {QStringLiteral("log-file"),
          translated("Appends the log to a file instead of standard error, each line with its time; follows "
                     "when the file is moved or removed."),
          QStringLiteral("FILE")}},
        &serve};
}

} // namespace TradeModule
