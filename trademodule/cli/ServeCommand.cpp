#include "trademodule/bus/TradeService.h"
#include "trademodule/cli/Commands.h"
#include "trademodule/cli/TerminationSignals.h"
#include "trademodule/cli/UsageError.h"

#include <QCoreApplication>

namespace TradeModule {

namespace {

int serve(const Invocation &invocation)
{
    if (invocation.bus().isEmpty()) {
        throw UsageError(QStringLiteral("give the directory of the terminal with --bus DIR"));
    }
    Ledger ledger(invocation.ledger());
    const TerminationSignals signalsQuit;
    const TradeService service(invocation.bus(), &ledger);
    return QCoreApplication::exec();
}

} // namespace

Command serveCommand()
{
    return {QStringLiteral("serve"),
            QStringLiteral("Answers the charts of a terminal until it is told to end."),
            {},
            {},
            &serve};
}

} // namespace TradeModule
