#pragma once

#include "trademodule/ledger/Order.h"

#include <QByteArray>

namespace TradeModule {

/// The rows of an answer's "data" as JSON text: docs/trading-module.md lists their keys.
QByteArray rowsOf(const Executions &trades);
QByteArray rowsOf(const Orders &orders);

} // namespace TradeModule
