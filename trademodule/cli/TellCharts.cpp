#include "trademodule/cli/TellCharts.h"

#include "trademodule/ProgramLanguage.h"
#include "trademodule/bus/TradeNotifier.h"
#include "trademodule/cli/Console.h"

namespace TradeModule {

QString whyNotTold(const Invocation &invocation, const QVector<QJsonObject> &notifications)
{
    if (notifications.isEmpty()) {
        return QString();
    }
    if (invocation.bus().isEmpty()) {
        return translated("charts were not told: no --bus given");
    }
    return notifyCharts(invocation.bus(), notifications)
               ? QString()
               : translated("charts were not told: there is no bus");
}

void tellCharts(const Invocation &invocation, const QVector<QJsonObject> &notifications)
{
    const QString reason = whyNotTold(invocation, notifications);
    if (!reason.isEmpty()) {
        print(reason + QLatin1Char('\n'));
    }
}

} // namespace TradeModule
