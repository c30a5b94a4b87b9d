// Trades on a chart: what it costs to find their places when they come, and their marks when the view
// changes.
#include "terminal/trades/TradeClusters.h"

#include <benchmark/benchmark.h>

#include <QGuiApplication>

namespace Terminal {
namespace {

constexpr int tradingDays = 10000; ///< forty years

/// A chart of days, and so many trades over all of them.
struct Scene
{
    explicit Scene(int count)
    {
        QDate date(1985, 1, 1);
        for (int day = 0; day < tradingDays; ++day) {
            const double price = 10 + day % 500 * 0.01;
            chart.bars.push_back({Trading::TradingDate::ofCalendar(date).value().number(), 0, price,
                                  price + 1, price - 1, price, 1000});
            date = date.addDays(1);
        }
        for (int trade = 0; trade < count; ++trade) {
            const Bar &bar =
                chart.bars[static_cast<size_t>(trade) * tradingDays / static_cast<size_t>(count)];
            AccountTrade made{dayOf(bar), Trading::ClockTime::of(10, 0).value()};
            made.side = trade % 2 == 0 ? Direction::Buy : Direction::Sell;
            made.price = bar.low + trade % 20 * 0.1;
            made.quantity = 100;
            trades.push_back(made);
        }
    }

    /// The last so many days on a canvas of 1600 × 900.
    ChartGeometry view(int days) const
    {
        return {{tradingDays - days - 0.5, tradingDays - 0.5}, 0, 1600, 9, 16, 0, 900};
    }

    ChartData chart;
    Trades trades;
};

/// When trades or bars come.
void findPlaces(benchmark::State &state)
{
    const Scene scene(static_cast<int>(state.range(0)));
    for (auto step : state) {
        benchmark::DoNotOptimize(TradePlaces(scene.chart, scene.trades).size());
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

/// When the view changes: of `trades`, with `days` in view.
void findMarks(benchmark::State &state)
{
    const Scene scene(static_cast<int>(state.range(0)));
    const TradePlaces places(scene.chart, scene.trades);
    const ChartGeometry view = scene.view(static_cast<int>(state.range(1)));
    size_t marks = 0;
    for (auto step : state) {
        marks = marksInView(places, scene.trades, view, scene.chart.bars.size()).size();
    }
    state.counters["marks"] = static_cast<double>(marks);
}

BENCHMARK(findPlaces)->ArgName("trades")->Arg(1000)->Arg(100000)->Unit(benchmark::kMicrosecond);
BENCHMARK(findMarks)
    ->ArgNames({"trades", "days"})
    ->Args({1000, 250})
    ->Args({100000, 250})
    ->Args({100000, tradingDays})
    ->Unit(benchmark::kMicrosecond);

} // namespace
} // namespace Terminal

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
