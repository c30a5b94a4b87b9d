// The buy/sell points with many years of daily bars and many trades.
#include "bench/support/HostCalls.h"
#include "bench/support/ManyBars.h"
#include "bench/support/Paired.h"
#include "tests/support/Allocations.h"
#include "tests/support/CountingPainter.h"
#include "tests/support/FakeHost.h"
#include "tests/support/RecordedBus.h"

#include "tradechartobject/common/TradeMarks.h"
#include "tradechartobject/objects/BSPoint.h"

#include <QJsonDocument>

#include <limits>
#include <memory>

namespace {

constexpr int barCount = 100000;
constexpr int tradeCount = 100000;
constexpr int tradingDays = 10000;
constexpr double nan = std::numeric_limits<double>::quiet_NaN();

/// Rows as a trading module sends them, on every tenth day.
QByteArray manyTrades(int count)
{
    QJsonArray rows;
    for (int row = 0; row < count; ++row) {
        const QString date = QString::number(dateOf(row * tradingDays / count * (barCount / tradingDays)));
        rows.append(
            QJsonObject{{QStringLiteral("stkcode"), QStringLiteral("600536")},
                        {QStringLiteral("market"), QStringLiteral("1")},
                        {QStringLiteral("bsflag2"), row % 3 == 0 ? QStringLiteral("S") : QStringLiteral("B")},
                        {QStringLiteral("ordersno"), QString::number(700000 + row)},
                        {QStringLiteral("orderdate"), date},
                        {QStringLiteral("opertime"), QStringLiteral("09301500")},
                        {QStringLiteral("bizdate"), date},
                        {QStringLiteral("matchtime"), QStringLiteral("09301500")},
                        {QStringLiteral("matchprice"), QStringLiteral("10.500")},
                        {QStringLiteral("matchqty"), QStringLiteral("300")},
                        {QStringLiteral("matchamt"), QStringLiteral("3150.00")},
                        {QStringLiteral("buy"), row % 3 != 0},
                        {QStringLiteral("date"), date},
                        {QStringLiteral("price"), 10.5},
                        {QStringLiteral("vol"), 300}});
    }
    return QJsonDocument(QJsonObject{{QStringLiteral("cmd"), QStringLiteral("HistoryTrade")},
                                     {QStringLiteral("stkcode"), QStringLiteral("600536")},
                                     {QStringLiteral("data"), rows}})
        .toJson(QJsonDocument::Compact);
}

const QByteArray &longAnswer()
{
    static const QByteArray text = manyTrades(tradeCount);
    return text;
}

struct Chart
{
    Chart() : overlay(std::make_unique<BSPoint>(axis, QJsonObject(), nullptr))
    {
        axis.notesPrices = false;
        RecordedBus::instance().reset();
    }

    void calc() { overlay->calcIt(security, bars.data(), barCount, Korvane::DayPeriod, 0, 0); }
    void hear(const QByteArray &answer) { overlay->handleTradeNotify("TradeQuery", answer); }

    bool isMarkedOn(int bar)
    {
        CountingPainter painter;
        overlay->paintIt(painter);
        return painter.calls == 3 && painter.flags[Korvane::BothAbove][bar] == 1.0;
    }

    std::vector<Korvane::AnalyData> bars = manyBars(barCount);
    const Korvane::tagCodeWithName security = makeSecurity(1, "600536", 1);
    FakeAxis axis;
    std::unique_ptr<BSPoint> overlay;
};

void pointsCalcIt(benchmark::State &state)
{
    Chart chart;
    chart.calc();
    chart.hear(manyTrades(2 * tradingDays));
    chart.calc();
    if (!chart.isMarkedOn(0) || chart.isMarkedOn(1)) {
        state.SkipWithError("the trades are not marked");
    }

    std::vector<std::int64_t> times(barCount);
    std::vector<double> anchors(barCount);
    std::vector<double> marks[3];
    for (auto &series : marks) {
        series.resize(barCount);
    }
    const auto floor = [&] {
        for (std::size_t bar = 0; bar < barCount; ++bar) {
            times[bar] = chart.bars[bar].time * std::int64_t{1000000} + 235959;
            anchors[bar] = chart.bars[bar].high;
            marks[0][bar] = nan;
            marks[1][bar] = nan;
            marks[2][bar] = nan;
        }
        benchmark::DoNotOptimize(times.data());
        benchmark::DoNotOptimize(anchors.data());
        benchmark::DoNotOptimize(marks);
        benchmark::ClobberMemory();
    };
    Paired(state).run(floor, [&] { chart.calc(); });
}
BENCHMARK(pointsCalcIt)
    ->Name("calcIt/100k_bars_10k_trading_days")
    ->UseManualTime()
    ->Unit(benchmark::kMicrosecond);

void historyAnswer(benchmark::State &state)
{
    Chart chart;
    chart.calc();
    chart.hear(longAnswer());
    if (!chart.isMarkedOn(0)) {
        state.SkipWithError("the answer is not taken");
    }
    std::int64_t identity = 2;
    const auto floor = [] { benchmark::DoNotOptimize(QJsonDocument::fromJson(longAnswer())); };
    Paired(state).run(
        [&] {
            auto other = chart.security;
            other.identity = identity++; // forget the trades of the last round
            chart.overlay->calcIt(other, chart.bars.data(), 1, Korvane::DayPeriod, 0, 0);
            floor();
        },
        [&] { chart.hear(longAnswer()); });
}
BENCHMARK(historyAnswer)
    ->Name("HistoryTrade/100k_rows_beside_fromJson")
    ->UseManualTime()
    ->Iterations(9)
    ->Unit(benchmark::kMillisecond);

void pointsPaintIt(benchmark::State &state)
{
    Chart chart;
    chart.calc();
    chart.hear(longAnswer());
    timePaintIt(state, *chart.overlay);
}
BENCHMARK(pointsPaintIt)->Name("paintIt/100k_bars")->UseManualTime();

void pointsHitTest(benchmark::State &state)
{
    Chart chart;
    chart.calc();
    chart.hear(longAnswer());
    timeHitTest(state, *chart.overlay, chart.axis, static_cast<double>(state.range(0)) * 10.0, 0.0);
}
BENCHMARK(pointsHitTest)->Name("hitTest/at_bar")->Arg(0)->Arg(50000)->Arg(99990)->UseManualTime();

void memoryPerTrade(benchmark::State &state)
{
    double bytes = 0.0;
    for (auto _ : state) {
        Chart chart;
        chart.calc();
        const std::size_t before = Allocations::now().bytes;
        chart.hear(longAnswer());
        bytes = static_cast<double>(Allocations::now().bytes - before);
    }
    state.counters["bytes_per_trade"] = bytes / tradeCount;
    state.counters["ratio"] = bytes / tradeCount / sizeof(TradeChart::trade_cj);
}
BENCHMARK(memoryPerTrade)->Name("memory/100k_trades_on_10k_days")->Iterations(1);

} // namespace
