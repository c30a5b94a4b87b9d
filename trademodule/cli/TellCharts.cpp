#include "trademodule/cli/TellCharts.h"

#include "trademodule/bus/TradeNotifier.h"
#include "trademodule/cli/Console.h"

namespace TradeModule {

void tellCharts(const Invocation &invocation, const QVector<QJsonObject> &notifications)
{
    if (notifications.isEmpty()) {
        return;
    }
    if (invocation.bus().isEmpty()) {
        print(QStringLiteral("charts were not told: no --bus given\n"));
    } else if (!notifyCharts(invocation.bus(), notifications)) {
        print(QStringLiteral("charts were not told: there is no bus\n"));
    }
}

} // namespace TradeModule
