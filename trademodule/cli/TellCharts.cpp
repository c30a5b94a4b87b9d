#include "trademodule/cli/TellCharts.h"

#include "trademodule/ProgramLanguage.h"
#include "trademodule/bus/TradeNotifier.h"
#include "trademodule/cli/Console.h"

namespace TradeModule {

void tellCharts(const Invocation &invocation, const QVector<QJsonObject> &notifications)
{
    if (notifications.isEmpty()) {
        return;
    }
    if (invocation.bus().isEmpty()) {
        print(translated("charts were not told: no --bus given") + QLatin1Char('\n'));
    } else if (!notifyCharts(invocation.bus(), notifications)) {
        print(translated("charts were not told: there is no bus") + QLatin1Char('\n'));
    }
}

} // namespace TradeModule
