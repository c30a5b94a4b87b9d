// How a pop-up list shows a trade.
#pragma once

#include <cstddef>
#include <string>

namespace TradeChart {

struct trade_cj;

/// Chinese text of a side.
constexpr const char *sideText(bool isBuy)
{
    return isBuy ? "买入" : "卖出";
}

/// Room for the lines of a usual list of trades.
constexpr std::size_t expectedTradeLines = 100;

/// The line of a trade in a pop-up list, its columns parted by tabs, under the side `side`.
std::string tradeLine(const char *side, const trade_cj &trade);

} // namespace TradeChart
