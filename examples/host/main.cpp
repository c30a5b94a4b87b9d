// A chart terminal as small as it can be. It waits until bus and trading module are there, creates the
// buy/sell points over the daily bars of a security and prints the days that they mark:
//
//     host LIBRARY examples/daily/600519.csv
//
// It may be started before the bus or the trading module: that is what Readiness is for.
#include <endpoint/Readiness.h>
#include <tradechartobject/ChartInterface.h>

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QLibrary>
#include <QTimer>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <functional>
#include <memory>
#include <set>
#include <utility>
#include <vector>

using LocalCommunication::Readiness;
using namespace std::chrono_literals;

namespace {

using Bars = std::vector<Korvane::AnalyData>;
using Factory = Korvane::IChartObject *(*)(Korvane::IChartAxis &, const char *);

/// Lines of "yyyymmdd,open,high,low,close,volume".
Bars readBars(const QString &path)
{
    Bars bars;
    QFile file(path);
    file.open(QIODevice::ReadOnly);
    for (const QByteArray &line : file.readAll().split('\n')) {
        const QList<QByteArray> fields = line.split(',');
        if (fields.size() >= 5 && fields[0].toUInt() != 0) {
            Korvane::AnalyData bar{};
            bar.time = fields[0].toUInt();
            bar.high = fields[2].toDouble();
            bar.low = fields[3].toDouble();
            bar.close = fields[4].toDouble();
            bars.push_back(bar);
        }
    }
    return bars;
}

Korvane::tagCodeWithName securityOf(const QByteArray &code)
{
    Korvane::tagCodeWithName security{};
    security.market = code.startsWith('6') ? 1 : 2; // Shanghai, Shenzhen
    security.identity = code.toLongLong() + 1;      // never 0, and another one for each security
    std::copy_n(code.constData(), std::min(code.size(), 38), security.code);
    return security;
}

/// Collects the bars with a mark; a terminal would draw them.
class Painter final : public Korvane::IChartPainter
{
public:
    explicit Painter(std::size_t barCount) : m_barCount(barCount) {}

    void endPaint() override {}
    void drawSeriesLabel(const double *, const char *, int) override {}
    void drawLineSeries(int, const double *, double) override {}
    void drawMarker(int, int, int, int, double) override {}
    void drawMarkerSeries(int, const double *flags, const double *, int, int) override
    {
        for (std::size_t bar = 0; bar < m_barCount; ++bar) {
            if (flags[bar] == 1.0) {
                marked.insert(bar);
            }
        }
    }

    std::set<std::size_t> marked;

private:
    const std::size_t m_barCount;
};

/// The chart as an overlay sees it.
class Axis final : public Korvane::IChartAxis
{
public:
    explicit Axis(std::function<void()> update) : m_update(std::move(update)) {}

    int chartMode() override { return Korvane::TodayChart; }
    bool visiblePriceRange(double &, double &) override { return false; }
    const char *screenId() override { return "example-host"; }
    double markerSize() override { return 16.0; }
    void updateObject(Korvane::IChartObject *) override { m_update(); }
    int popupMenu(const char **, void *) override { return -1; }
    void showMessage(const char *) override {}
    bool confirmBox(const char *) override { return false; }
    double barToX(int bar) override { return bar; }
    double priceToY(double price, int, int) override { return -price; }
    int xToBar(double x) override { return static_cast<int>(x); }
    void barAt(int, Korvane::AnalyData &) override {}

private:
    const std::function<void()> m_update;
};

class Chart
{
public:
    Chart(Factory create, const QString &file)
        : m_create(create),
          m_bars(readBars(file)),
          m_security(securityOf(QFileInfo(file).baseName().toLatin1())),
          m_axis([this] { m_soon.start(0); })
    {
        m_soon.setSingleShot(true);
        QObject::connect(&m_soon, &QTimer::timeout, [this] { show(); });
    }

    /// Creates the overlay, or makes it anew: what it asked before was lost.
    void createOverlay()
    {
        m_overlay.reset(m_create(m_axis, R"({"type":1})"));
        show();
    }

private:
    struct End
    {
        void operator()(Korvane::IChartObject *overlay) const
        {
            overlay->deleteObject();
            delete overlay;
        }
    };

    void show()
    {
        m_overlay->calcIt(m_security, m_bars.data(), static_cast<int>(m_bars.size()), Korvane::DayPeriod, 0,
                          0);
        Painter painter(m_bars.size());
        m_overlay->paintIt(painter);
        if (!painter.marked.empty()) {
            for (const std::size_t bar : painter.marked) {
                std::printf("%u\n", m_bars[bar].time);
            }
            QCoreApplication::quit();
        }
    }

    const Factory m_create;
    const Bars m_bars;
    const Korvane::tagCodeWithName m_security;
    QTimer m_soon;
    Axis m_axis; // lives longer than the overlay
    std::unique_ptr<Korvane::IChartObject, End> m_overlay;
};

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    const QStringList words = QCoreApplication::arguments();
    QLibrary library(words.value(1));
    const auto create = reinterpret_cast<Factory>(library.resolve("CreateChartObject"));
    if (create == nullptr || words.size() != 3) {
        std::fprintf(stderr, "usage: host LIBRARY DAILY.csv\n");
        return 2;
    }
    Chart chart(create, words[2]);

    Readiness readiness;
    QObject::connect(&readiness, &Readiness::ready, [&chart] { chart.createOverlay(); });
    QObject::connect(&readiness, &Readiness::timeIsUp, [&chart] {
        std::puts("no trading module yet");
        std::fflush(stdout);
        chart.createOverlay();
    });
    readiness.start(QCoreApplication::applicationDirPath(), 1s);
    return QCoreApplication::exec();
}
