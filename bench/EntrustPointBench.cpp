// The order points with the orders of a busy day on all of its minutes. Every benchmark checks first that
// the overlay does what is timed.
#include "bench/support/Paired.h"
#include "tests/support/Allocations.h"
#include "tests/support/CountingPainter.h"
#include "tests/support/FakeHost.h"
#include "tests/support/RecordedBus.h"

#include "tradechartobject/common/OrderMarks.h"
#include "tradechartobject/common/TradeVocabulary.h"
#include "tradechartobject/objects/EntrustPoint.h"

#include <QJsonDocument>

#include <cmath>
#include <map>
#include <memory>
#include <utility>
#include <vector>

using namespace TradeChart;

namespace {

constexpr int orderCount = 10000;
constexpr int pricesPerBar = 8;
constexpr double catchDistance = 8.0; // pixels

const std::pair<std::uint32_t, std::uint32_t> openHours[] = {{930, 1130}, {1301, 1500}};
const char *const statuses[] = {"2", "7", "8", "1", "5"};

/// hhmm of every minute that an intraday chart has a bar for.
std::vector<std::uint32_t> minutesOfADay()
{
    std::vector<std::uint32_t> minutes;
    for (const auto &[first, last] : openHours) {
        for (std::uint32_t minute = first; minute <= last; minute += minute % 100 == 59 ? 41 : 1) {
            minutes.push_back(minute);
        }
    }
    return minutes;
}

const std::vector<std::uint32_t> minutes = minutesOfADay();
const int barCount = static_cast<int>(minutes.size());
const int markerCount = barCount * pricesPerBar;

int barOf(int order)
{
    return order * barCount / orderCount;
}

double priceOf(int order)
{
    return 10.0 + order % pricesPerBar * 0.01;
}

QString statusOf(int order)
{
    return QString::fromLatin1(statuses[order % 5]);
}

/// A row as a trading module sends it, half a minute after its bar has begun.
QJsonObject row(int order)
{
    const QString today = QString::number(currentDate());
    const std::uint32_t minute = minutes[static_cast<std::size_t>(barOf(order))];
    return {{QStringLiteral("stkcode"), QStringLiteral("600536")},
            {QStringLiteral("stkname"), QStringLiteral("江山科技")},
            {QStringLiteral("market"), QStringLiteral("1")},
            {QStringLiteral("bsflag2"), order % 3 == 0 ? QStringLiteral("0S") : QStringLiteral("0B")},
            {QStringLiteral("orderstatus"), statusOf(order)},
            {QStringLiteral("fundid"), QStringLiteral("880012345678")},
            {QStringLiteral("ordersno"), QString::number(700000 + order)},
            {QStringLiteral("orderdate"), today},
            {QStringLiteral("operdate"), today},
            {QStringLiteral("opertime"),
             QStringLiteral("%1").arg(minute * 10000 + 3000, 8, 10, QLatin1Char('0'))},
            {QStringLiteral("orderprice"), QString::number(priceOf(order), 'f', 3)},
            {QStringLiteral("orderqty"), QStringLiteral("500")},
            {QStringLiteral("matchqty"), QStringLiteral("200")},
            {QStringLiteral("matchamt"), QStringLiteral("2010.00")},
            {QStringLiteral("cancelqty"), QStringLiteral("0")},
            {QStringLiteral("cancelflag"), QStringLiteral("F")}};
}

const QByteArray &longAnswer()
{
    static const QByteArray text = [] {
        QJsonArray rows;
        for (int order = 0; order < orderCount; ++order) {
            rows.append(row(order));
        }
        return QJsonDocument(QJsonObject{{QStringLiteral("cmd"), QStringLiteral("EntrustTodayTrade")},
                                         {QStringLiteral("stkcode"), QStringLiteral("600536")},
                                         {QStringLiteral("data"), rows}})
            .toJson(QJsonDocument::Compact);
    }();
    return text;
}

/// The intraday chart of today with its orders; the last bar is told apart by its markers.
struct OrderChart
{
    OrderChart() : overlay(std::make_unique<EntrustPoint>(axis, QJsonObject(), nullptr))
    {
        RecordedBus::instance().reset();
        axis.notesPrices = false;
        const auto today = static_cast<std::uint32_t>(currentDate());
        for (const std::uint32_t minute : minutes) {
            bars.push_back(makeMinuteBar(today, minute));
        }
        overlay->calcIt(makeSecurity(1, "600536", 1), bars.data(), barCount, Korvane::IntradayPeriod, 0, 0);
        hearOrders();
    }

    void hearOrders() { overlay->handleTradeNotify(Topic::TRADEQUERY, longAnswer()); }

    /// Middle of the marker of an order.
    bool isHitAt(int order) { return overlay->hitTest(xOf(order), axis.yOf(priceOf(order)) + 8.0) == 0; }
    static double xOf(int order) { return barOf(order) * 10.0; }

    void checkOrders(benchmark::State &state)
    {
        CountingPainter painter;
        overlay->paintIt(painter);
        if (painter.calls != markerCount || !isHitAt(0) || !isHitAt(orderCount - 1)) {
            state.SkipWithError("the orders are not marked");
        }
    }

    std::vector<Korvane::AnalyData> bars;
    FakeAxis axis;
    std::unique_ptr<EntrustPoint> overlay;
};

void ordersAnswer(benchmark::State &state)
{
    OrderChart chart;
    chart.checkOrders(state);
    Paired(state).run([] { benchmark::DoNotOptimize(QJsonDocument::fromJson(longAnswer())); },
                      [&] { chart.hearOrders(); });
}
BENCHMARK(ordersAnswer)
    ->Name("orders/EntrustTodayTrade/10k_rows_beside_fromJson")
    ->UseManualTime()
    ->Iterations(51)
    ->Unit(benchmark::kMillisecond);

/// What the grouping leaves behind, filled with prepared keys and copies of prepared orders.
class Groups
{
public:
    Groups() : m_given(static_cast<std::size_t>(barCount))
    {
        for (int order = 0; order < orderCount; ++order) {
            Given &given = m_given[static_cast<std::size_t>(barOf(order))];
            given.keys.push_back(priceKey(priceOf(order)));
            given.orders.push_back({true, statusOf(order), QString::fromLatin1("880012345678"), order, 0, 0,
                                    priceOf(order), 500, 200, 10.05, 0});
        }
    }

    void fill()
    {
        m_marks.clear();
        m_orders.clear();
        for (int bar = barCount - 1; bar >= 0; --bar) {
            const Given &given = m_given[static_cast<std::size_t>(bar)];
            m_orders.emplace(bar, given.orders);
            std::map<std::int64_t, int> &marks = m_marks[bar];
            for (const std::int64_t key : given.keys) {
                marks.emplace(key, 20);
            }
        }
        benchmark::DoNotOptimize(m_marks);
        benchmark::DoNotOptimize(m_orders);
    }

private:
    struct Given
    {
        std::vector<std::int64_t> keys;
        QVector<EntrustInfo> orders;
    };

    std::vector<Given> m_given;
    std::map<int, std::map<std::int64_t, int>> m_marks;
    std::map<int, QVector<EntrustInfo>> m_orders;
};

void ordersGrouping(benchmark::State &state)
{
    OrderChart chart;
    chart.checkOrders(state);
    Groups floor;
    Paired(state).run([&] { floor.fill(); }, [&] { chart.overlay->calcEntrustPointPriceInfo(); });
    state.counters["us_per_order"] = state.counters["median_us"] / orderCount;
}
BENCHMARK(ordersGrouping)
    ->Name("orders/grouping/10k_orders_on_241_bars")
    ->UseManualTime()
    ->Unit(benchmark::kMicrosecond);

void ordersPaintIt(benchmark::State &state)
{
    OrderChart chart;
    chart.checkOrders(state);
    CountingPainter painter;
    Korvane::IChartPainter *host = &painter;
    const auto floor = [host] {
        for (int marker = 0; marker < markerCount; ++marker) {
            host->drawMarker(0, marker / pricesPerBar, 20, 0, 10.0);
        }
    };
    const auto work = [&] { chart.overlay->paintIt(painter); };
    Paired(state).run(floor, work);
    state.counters["allocations"] = Allocations::during(work);
    state.counters["markers"] = markerCount;
}
BENCHMARK(ordersPaintIt)->Name("orders/paintIt")->UseManualTime()->Unit(benchmark::kMicrosecond);

/// The pointer beside all markers, or between those of a bar in the middle.
void ordersHitTest(benchmark::State &state)
{
    OrderChart chart;
    chart.checkOrders(state);
    const double x = static_cast<double>(state.range(0)) * 10.0;
    if (chart.overlay->hitTest(x, -100.0) != -1) {
        state.SkipWithError("there is no marker there");
    }
    Korvane::IChartAxis *host = &chart.axis;
    const auto floor = [host, x] {
        int near = 0;
        for (int bar = 0; bar < barCount; ++bar) {
            near += std::abs(x - host->barToX(bar)) < catchDistance ? 1 : 0;
        }
        benchmark::DoNotOptimize(near);
    };
    const auto work = [&] { benchmark::DoNotOptimize(chart.overlay->hitTest(x, -100.0)); };
    Paired(state).run(floor, work);
    state.counters["allocations"] = Allocations::during(work);
}
BENCHMARK(ordersHitTest)
    ->Name("orders/hitTest/above_bar")
    ->Arg(-100)
    ->Arg(120)
    ->UseManualTime()
    ->Unit(benchmark::kMicrosecond);

} // namespace
