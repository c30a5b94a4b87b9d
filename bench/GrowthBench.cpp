// How the costs of bars, trades and orders grow with their number. No floors: what is looked at is the shape.
#include "bench/support/ManyBars.h"
#include "tests/support/FakeHost.h"
#include "tests/support/RecordedBus.h"

#include "tradechartobject/common/TradeVocabulary.h"
#include "tradechartobject/objects/BSPoint.h"
#include "tradechartobject/objects/EntrustPoint.h"

#include <benchmark/benchmark.h>

#include <QJsonObject>

#include <cstdint>
#include <memory>
#include <vector>

using namespace TradeChart;

namespace {

constexpr int rowsPerDay = 10;
constexpr int pricesPerBar = 8;

/// A text of many rows without a tree of them in memory.
template <class Row>
QByteArray answer(const char *command, int count, Row row)
{
    QByteArray text = QByteArray("{\"cmd\":\"") + command + "\",\"data\":[";
    for (int i = 0; i < count; ++i) {
        text += (i == 0 ? "{" : ",{") + row(i) + '}';
    }
    return text + "],\"stkcode\":\"600536\"}";
}

QByteArray field(const char *key, const QByteArray &value)
{
    return QByteArray(",\"") + key + "\":\"" + value + '"';
}

QByteArray tradeRow(int row)
{
    const QByteArray date = QByteArray::number(dateOf(row / rowsPerDay));
    return "\"market\":\"1\"" + field("bizdate", date) + field("bsflag2", row % 3 == 0 ? "S" : "B") +
           field("matchprice", QByteArray::number(10 + row % 977 * 0.01, 'f', 3)) +
           field("matchqty", QByteArray::number(100 * (1 + row % 37))) +
           field("matchtime", QByteArray::number(9300000 + row % 600 * 97)) +
           field("ordersno", QByteArray::number(700000 + row)) + field("stkcode", "600536");
}

QByteArray orderRow(int row)
{
    const QByteArray today = QByteArray::number(static_cast<qint64>(currentDate()));
    return "\"market\":\"1\"" + field("bsflag2", row % 3 == 0 ? "0S" : "0B") + field("cancelqty", "0") +
           field("fundid", "880012345678") + field("matchamt", "2010.00") + field("matchqty", "200") +
           field("operdate", today) + field("opertime", QByteArray::number(10 * 1000000 + row % 60 * 10000)) +
           field("orderprice", QByteArray::number(10 + row % pricesPerBar * 0.01, 'f', 3)) +
           field("orderqty", "500") + field("ordersno", QByteArray::number(700000 + row)) +
           field("orderstatus", row % 2 == 0 ? "2" : "8");
}

template <class Overlay>
struct Chart
{
    Chart()
    {
        axis.notesPrices = false;
        RecordedBus::instance().reset();
    }

    const Korvane::tagCodeWithName security = makeSecurity(1, "600536", 1);
    FakeAxis axis;
    Overlay overlay{axis, QJsonObject(), nullptr};
};

void growingBars(benchmark::State &state)
{
    const int count = static_cast<int>(state.range(0));
    const auto bars = manyBars(count);
    Chart<BSPoint> chart;
    for ([[maybe_unused]] auto _ : state) {
        chart.overlay.calcIt(chart.security, bars.data(), count, Korvane::DayPeriod, 0, 0);
    }
}

void growingTrades(benchmark::State &state)
{
    const QByteArray text = answer(CmdType::HISTORYTRADE, static_cast<int>(state.range(0)), tradeRow);
    const auto bars = manyBars(1000);
    for ([[maybe_unused]] auto _ : state) {
        state.PauseTiming();
        auto chart = std::make_unique<Chart<BSPoint>>();
        chart->overlay.calcIt(chart->security, bars.data(), 1000, Korvane::DayPeriod, 0, 0);
        state.ResumeTiming();
        chart->overlay.handleTradeNotify(Topic::TRADEQUERY, text);
        state.PauseTiming();
        chart.reset();
        state.ResumeTiming();
    }
}

void growingOrders(benchmark::State &state)
{
    const QByteArray text = answer(CmdType::ENTRUSTTODAYTRADE, static_cast<int>(state.range(0)), orderRow);
    const auto today = static_cast<std::uint32_t>(currentDate());
    std::vector<Korvane::AnalyData> bars;
    for (std::uint32_t minute = 1000; minute < 1060; ++minute) {
        bars.push_back(makeMinuteBar(today, minute));
    }
    for ([[maybe_unused]] auto _ : state) {
        state.PauseTiming();
        auto chart = std::make_unique<Chart<EntrustPoint>>();
        chart->overlay.calcIt(chart->security, bars.data(), static_cast<int>(bars.size()),
                              Korvane::IntradayPeriod, 0, 0);
        state.ResumeTiming();
        chart->overlay.handleTradeNotify(Topic::TRADEQUERY, text);
        state.PauseTiming();
        chart.reset();
        state.ResumeTiming();
    }
}

void numbers(benchmark::internal::Benchmark *benchmark)
{
    benchmark->RangeMultiplier(10)->Range(1000, 1000000)->Iterations(2)->UseRealTime();
}

BENCHMARK(growingBars)->Name("growth/calcIt, bars")->Apply(numbers);
BENCHMARK(growingTrades)->Name("growth/HistoryTrade until stored, trades")->Apply(numbers);
BENCHMARK(growingOrders)->Name("growth/EntrustTodayTrade until stored, orders")->Apply(numbers);

} // namespace
