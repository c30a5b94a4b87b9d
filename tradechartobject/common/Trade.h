#pragma once

#include <cstdint>

namespace TradeChart {

/// One trade of the account.
struct trade_cj
{
    bool isBuy;             ///< a sell otherwise
    std::int64_t matchTime; ///< yyyymmddhhmmss
    double matchPrice;      ///< in the currency of the security
    double matchQty;        ///< in shares
};

} // namespace TradeChart
