#include "bench/support/HostCalls.h"

#include "bench/support/Allocations.h"
#include "bench/support/CountingPainter.h"

void timePaintIt(benchmark::State &state, Korvane::IChartObject &overlay)
{
    CountingPainter painter;
    state.counters["allocations"] = Allocations::during([&] { overlay.paintIt(painter); });
    state.counters["host_calls"] = painter.calls;
    for (auto _ : state) {
        overlay.paintIt(painter);
    }
}

void timeHitTest(benchmark::State &state, Korvane::IChartObject &overlay, double x, double y)
{
    state.counters["allocations"] = Allocations::during([&] { overlay.hitTest(x, y); });
    for (auto _ : state) {
        benchmark::DoNotOptimize(overlay.hitTest(x, y));
    }
}
