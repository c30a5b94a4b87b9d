#pragma once

#include "terminal/data/Bar.h"
#include "terminal/data/BarHeader.h"
#include "terminal/data/VolumeUnit.h"

#include <cstddef>
#include <optional>
#include <vector>

namespace Terminal {

/// What the amounts of a file say of its volumes and prices: amount ÷ volume is a price inside of the bar, if
/// the volume is in shares and the amount in yuan. Where it is 100 times that, the volume is in lots; amounts
/// may be in thousands, ten thousands or hundred millions, too.
struct AmountCheck
{
    /// Nothing when the amounts fit no unit, or more than one.
    std::optional<VolumeUnit> unit;
    /// True when the unit fits a part of the bars only: prices of the others are adjusted.
    bool isAdjusted = false;
    /// The bar whose amount ÷ volume is several times what its prices say, or a fraction of it.
    std::optional<std::size_t> wrongBar;
};

/// `amounts` has one for each bar, 0 where there is none. `named` is the unit that the header names. Prices
/// that are known to be adjusted need not fit as closely.
AmountCheck checkAmounts(const Bars &bars, const std::vector<double> &amounts,
                         std::optional<VolumeUnit> named, PriceKind prices = PriceKind::Unknown);

} // namespace Terminal
