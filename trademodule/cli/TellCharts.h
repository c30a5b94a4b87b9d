#pragma once

#include "trademodule/cli/Command.h"

#include <QJsonObject>

namespace TradeModule {

/// Publishes notifications on the bus that the command line names, or says why no chart was told.
void tellCharts(const Invocation &invocation, const QVector<QJsonObject> &notifications);

} // namespace TradeModule
