#include "terminal/chart/axes/PriceTicks.h"

#include "trading/TradingUnits.h"

#include <qwt_scale_div.h>
#include <qwt_scale_engine.h>

#include <algorithm>
#include <iterator>

namespace Terminal {

namespace {

constexpr double labelRoom = 56;   ///< pixels from one label to the next
constexpr double edgeShare = 0.02; ///< of the scale, where a label would be cut

QList<double> roundPrices(const PriceSpan &prices, int most)
{
    const QwtLinearScaleEngine engine;
    const auto divided = [&](double step) {
        return engine.divideScale(prices.low, prices.high, most, 0, step).ticks(QwtScaleDiv::MajorTick);
    };
    constexpr double stepThatFits = 0;
    const QList<double> ticks = divided(stepThatFits);
    const double leastStep = Trading::priceStep.yuan();
    const bool isTooFine = ticks.size() > 1 && ticks.at(1) - ticks.at(0) < leastStep;
    return isTooFine ? divided(leastStep) : ticks;
}

} // namespace

QList<double> priceTicks(const PriceSpan &prices, double paneHeight)
{
    const int most = std::max(2, static_cast<int>(paneHeight / labelRoom));
    const double edge = (prices.high - prices.low) * edgeShare;
    const QList<double> all = roundPrices(prices, most);
    QList<double> ticks;
    std::copy_if(all.begin(), all.end(), std::back_inserter(ticks),
                 [&](double tick) { return tick > prices.low + edge && tick < prices.high - edge; });
    return ticks;
}

} // namespace Terminal
