#pragma once

#include "trademodule/results/Figures.h"

#include <optional>

namespace TradeModule {

/// A round trip: from the first share that came in to the day when nothing was held again.
struct Trip
{
    TradingDate opened;
    std::optional<TradingDate> closed{}; ///< nothing while shares are held
    qint64 quantityIn = 0;               ///< bonus shares included
    qint64 quantityOut = 0;
    Figures figures{};
};

} // namespace TradeModule
