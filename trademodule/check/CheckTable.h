#pragma once

#include "trademodule/check/CheckCase.h"

namespace TradeModule {

/// Every case whose questions change nothing, in the order in which they are asked.
const CheckCases &readOnlyCases();

/// The cases that place, change and cancel an order. Each goes on from the one before.
const CheckCases &orderingCases();

/// Both, in that order.
const CheckCases &allCases();

} // namespace TradeModule
