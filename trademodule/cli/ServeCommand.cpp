#include "trademodule/ProgramLanguage.h"
#include "trademodule/bus/TradeService.h"
#include "trademodule/cli/Commands.h"
#include "trademodule/cli/Console.h"
#include "trademodule/cli/Standby.h"
#include "trademodule/cli/TerminationSignals.h"
#include "trademodule/cli/UsageError.h"
#include "trademodule/ledger/ServingLease.h"
#include "trading/ModuleVocabulary.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QTimer>
#include <QUuid>

#include <chrono>

namespace TradeModule {

namespace {

/// How long a change waits for another process that changes the ledger: well below the three seconds after
/// which the asker gives up, while it is done all the same.
constexpr std::chrono::milliseconds patience(500);

void endWith(const QString &reason)
{
    printError(reason);
    QCoreApplication::exit(Failed);
}

/// What becomes of a ledger that is away for a while the service says.
void beat(ServingLease *lease)
{
    try {
        lease->beat();
    } catch (const LeaseLost &lost) {
        endWith(lost.reason());
    } catch (const LedgerError &) {
    }
}

/// How long the database's server may take for a statement before it is left as one that hangs.
constexpr std::chrono::seconds longestStatement(5);

/// What other programs on the bus are told of this one.
Trading::TradePresence presenceOf(const Ledger &ledger, const LedgerServer &server)
{
    Trading::TradePresence presence;
    presence.instance = QUuid::createUuid().toString(QUuid::WithoutBraces);
    presence.isOnline = true;
    presence.fence = server.fence;
    presence.version = QCoreApplication::applicationVersion();
    presence.protocol = QStringLiteral("1");
    presence.can = QStringList{QLatin1String(Trading::Capability::CLIENTNO)};
    presence.host = server.process.host;
    presence.process = server.process.number;
    presence.since = QDateTime::fromString(server.since, Qt::ISODate);
    presence.isReadOnly = ledger.isReadOnly();
    presence.ledger = ledger.shownLocation();
    return presence;
}

int answerCharts(const Invocation &invocation, Ledger *ledger, ServingLease *lease)
{
    ledger->setPatience(patience);
    ledger->database()->setLongestStatement(longestStatement);
    ledger->database()->reconnectAside();
    const TradeService service(invocation.bus(), ledger, presenceOf(*ledger, lease->server()));
    QObject::connect(&service, &TradeService::leaseLost, &endWith);
    QTimer heart;
    QObject::connect(&heart, &QTimer::timeout, &service, [lease] { beat(lease); });
    heart.start(ServingLease::betweenBeats);
    return QCoreApplication::exec();
}

int serve(const Invocation &invocation)
{
    if (invocation.bus().isEmpty()) {
        throw UsageError(translated("give the directory of the terminal with --bus DIR"));
    }
    const TerminationSignals signalsQuit;
    Ledger ledger(invocation.ledger());
    ServingLease lease(ledger.database());
    if (!invocation.isSet(QStringLiteral("standby"))) {
        lease.take();
    } else if (!standByFor(&lease)) {
        return Succeeded;
    }
    return answerCharts(invocation, &ledger, &lease);
}

} // namespace

Command serveCommand()
{
    return {QStringLiteral("serve"),
            translated("Answers the charts of a terminal until it is told to end."),
            {},
            {{QStringLiteral("standby"),
              translated("Waits while another process serves the ledger, and follows it when it ends.")}},
            &serve};
}

} // namespace TradeModule
