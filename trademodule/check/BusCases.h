#pragma once

#include "trademodule/check/CheckCase.h"

namespace TradeModule {

/// What the module says of itself.
CheckCases presenceCases();

/// Where answers go, and what a module must survive.
CheckCases busCases();

} // namespace TradeModule
