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

/// What is known of a file's volumes and prices before its amounts are asked.
struct VolumeFacts
{
    std::optional<VolumeUnit> named; ///< by the header, or by the user
    /// Lots are as large as its kind has them. A bond's amount has the interest since its last coupon, too;
    /// that of money lent has nothing to do with the rate that is its price.
    Trading::SecurityKind kind = Trading::SecurityKind::MainShare;
    PriceKind prices = PriceKind::Unknown; ///< those that are adjusted need not fit as closely
};

/// `amounts` has one for each bar, 0 where there is none.
AmountCheck checkAmounts(const Bars &bars, const std::vector<double> &amounts, const VolumeFacts &known = {});

} // namespace Terminal
