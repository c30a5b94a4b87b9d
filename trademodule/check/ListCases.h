#pragma once

#include "trademodule/check/CheckCase.h"

namespace TradeModule {

/// What charts and lists show: the cost, trades, orders, the account.
CheckCases listCases();

} // namespace TradeModule
