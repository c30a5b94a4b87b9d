#pragma once

#include <cstdint>

namespace TradeChart {

/// One executed trade.
struct trade_cj
{
    bool isBuy;
    std::int64_t matchTime; ///< yyyymmddhhmmss
    double matchPrice;
    double matchQty;
};

} // namespace TradeChart
