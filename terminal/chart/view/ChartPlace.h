#pragma once

#include "terminal/chart/view/ChartView.h"
#include "trading/TradingDate.h"

namespace Terminal {

/// Brings the bar of a day into the middle of the view, with as many bars beside it as now, and the crosshair
/// onto it; that of the next trading day where it has none, the last bar where none is later.
void showDay(ChartView *chart, Trading::TradingDate day);

/// The same of a bar that is loaded, with the crosshair at this price.
void showBar(ChartView *chart, int bar, double price);

} // namespace Terminal
