// The combined overlay with many years of daily bars and many trades. Every benchmark checks first that
// the overlay does what is timed.
#include "bench/support/HostCalls.h"
#include "bench/support/ManyBars.h"
#include "bench/support/Paired.h"
#include "tests/support/CountingPainter.h"
#include "tests/support/FakeHost.h"
#include "tests/support/RecordedBus.h"

#include "tradechartobject/common/BarTime.h"
#include "tradechartobject/objects/CChartTradeObject.h"
#include "tradechartobject/objects/CChartTradeObject_p.h"

#include <QJsonObject>

#include <array>
#include <memory>

using namespace TradeChart;

namespace {

constexpr int barCount = 100000;
constexpr int tradeCount = 10000;

/// Rows as this overlay reads them. It takes no time from them, so all stand on the first bar.
QJsonArray manyRows()
{
    QJsonArray rows;
    for (int row = 0; row < tradeCount; ++row) {
        rows.append(QJsonObject{{QStringLiteral("buy"), row % 3 != 0},
                                {QStringLiteral("price"), 8.0 + row % 5},
                                {QStringLiteral("vol"), 300}});
    }
    return rows;
}

struct CombinedChart
{
    CombinedChart() : overlay(std::make_unique<CChartTradeObject>(axis, R"({"type":1})"))
    {
        axis.notesPrices = false;
        RecordedBus::instance().reset();
        calc();
        overlay->parseTradeInfo(manyRows(), false);
        calc();
    }

    void calc() { overlay->calcIt(security, bars.data(), barCount, Korvane::DayPeriod, 0, 0); }

    bool isMarkedOnTheFirstBarOnly() const
    {
        CountingPainter painter;
        overlay->paintIt(painter);
        const double *const buys = painter.flags[Korvane::BuyAbove];
        return painter.calls == 7 && buys[0] == 1.0 && !(buys[1] == 1.0);
    }

    std::vector<Korvane::AnalyData> bars = manyBars(barCount);
    const Korvane::tagCodeWithName security = makeSecurity(1, "600536", 1);
    FakeAxis axis;
    std::unique_ptr<CChartTradeObject> overlay;
};

/// What calcIt() leaves behind, written by the shortest loop over the bars.
struct PerBar
{
    std::vector<std::int64_t> times = std::vector<std::int64_t>(barCount);
    std::array<std::vector<double>, 2> prices{std::vector<double>(barCount), std::vector<double>(barCount)};
    std::array<std::vector<double>, 6> marks;

    PerBar() { marks.fill(std::vector<double>(barCount)); }

    void write(const std::vector<Korvane::AnalyData> &bars)
    {
        for (std::size_t bar = 0; bar < barCount; ++bar) {
            times[bar] = bars[bar].time * std::int64_t{1000000} + 235959;
            prices[0][bar] = bars[bar].high;
            prices[1][bar] = bars[bar].low;
            for (auto &series : marks) {
                series[bar] = unmarked;
            }
        }
        benchmark::DoNotOptimize(times.data());
        benchmark::DoNotOptimize(prices);
        benchmark::DoNotOptimize(marks);
        benchmark::ClobberMemory();
    }
};

void combinedCalcIt(benchmark::State &state)
{
    CombinedChart chart;
    if (!chart.isMarkedOnTheFirstBarOnly()) {
        state.SkipWithError("the trades are not marked");
    }
    PerBar floor;
    Paired(state).run([&] { floor.write(chart.bars); }, [&] { chart.calc(); });
}
BENCHMARK(combinedCalcIt)
    ->Name("combined/calcIt/100k_bars_10k_trades")
    ->UseManualTime()
    ->Unit(benchmark::kMicrosecond);

/// Trades with times, on every tenth bar: the walk that trades take which a chart shows on their days.
void combinedWalk(benchmark::State &state)
{
    const std::vector<Korvane::AnalyData> bars = manyBars(barCount);
    std::vector<std::int64_t> times;
    decodeBarTimes(bars.data(), barCount, Korvane::DayPeriod, times);
    std::vector<trade_cj> trades;
    for (std::size_t trade = 0; trade < tradeCount; ++trade) {
        trades.push_back({trade % 3 != 0, times[trade * (barCount / tradeCount)], 8.0, 300.0});
    }
    PerBar perBar;
    perBar.write(bars);
    auto &marks = perBar.marks;
    const auto walk = [&] {
        markTrades(trades, {bars.data(), times.data(), barCount}, {marks[0], marks[1], marks[2]},
                   {marks[3], marks[4], marks[5]});
    };
    walk();
    if (marks[3][10] != 1.0 || marks[3][11] == 1.0) {
        state.SkipWithError("the trades are not marked");
    }
    // The least is to read every time once, and of every bar that was traded on the close and the marks.
    const auto floor = [&] {
        std::int64_t sum = 0;
        for (const std::int64_t time : times) {
            sum += time & 1;
        }
        double seen = 0.0;
        for (std::size_t bar = 0; bar < barCount; bar += barCount / tradeCount) {
            seen += bars[bar].close + marks[0][bar] + marks[1][bar] + marks[3][bar] + marks[4][bar];
            marks[3][bar] = marked;
        }
        benchmark::DoNotOptimize(sum);
        benchmark::DoNotOptimize(seen);
        benchmark::ClobberMemory();
    };
    Paired(state).run(floor, walk);
}
BENCHMARK(combinedWalk)
    ->Name("combined/markTrades/10k_trades_over_100k_bars")
    ->UseManualTime()
    ->Unit(benchmark::kMicrosecond);

void combinedPaintIt(benchmark::State &state)
{
    const CombinedChart chart;
    if (!chart.isMarkedOnTheFirstBarOnly()) {
        state.SkipWithError("the trades are not marked");
    }
    timePaintIt(state, *chart.overlay);
}
BENCHMARK(combinedPaintIt)->Name("combined/paintIt/100k_bars")->UseManualTime();

void combinedHitTest(benchmark::State &state)
{
    CombinedChart chart;
    timeHitTest(state, *chart.overlay, chart.axis, 50000 * 10.0, 0.0);
}
BENCHMARK(combinedHitTest)->Name("combined/hitTest/at_bar_50000")->UseManualTime();

} // namespace
