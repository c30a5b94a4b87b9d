#include "terminal/chart/axes/PriceFit.h"

#include "terminal/chart/marks/glyphs/TradeGlyph.h"

#include <algorithm>
#include <cmath>

namespace Terminal {

namespace {

constexpr double reach = 0.25;     ///< how far beyond the candles a wish is granted, of their height
constexpr double airAbove = 0.085; ///< above the highest bar, of the pane
constexpr double airBelow = 0.06;  ///< the same below the lowest one
constexpr double mostAir = 0.25;   ///< the same on either side of a pane that is hardly higher than a mark
constexpr double markRoom = seriesGlyphHeight + 1; ///< pixels for a mark on either side of a bar
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

double airOf(double share, double paneHeight)
{
    return std::max(share, std::min(markRoom / std::max(1.0, paneHeight), mostAir));
}

} // namespace

PriceSpan fitPrices(PriceSpan candles, const std::vector<PriceSpan> &wishes, double paneHeight)
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
    const double above = airOf(airAbove, paneHeight);
    const double below = airOf(airBelow, paneHeight);
    const double height = (fit.high - fit.low) / (1 - above - below);
    return {fit.low - height * below, fit.high + height * above};
}

} // namespace Terminal
