#pragma once

#include "trademodule/results/Figures.h"

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
        0;             ///< shares of it that never came in: they earn nothing, since nobody knows their cost
    Money stampDuty{}; ///< of the fee; nothing where nobody tells it apart
};

/// What a sale adds to the figures of its day.
Figures figuresOf(const Sale &sale);

} // namespace TradeModule
