#pragma once

#include "terminal/data/DataFolder.h"

#include <algorithm>
#include <cmath>
#include <random>

namespace Terminal {

/// A random walk of daily bars, each opening where the last one closed; always the same for a seed.
inline Bars walkingBars(int count, unsigned seed = 1)
{
    std::mt19937 random(seed);
    std::uniform_real_distribution<double> step(-0.02, 0.02);
    Bars bars;
    QDate date(1990, 1, 1);
    double price = 100;
    for (int i = 0; i < count; ++i) {
        const double open = price;
        price = std::max(20.0, price * (1 + step(random)));
        const double high = std::max(open, price) * (1 + std::abs(step(random)));
        const double low = std::min(open, price) * (1 - std::abs(step(random)));
        bars.push_back({Trading::TradingDate::ofCalendar(date).value().number(), 0, open, high, low, price,
                        1000 + 50000 * std::abs(step(random))});
        date = date.addDays(1);
    }
    return bars;
}

inline ChartData dailyChart(int count)
{
    return {{QStringLiteral("600519"), Market::Shanghai, QStringLiteral(u"贵州茅台")},
            ChartPeriod::Day,
            walkingBars(count)};
}

} // namespace Terminal
