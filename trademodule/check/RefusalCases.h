#pragma once

#include "trademodule/check/CheckCase.h"

namespace TradeModule {

/// Questions with a key missing or wrong.
CheckCases refusalCases();

} // namespace TradeModule
