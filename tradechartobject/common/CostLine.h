// The horizontal line at the cost price of a holding, as the painter draws it and the mouse hits it.
#pragma once

#include "tradechartobject/ChartInterface.h"

#include <cstddef>
#include <limits>

namespace TradeChart {

/// The cost while it is not known; nothing is drawn for it.
constexpr double unknownCost = std::numeric_limits<double>::quiet_NaN();

/// Draws the line across `barCount` bars, labelled with the price to `decimals` decimals.
void drawCostLine(Korvane::IChartPainter &painter, std::size_t barCount, double price, int decimals);

/// 0 when the pixel row `y` lies within 5 pixels of where the host puts the price, else -1. The host is asked
/// whatever the price is, and its answer decides; whether the line is drawn does not matter.
int hitTestCostLine(Korvane::IChartAxis &axis, double price, double y);

} // namespace TradeChart
