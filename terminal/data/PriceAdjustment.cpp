#include "terminal/data/PriceAdjustment.h"

#include <QCoreApplication>

#include <algorithm>
#include <cmath>

namespace Terminal {

namespace {

QString text(const char *source)
{
    return QCoreApplication::translate("PriceAdjustment", source);
}

/// As an exchange rounds. A price half-way between two ticks may be a hair below it in a double.
double roundedTo(int decimals, double price)
{
    constexpr double noise = 1e-6; // of a tick
    const double ticks = std::pow(10.0, decimals);
    return std::floor(price * ticks + 0.5 + noise) / ticks;
}

QString nothingLeft(const CorporateAction &action, double closeBefore)
{
    return text("the dividend of %1 is as high as the price before it, %2")
        .arg(action.exDate.dashedText(), QString::number(closeBefore, 'f', 2));
}

} // namespace

Loaded<PriceAdjustment> PriceAdjustment::of(const CorporateActions &actions, Trading::TradingDate lastDay,
                                            const LastBarBefore &lastBarBefore)
{
    PriceAdjustment adjustment;
    for (const CorporateAction &action : actions) {
        const std::optional<Bar> last = action.exDate > lastDay ? std::nullopt : lastBarBefore(action.exDate);
        if (!last) {
            continue;
        }
        double close = last->close;
        for (const Step &step : adjustment.m_steps) {
            close *= step.exDate > dayOf(*last) ? step.factor : 1; // nothing was traded since
        }
        const auto price = Trading::Money::ofYuan(close);
        const auto factor = price ? adjustmentFactor(action, *price) : std::nullopt;
        if (!factor) {
            return Loaded<PriceAdjustment>::failure(nothingLeft(action, close));
        }
        adjustment.m_steps.push_back({action.exDate, *factor});
    }
    double later = 1;
    for (auto step = adjustment.m_steps.rbegin(); step != adjustment.m_steps.rend(); ++step) {
        later *= step->factor;
        step->factor = later;
    }
    return adjustment;
}

double PriceAdjustment::factorOn(Trading::TradingDate day) const
{
    const auto next =
        std::upper_bound(m_steps.begin(), m_steps.end(), day,
                         [](Trading::TradingDate date, const Step &step) { return date < step.exDate; });
    return next == m_steps.end() ? 1 : next->factor;
}

Bars PriceAdjustment::adjusted(Bars bars) const
{
    if (isEmpty()) {
        return bars;
    }
    for (Bar &bar : bars) {
        const double factor = factorOn(dayOf(bar));
        for (double *const price : {&bar.open, &bar.high, &bar.low, &bar.close}) {
            *price *= factor;
        }
    }
    return bars;
}

double PriceAdjustment::referencePrice(double close, Trading::TradingDate before, Trading::TradingDate day,
                                       int decimals) const
{
    const double earlier = factorOn(before);
    const double later = factorOn(day);
    return earlier == later ? close : roundedTo(decimals, close * earlier / later);
}

} // namespace Terminal
