#include "terminal/chart/view/ChartPlace.h"

#include <algorithm>
#include <cmath>

namespace Terminal {

void showBar(ChartView *chart, int bar, double price)
{
    const double half = chart->span().width() / 2;
    chart->setSpan({bar - half, bar + half});
    const ChartGeometry &geometry = chart->chartGeometry();
    chart->setCrosshair(QPoint(static_cast<int>(std::lround(geometry.barToX(bar))),
                               static_cast<int>(std::lround(geometry.priceToY(price)))));
}

void showDay(ChartView *chart, Trading::TradingDate day)
{
    const Bars &bars = chart->data().bars;
    if (bars.empty()) {
        return;
    }
    const auto found = std::lower_bound(bars.begin(), bars.end(), day.number(),
                                        [](const Bar &bar, int wanted) { return bar.date < wanted; });
    const auto shown = found == bars.end() ? std::prev(bars.end()) : found;
    showBar(chart, static_cast<int>(shown - bars.begin()), shown->close);
}

} // namespace Terminal
