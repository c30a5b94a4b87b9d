// What a repaint and a hover of the chart cost, beside what the machine allows for the same pixels.
//
// A repaint is everything from the change of the view to the finished picture: merging the bars, fitting
// the scales, painting canvas, axes, candles, volume and marks. The floor is filling the same pixels and
// drawing as many rectangles and pictures, without knowing what they mean. That of a crosshair is the copy of
// what changes of the finished picture and two lines; that of a hit test, a look at the bar under the
// pointer.
#include "terminal/Appearance.h"
#include "terminal/chart/bars/VisibleBars.h"
#include "terminal/chart/view/ChartView.h"
#include "terminal/plugin/HostRecords.h"
#include "terminal/plugin/OverlayItem.h"

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QDate>
#include <QPainter>

#include <algorithm>
#include <cmath>
#include <ctime>
#include <limits>
#include <random>

namespace {

using namespace Terminal;

constexpr int barCount = 100'000;
constexpr QSize windowSize(1600, 900);
constexpr int readoutHeight = 40; // pixels

Bars randomWalk(int count)
{
    std::mt19937 random(7);
    std::normal_distribution<double> step(0, 0.01);
    Bars bars;
    QDate date(1700, 1, 1);
    double price = 100;
    for (int i = 0; i < count; ++i) {
        const double open = price;
        price *= std::exp(step(random) - std::log(price / 100) * 1e-4);
        const double high = std::max(open, price) * (1 + std::abs(step(random)));
        const double low = std::min(open, price) * (1 - std::abs(step(random)));
        bars.push_back({date.year() * 10000 + date.month() * 100 + date.day(), 0, open, high, low, price,
                        1e6 * (1 + std::abs(step(random)) * 100)});
        date = date.addDays(1);
    }
    return bars;
}

/// Marks on every second bar: buys, sells and both in turn.
class ManyMarks : public Korvane::IChartObject
{
public:
    int type() const override { return 3; }
    bool deleteObject() override { return true; }
    bool calcIt(const Korvane::tagCodeWithName &, const Korvane::AnalyData *bars, int count, Korvane::Period,
                int, int) override
    {
        const auto size = static_cast<size_t>(count);
        m_highs.resize(size);
        for (auto &flags : m_flags) {
            flags.assign(size, std::numeric_limits<double>::quiet_NaN());
        }
        for (size_t i = 0; i < size; ++i) {
            m_highs[i] = bars[i].high;
            if (i % 2 == 0) {
                m_flags[i / 2 % 3][i] = 1.0;
            }
        }
        return true;
    }
    bool calcRatio(int, int) override { return true; }
    double maximizeValue(int &) override { return std::numeric_limits<double>::min(); }
    double minimizeValue(int &) override { return std::numeric_limits<double>::max(); }
    bool paintIt(Korvane::IChartPainter &painter) override
    {
        ++paints;
        for (int kind = 0; kind < 3; ++kind) {
            painter.drawMarkerSeries(0, m_flags[kind].data(), m_highs.data(), kind * 2, 1);
        }
        return true;
    }
    int hitTest(double, double) override { return -1; }
    void handleMousePress(double, double) override {}
    void handleMousePressR(double, double) override {}
    void handleMouseRelease(double, double) override {}
    void handleMouseReleaseR(double, double) override {}
    void handleMouseMove(double, double) override {}

    int paints = 0;

protected:
    std::vector<double> m_highs;

private:
    std::vector<double> m_flags[3];
};

/// Orders on every second bar, at its high: every kind in turn.
class ManyOrders : public ManyMarks
{
public:
    bool calcIt(const Korvane::tagCodeWithName &, const Korvane::AnalyData *bars, int count, Korvane::Period,
                int, int) override
    {
        m_highs.resize(static_cast<size_t>(count));
        std::transform(bars, bars + count, m_highs.begin(),
                       [](const Korvane::AnalyData &bar) { return bar.high; });
        return true;
    }
    bool paintIt(Korvane::IChartPainter &painter) override
    {
        ++paints;
        for (int bar = 0; bar < static_cast<int>(m_highs.size()); bar += 2) {
            painter.drawMarker(0, bar, orderKinds[static_cast<size_t>(bar / 2) % orderKinds.size()].number, 0,
                               m_highs[static_cast<size_t>(bar)]);
        }
        return true;
    }
};

/// A chart with a random walk on a screen in memory.
class Scene
{
public:
    explicit Scene(ManyMarks *overlayToShow = nullptr, int bars = barCount)
    {
        const ChartData data{{QStringLiteral("000001"), Market::Shenzhen, QStringLiteral("bench")},
                             ChartPeriod::Day,
                             randomWalk(bars)};
        chart.resize(windowSize);
        chart.setData(data);
        if (overlayToShow != nullptr) {
            overlay = std::make_shared<OverlayHandle>(marks = overlayToShow);
            overlay->calc(hostSecurity(data.security, 1), hostBars(data.bars), Korvane::DayPeriod);
            item = std::make_unique<OverlayItem>(&chart, overlay, &sprites);
            item->attach(&chart);
        }
        chart.show();
        QApplication::processEvents();
    }

    void repaint()
    {
        chart.refit();
        QApplication::processEvents();
    }

    void repaintCached()
    {
        chart.replot();
        QApplication::processEvents();
    }

    ChartView chart;
    GlyphSprites sprites;
    ManyMarks *marks = nullptr;
    std::shared_ptr<OverlayHandle> overlay;
    std::unique_ptr<OverlayItem> item;
};

double cpuMilliseconds()
{
    timespec now{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) * 1e3 + static_cast<double>(now.tv_nsec) / 1e6;
}

template <typename Work>
double cpuOf(Work work)
{
    const double start = cpuMilliseconds();
    work();
    return cpuMilliseconds() - start;
}

double median(std::vector<double> values)
{
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

/// The least that the same picture costs: its pixels filled, one block per wick and volume column, one
/// picture per glyph, without knowing what they mean.
class Floor
{
public:
    explicit Floor(const Scene &scene) : m_glyphs(scene.item ? scene.item->marks().all().size() : 0)
    {
        m_sprite.fill(QColor(160, 120, 240, 200));
        const ChartGeometry &geometry = scene.chart.chartGeometry();
        for (const BarColumn &column : scene.chart.visibleBars().columns()) {
            const int x = static_cast<int>(geometry.barToX(column.position));
            m_blocks.append(QRect(QPoint(x, static_cast<int>(geometry.priceToY(column.high))),
                                  QPoint(x, static_cast<int>(geometry.priceToY(column.low)))));
            m_blocks.append(QRect(QPoint(x, 760), QPoint(x, 860)));
        }
    }

    void draw()
    {
        QPainter painter(&m_image);
        painter.fillRect(m_image.rect(), QColor(19, 23, 34));
        painter.setPen(Qt::NoPen);
        painter.setBrush(QColor(226, 67, 59));
        painter.drawRects(m_blocks);
        for (size_t i = 0; i < m_glyphs; ++i) {
            painter.drawPixmap(static_cast<int>(i) * 12, 100, m_sprite);
        }
    }

private:
    QImage m_image{windowSize, QImage::Format_RGB32};
    QPixmap m_sprite{24, 19};
    QVector<QRect> m_blocks;
    size_t m_glyphs;
};

/// Times work and its floor in turn, so that a change of the machine's speed meets both.
template <typename Floor, typename Work>
void measureBeside(benchmark::State &state, Floor floor, Work work)
{
    std::vector<double> works;
    std::vector<double> floors;
    for (auto _ : state) {
        floors.push_back(cpuOf(floor));
        works.push_back(cpuOf(work));
        state.SetIterationTime(works.back() / 1e3);
    }
    state.counters["cpu_ms"] = median(works);
    state.counters["floor_ms"] = median(floors);
    state.counters["ratio"] = median(works) / median(floors);
}

template <typename Repaint>
void measure(benchmark::State &state, Scene &scene, Repaint repaint)
{
    repaint();
    Floor floor(scene);
    state.counters["glyphs"] = scene.item ? static_cast<double>(scene.item->marks().all().size()) : 0;
    const int paintsBefore = scene.marks != nullptr ? scene.marks->paints : 0;
    measureBeside(
        state, [&floor] { floor.draw(); }, repaint);
    if (scene.marks != nullptr &&
        scene.marks->paints - paintsBefore != static_cast<int>(state.iterations())) {
        state.SkipWithError("not every repaint painted");
    }
}

void repaintAllBars(benchmark::State &state)
{
    Scene scene;
    scene.chart.showAll();
    measure(state, scene, [&scene] { scene.repaint(); });
}

void repaintAllBarsWithMarks(benchmark::State &state)
{
    Scene scene(new ManyMarks);
    scene.chart.showAll();
    measure(state, scene, [&scene] { scene.repaint(); });
}

void repaintAllBarsWithMarksUnmoved(benchmark::State &state)
{
    Scene scene(new ManyMarks);
    scene.chart.showAll();
    measure(state, scene, [&scene] { scene.repaintCached(); });
}

void repaintAllBarsWithOrders(benchmark::State &state)
{
    Scene scene(new ManyOrders);
    scene.chart.showAll();
    measure(state, scene, [&scene] { scene.repaint(); });
}

void repaintTwoHundredBars(benchmark::State &state)
{
    Scene scene(new ManyMarks);
    scene.chart.setSpan({barCount - 200.5, barCount - 0.5});
    measure(state, scene, [&scene] { scene.repaint(); });
}

/// A bar comes, the overlays are calculated with all bars before the scales are fitted, and everything is
/// drawn anew. Each overlay has 50,000 marks.
void takeBar(benchmark::State &state, ManyMarks *first, ManyMarks *second)
{
    Scene scene(first);
    std::vector<std::shared_ptr<OverlayHandle>> overlays{scene.overlay};
    const ChartData shown = scene.chart.data();
    const Korvane::tagCodeWithName security = hostSecurity(shown.security, 1);
    std::vector<Korvane::AnalyData> bars = hostBars(shown.bars);
    std::unique_ptr<OverlayItem> item;
    if (second != nullptr) {
        overlays.push_back(std::make_shared<OverlayHandle>(second));
        overlays.back()->calc(security, bars, Korvane::DayPeriod);
        item = std::make_unique<OverlayItem>(&scene.chart, overlays.back(), &scene.sprites);
        item->attach(&scene.chart);
    }
    scene.chart.showAll();
    QObject::connect(&scene.chart, &ChartView::barsGrew, &scene.chart, [&] {
        bars.push_back(hostBar(scene.chart.data().bars.back()));
        for (const auto &overlay : overlays) {
            overlay->calc(security, bars, Korvane::DayPeriod);
        }
    });
    Bar bar = shown.bars.back();
    QDate day(bar.date / 10000, bar.date / 100 % 100, bar.date % 100);
    measure(state, scene, [&] {
        day = day.addDays(1);
        bar.date = day.year() * 10000 + day.month() * 100 + day.day();
        scene.chart.grow(bars.size(), Bars{bar});
        QApplication::processEvents();
    });
}

void takeNewBar(benchmark::State &state)
{
    takeBar(state, new ManyMarks, new ManyOrders);
}

void takeNewBarWithTrades(benchmark::State &state)
{
    takeBar(state, new ManyMarks, nullptr);
}

void takeNewBarWithOrders(benchmark::State &state)
{
    takeBar(state, new ManyOrders, nullptr);
}

void hitTestAmongMarks(benchmark::State &state)
{
    Scene scene(new ManyMarks);
    scene.chart.showAll();
    scene.repaint();
    const auto overThePixels = [](auto &&look) {
        return [look] {
            for (double x = 0; x < windowSize.width(); ++x) {
                look(x);
            }
        };
    };
    const auto floor = [&scene](double x) { benchmark::DoNotOptimize(scene.chart.barAt(x)); };
    const auto work = [&scene, floor](double x) {
        benchmark::DoNotOptimize(scene.item->marks().targetAt({x, 200}));
        floor(x);
    };
    measureBeside(state, overThePixels(floor), overThePixels(work));
    state.counters["us_per_look"] = state.counters["cpu_ms"] * 1e3 / windowSize.width();
}

void moveCrosshair(benchmark::State &state)
{
    Scene scene(new ManyMarks);
    scene.chart.setSpan({barCount - 200.5, barCount - 0.5});
    scene.repaint();
    const QPixmap picture = scene.chart.grab();
    QImage image(windowSize, QImage::Format_RGB32);
    int x = 0;
    const auto floor = [&] {
        QPainter painter(&image);
        painter.drawPixmap(0, 0, picture, 0, 0, windowSize.width(), readoutHeight);
        painter.drawPixmap(x, 0, picture, x, 0, 1, windowSize.height());
        painter.drawPixmap(0, 200, picture, 0, 200, windowSize.width(), 1);
        painter.drawLine(x, 0, x, windowSize.height());
        painter.drawLine(0, 200, windowSize.width(), 200);
    };
    measureBeside(state, floor, [&] {
        x = (x + 7) % 1400;
        scene.chart.setCrosshair(QPoint(x, 200));
        QApplication::processEvents();
    });
}

void growingBars(benchmark::State &state)
{
    Scene scene(new ManyMarks, static_cast<int>(state.range(0)));
    scene.chart.showAll();
    scene.repaint();
    for ([[maybe_unused]] auto _ : state) {
        scene.repaint();
    }
}

BENCHMARK(growingBars)
    ->Name("growth/repaint with marks on half of them, bars")
    ->RangeMultiplier(10)
    ->Range(1000, 1000000)
    ->Iterations(3)
    ->UseRealTime();
BENCHMARK(repaintAllBars)->Unit(benchmark::kMillisecond)->UseManualTime();
BENCHMARK(repaintAllBarsWithMarks)->Unit(benchmark::kMillisecond)->UseManualTime();
BENCHMARK(repaintAllBarsWithMarksUnmoved)->Unit(benchmark::kMillisecond)->UseManualTime();
BENCHMARK(repaintAllBarsWithOrders)->Unit(benchmark::kMillisecond)->UseManualTime();
BENCHMARK(repaintTwoHundredBars)->Unit(benchmark::kMillisecond)->UseManualTime();
BENCHMARK(takeNewBar)->Unit(benchmark::kMillisecond)->UseManualTime();
BENCHMARK(takeNewBarWithTrades)->Unit(benchmark::kMillisecond)->UseManualTime();
BENCHMARK(takeNewBarWithOrders)->Unit(benchmark::kMillisecond)->UseManualTime();
BENCHMARK(hitTestAmongMarks)->Unit(benchmark::kMillisecond)->UseManualTime();
BENCHMARK(moveCrosshair)->Unit(benchmark::kMillisecond)->UseManualTime();

} // namespace

int main(int argc, char *argv[])
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    setAppearance(&application);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
