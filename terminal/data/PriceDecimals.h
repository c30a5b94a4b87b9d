#pragma once

#include "terminal/data/Bar.h"

namespace Terminal {

constexpr int usualPriceDecimals = 2;

/// How many decimals the prices of a security have, as its bars show them: two, or three, as those of funds
/// and bonds.
int priceDecimals(const Bars &bars);

} // namespace Terminal
