#pragma once

#include "terminal/data/SecurityList.h"
#include "trading/TradingDate.h"

#include <functional>
#include <optional>

namespace Terminal {

/// Where a last price comes from.
enum class PriceOrigin {
    Quote, ///< of the market, on the bus
    Close, ///< the latest one that the data folder knows
    Replay ///< of the day that is replayed as today
};

/// What a security cost last.
struct LastPrice
{
    double price = 0; ///< yuan
    PriceOrigin origin = PriceOrigin::Close;
    Trading::TradingDate day; ///< of the price; the recorded day of a replay
};

/// The security's own last price, whichever chart is shown; nothing while none is known.
using LastPriceOf = std::function<std::optional<LastPrice>(const Security &security)>;

} // namespace Terminal
