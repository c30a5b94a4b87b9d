#include "bench/support/HostCalls.h"

#include "bench/support/Paired.h"
#include "tests/support/Allocations.h"
#include "tests/support/CountingPainter.h"

namespace {

constexpr int repeats = 1000;

} // namespace

void timePaintIt(benchmark::State &state, Korvane::IChartObject &overlay)
{
    CountingPainter painter;
    Korvane::IChartPainter *host = &painter;
    const auto paint = [&] { overlay.paintIt(*host); };
    state.counters["allocations"] = Allocations::during(paint);
    const int calls = painter.calls;
    const auto floor = [host, calls] {
        for (int call = 0; call < calls; ++call) {
            host->drawMarkerSeries(0, nullptr, nullptr, 0, 1);
        }
    };
    Paired(state, repeats).run(floor, paint);
    state.counters["host_calls"] = calls;
}

void timeHitTest(benchmark::State &state, Korvane::IChartObject &overlay, Korvane::IChartAxis &axis, double x,
                 double y)
{
    const auto test = [&] { benchmark::DoNotOptimize(overlay.hitTest(x, y)); };
    state.counters["allocations"] = Allocations::during(test);
    const auto floor = [&] {
        benchmark::DoNotOptimize(axis.xToBar(x));
        benchmark::DoNotOptimize(axis.priceToY(y, -1, -1));
    };
    Paired(state, repeats).run(floor, test);
}
