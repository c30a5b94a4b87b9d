#pragma once

#include "trademodule/SharedTypes.h"

namespace TradeModule {

/// One sale and what it earned.
struct Sale
{
    TradingDate date;
    ClockTime time;
    Money price;
    qint64 quantity;
    Money amount; ///< without the fee
    Money fee;    ///< of the sale
    Money cost;   ///< what the sold shares had cost, the fees of their buys included
    Money profit; ///< what the explained shares brought after the fee, less the cost
    qint64 unexplained =
        0; ///< shares of it that never came in: they earn nothing, since nobody knows their cost
};

} // namespace TradeModule
