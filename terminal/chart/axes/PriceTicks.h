#pragma once

#include "terminal/chart/axes/PriceFit.h"

#include <QList>

namespace Terminal {

/// The prices that the axis of a pane of so many pixels names: round ones inside `prices`, none at its very
/// edges, and no two with the same label.
QList<double> priceTicks(const PriceSpan &prices, double paneHeight);

} // namespace Terminal
