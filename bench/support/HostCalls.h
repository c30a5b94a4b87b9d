// What a host asks of an overlay all the time, timed and with the heap counted.
#pragma once

#include "tradechartobject/ChartInterface.h"

#include <benchmark/benchmark.h>

/// Repaints. Reports the painter calls of one paint, too.
void timePaintIt(benchmark::State &state, Korvane::IChartObject &overlay);

/// Moves the pointer to a pixel.
void timeHitTest(benchmark::State &state, Korvane::IChartObject &overlay, double x, double y);
