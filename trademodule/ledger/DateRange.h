#pragma once

#include "trademodule/SharedTypes.h"

namespace TradeModule {

/// Days from `first` to `last`, both included; all there are unless something else is said.
struct DateRange
{
    TradingDate first = TradingDate::first();
    TradingDate last = TradingDate::last();
};

} // namespace TradeModule
