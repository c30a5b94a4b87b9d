#pragma once

#include "trademodule/check/CheckCase.h"

namespace TradeModule {

/// Places an order, replaces it where the module can do that, and cancels it.
CheckCases orderCases();

} // namespace TradeModule
