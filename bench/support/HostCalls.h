// What a host asks of an overlay all the time, timed beside what the host itself does in it, and with the
// heap counted.
#pragma once

#include "tradechartobject/ChartInterface.h"

#include <benchmark/benchmark.h>

/// Repaints, beside the painter's calls of it alone. Reports their number, too.
void timePaintIt(benchmark::State &state, Korvane::IChartObject &overlay);

/// Moves the pointer to a pixel, beside the axis' look-ups of a bar and a price alone.
void timeHitTest(benchmark::State &state, Korvane::IChartObject &overlay, Korvane::IChartAxis &axis, double x,
                 double y);
