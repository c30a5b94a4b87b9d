#include "terminal/results/ChartPlace.h"

#include <QWidget>

#include <algorithm>
#include <cmath>

namespace Terminal {

void showDay(ChartView *chart, Trading::TradingDate day)
{
    const Bars &bars = chart->data().bars;
    if (bars.empty()) {
        return;
    }
    const auto found =
        std::find_if(bars.begin(), bars.end(), [day](const Bar &bar) { return !(dayOf(bar) < day); });
    const auto bar = static_cast<double>((found == bars.end() ? bars.end() - 1 : found) - bars.begin());
    const double half = chart->span().width() / 2;
    chart->setSpan({bar - half, bar + half});
    const ChartGeometry &geometry = chart->chartGeometry();
    const double price = bars[static_cast<size_t>(bar)].close;
    chart->setCrosshair(QPoint(static_cast<int>(std::lround(geometry.barToX(bar))),
                               static_cast<int>(std::lround(geometry.priceToY(price)))));
}

} // namespace Terminal
