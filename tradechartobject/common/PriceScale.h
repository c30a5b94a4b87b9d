// What an overlay answers while the host fits its price scale, so that it never widens it.
#pragma once

#include <limits>

namespace TradeChart {

/// The neutral highest value: the smallest positive normal double, not the most negative one. Every
/// price is above it.
constexpr double neutralMaximum = std::numeric_limits<double>::min();

/// The neutral lowest value: every price is below it.
constexpr double neutralMinimum = std::numeric_limits<double>::max();

} // namespace TradeChart
