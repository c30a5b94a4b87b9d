#pragma once

#include "trademodule/cli/Command.h"

#include <QJsonObject>

namespace TradeModule {

/// Publishes notifications on the bus that the command line names. Why no chart was told; empty when they
/// were, or there was nothing to tell.
QString whyNotTold(const Invocation &invocation, const QVector<QJsonObject> &notifications);

/// The same, and says it.
void tellCharts(const Invocation &invocation, const QVector<QJsonObject> &notifications);

} // namespace TradeModule
