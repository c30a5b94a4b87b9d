#include "trademodule/ProgramLanguage.h"
#include "trademodule/bus/TradeService.h"
#include "trademodule/cli/Commands.h"
#include "trademodule/cli/TerminationSignals.h"
#include "trademodule/cli/UsageError.h"
#include "trademodule/ledger/ServingLease.h"

#include <QCoreApplication>

#include <chrono>

namespace TradeModule {

namespace {

/// How long a change waits for another process that changes the ledger: well below the three seconds after
/// which the asker gives up, while it is done all the same.
constexpr std::chrono::milliseconds patience(500);

int serve(const Invocation &invocation)
{
    if (invocation.bus().isEmpty()) {
        throw UsageError(translated("give the directory of the terminal with --bus DIR"));
    }
    Ledger ledger(invocation.ledger());
    const ServingLease lease(ledger.database());
    ledger.setPatience(patience);
    const TerminationSignals signalsQuit;
    const TradeService service(invocation.bus(), &ledger);
    return QCoreApplication::exec();
}

} // namespace

Command serveCommand()
{
    return {QStringLiteral("serve"),
            translated("Answers the charts of a terminal until it is told to end."),
            {},
            {},
            &serve};
}

} // namespace TradeModule
