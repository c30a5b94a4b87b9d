// What an overlay answers while the host fits its price scale, so that it never widens it.
#pragma once

#include <limits>

namespace TradeChart {

/// The neutral highest value is the smallest positive normal double, not the most negative one:
/// every price is above it, and hosts know it by this value.
constexpr double neutralMaximum = std::numeric_limits<double>::min();

/// The neutral lowest value: every price is below it.
constexpr double neutralMinimum = std::numeric_limits<double>::max();

} // namespace TradeChart
