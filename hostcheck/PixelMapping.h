#pragma once

#include "hostcheck/Finding.h"
#include "hostcheck/HandedRecords.h"
#include "tradechartobject/ChartInterface.h"

namespace HostCheck {

/// Asks a chart that is laid out for pixels of the first and last bar and of some between, and of their
/// prices. Nothing is asked of a chart without a price scale.
void checkMapping(Korvane::IChartAxis &axis, const HandedRecords &shown, const Tell &tell);

/// Asks which bar is under a pixel of the mouse, and whether the way back leads there.
void checkBarUnder(Korvane::IChartAxis &axis, int barCount, double x, const Tell &tell);

} // namespace HostCheck
