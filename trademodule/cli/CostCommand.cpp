#include "trademodule/Error.h"
#include "trademodule/ProgramLanguage.h"
#include "trademodule/bus/TradeAnswers.h"
#include "trademodule/cli/Commands.h"
#include "trademodule/cli/Console.h"
#include "trademodule/cli/TellCharts.h"
#include "trademodule/cli/UsageError.h"

namespace TradeModule {

namespace {

CostMethod methodOf(const QString &word)
{
    const std::optional<CostMethod> method = costMethodOf(word);
    if (!method) {
        throw UsageError(
            translated("\"%1\" is no way to reckon costs; give average, diluted or fifo").arg(word));
    }
    return *method;
}

int cost(const Invocation &invocation)
{
    const QStringList words = invocation.arguments();
    if (words.size() > 1) {
        throw UsageError(translated("give one method, or none to see the ledger's"));
    }
    const std::optional<CostMethod> chosen =
        words.isEmpty() ? std::nullopt : std::optional(methodOf(words[0]));
    Ledger ledger(invocation.existingLedger());
    if (chosen) {
        ledger.setCostMethod(*chosen);
    }
    const CostMethod method = ledger.costMethod();
    print(QStringLiteral("%1 (%2)\n").arg(wordOf(method), nameOf(method)));
    if (chosen) {
        QVector<QJsonObject> notifications;
        for (const Position &position : ledger.positions()) {
            notifications.append(changeNotification(position.security));
        }
        tellCharts(invocation, notifications);
    }
    return Succeeded;
}

} // namespace

Command costCommand()
{
    return {QStringLiteral("cost"),
            translated("Shows how costs of holdings are reckoned; sets it to average, diluted or fifo."),
            QStringLiteral("[METHOD]"),
            {},
            &cost};
}

} // namespace TradeModule
