#include "terminal/chart/PriceFit.h"

#include <algorithm>
#include <cmath>

namespace Terminal {

namespace {

constexpr double reach = 0.25;       ///< how far beyond the candles a wish is granted, of their height
constexpr double airAbove = 0.10;    ///< room for marks above the highest bar
constexpr double airBelow = 0.07;    ///< the same below the lowest one
constexpr double flatMargin = 0.005; ///< half height of the scale when all prices are equal, of the price

bool isWish(const PriceSpan &span)
{
    return std::isfinite(span.low) && std::isfinite(span.high) && span.low <= span.high;
}

PriceSpan opened(PriceSpan span)
{
    if (span.high > span.low) {
        return span;
    }
    const double margin = std::max(std::abs(span.high) * flatMargin, 0.01);
    return {span.low - margin, span.high + margin};
}

} // namespace

PriceSpan fitPrices(PriceSpan candles, const std::vector<PriceSpan> &wishes)
{
    candles = opened(candles);
    const double limit = (candles.high - candles.low) * reach;
    PriceSpan fit = candles;
    for (const PriceSpan &wish : wishes) {
        if (!isWish(wish)) {
            continue;
        }
        if (wish.low >= candles.low - limit) {
            fit.low = std::min(fit.low, wish.low);
        }
        if (wish.high <= candles.high + limit) {
            fit.high = std::max(fit.high, wish.high);
        }
    }
    const double height = fit.high - fit.low;
    return {fit.low - height * airBelow, fit.high + height * airAbove};
}

} // namespace Terminal
