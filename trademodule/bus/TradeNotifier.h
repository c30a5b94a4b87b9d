#pragma once

#include "trademodule/ledger/Execution.h"

#include <QString>

namespace TradeModule {

/// Tells every chart on the bus instance of `busDirectory` about the newest entry of each security that
/// changed, and returns when that is on its way. False, and nothing was told, without a bus.
bool notifyCharts(const QString &busDirectory, const QVector<Execution> &newest);

} // namespace TradeModule
