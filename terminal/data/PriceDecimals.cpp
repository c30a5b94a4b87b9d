#include "terminal/data/PriceDecimals.h"

#include <algorithm>
#include <cmath>

namespace Terminal {

namespace {

bool isInCents(double price)
{
    constexpr double noise = 1e-6;
    const double cents = price * 100;
    return std::abs(cents - std::round(cents)) < noise * std::max(1.0, std::abs(cents));
}

} // namespace

int priceDecimals(const Bars &bars)
{
    const bool areInCents = std::all_of(bars.begin(), bars.end(), [](const Bar &bar) {
        return isInCents(bar.open) && isInCents(bar.high) && isInCents(bar.low) && isInCents(bar.close);
    });
    return areInCents ? usualPriceDecimals : usualPriceDecimals + 1;
}

} // namespace Terminal
