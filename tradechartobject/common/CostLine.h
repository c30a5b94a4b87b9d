// The horizontal line at the cost price of a holding, as the painter draws it and the mouse hits it.
#pragma once

#include "tradechartobject/ChartInterface.h"

#include <cstddef>
#include <limits>

namespace TradeChart {

/// The cost while it is not known; nothing is drawn for it and nothing hit.
constexpr double unknownCost = std::numeric_limits<double>::quiet_NaN();

/// Draws the line across `barCount` bars, labelled with the price to `decimals` decimals.
void drawCostLine(Korvane::IChartPainter &painter, std::size_t barCount, double price, int decimals);

/// 0 when the pixel row `y` lies within 5 pixels of the line, else -1; also -1 for a NaN price. Where
/// the line is drawn to does not matter, nor whether it is.
int hitTestCostLine(Korvane::IChartAxis &axis, double price, double y);

} // namespace TradeChart
