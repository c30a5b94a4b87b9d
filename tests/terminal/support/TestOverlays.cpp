// An overlay library of the terminal's own tests. It uses every service of the host the way overlays
// do, needs no bus, and keeps a log of what happened to it.
#include "tradechartobject/ChartInterface.h"
#include "tradechartobject/CombinedOverlay.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QObject>
#include <QtGlobal>

#include <cmath>
#include <limits>
#include <string>
#include <vector>

namespace {

constexpr double nan = std::numeric_limits<double>::quiet_NaN();

std::string &eventLog()
{
    static std::string log;
    return log;
}

/// While false, the factory knows no configuration.
bool &makesOverlays()
{
    static bool makes = true;
    return makes;
}

/// How far below the close of its bar the cost line lies.
double &costOffset()
{
    static double offset = 0;
    return offset;
}

void note(const std::string &event)
{
    eventLog() += event + "\n";
}

} // namespace

/// What the overlays have in common: they remember the bars and take no part in the scale.
class TestOverlay : public Korvane::IChartObject
{
public:
    explicit TestOverlay(Korvane::IChartAxis &axis) : m_axis(axis) { note("made"); }
    ~TestOverlay() override { note("destroyed"); }

    int type() const override { return 3; }
    bool deleteObject() override
    {
        note("ended");
        return true;
    }
    bool calcIt(const Korvane::tagCodeWithName &code, const Korvane::AnalyData *bars, int count,
                Korvane::Period period, int, int) override
    {
        note("calc " + std::string(code.code) + " " + std::to_string(count) + " " + std::to_string(period));
        m_bars.assign(bars, bars + count);
        prepare();
        return true;
    }
    bool calcRatio(int, int) override { return true; }
    double maximizeValue(int &) override { return std::numeric_limits<double>::min(); }
    double minimizeValue(int &) override { return std::numeric_limits<double>::max(); }
    int hitTest(double, double) override { return -1; }
    void handleMousePress(double, double) override {}
    void handleMousePressR(double, double) override { note("right press"); }
    void handleMouseRelease(double, double) override { note("release"); }
    void handleMouseReleaseR(double, double) override {}
    void handleMouseMove(double, double) override {}

protected:
    virtual void prepare() = 0;

    Korvane::IChartAxis &m_axis;
    std::vector<Korvane::AnalyData> m_bars;
};

namespace {

/// A line at the close of the last bar but nine, with a label.
class LineOverlay : public TestOverlay
{
public:
    using TestOverlay::TestOverlay;

    bool paintIt(Korvane::IChartPainter &painter) override
    {
        const std::vector<double> values(m_bars.size(), m_price);
        char label[64];
        std::snprintf(label, sizeof label, "持仓成本:%.3f", m_price);
        painter.drawLineSeries(0, values.data(), 1.0);
        painter.drawSeriesLabel(values.data(), label, -1);
        painter.endPaint();
        return true;
    }
    int hitTest(double, double y) override
    {
        return std::abs(m_axis.priceToY(m_price, -1, -1) - y) <= 5.0 ? 0 : -1;
    }

protected:
    void prepare() override
    {
        const bool isNew = std::isnan(m_price);
        m_price = m_bars.size() > 10 ? m_bars[m_bars.size() - 10].close - costOffset() : nan;
        if (isNew) {
            m_axis.updateObject(this);
        }
    }

private:
    double m_price = nan;
};

/// Buys, sells and both on every third bar in turn; a click lists three trades in columns.
class MarkOverlay : public TestOverlay
{
public:
    using TestOverlay::TestOverlay;

    bool paintIt(Korvane::IChartPainter &painter) override
    {
        for (const int kind : {0, 1, 2}) {
            painter.drawMarkerSeries(0, m_flags[kind].data(), m_highs.data(), kind * 2, 1);
        }
        return true;
    }
    int hitTest(double x, double y) override
    {
        const auto bar = static_cast<size_t>(m_axis.xToBar(x));
        const double top = m_axis.priceToY(m_highs[bar], -1, -1);
        return bar % 3 == 0 && y <= top && y >= top - m_axis.markerSize() + 2 ? 0 : -1;
    }
    void handleMousePress(double x, double) override
    {
        note("press on bar " + std::to_string(m_axis.xToBar(x)));
        const char *lines[] = {"买入\t09:30:15\t成交价:10.50\t成交量:300",
                               "卖出\t14:55:01\t成交价:1810.50\t成交量:1200",
                               "卖出\t14:56:00\t成交价:9.10\t成交量:100", nullptr};
        note("chose " + std::to_string(m_axis.popupMenu(lines, nullptr)));
    }

protected:
    void prepare() override
    {
        m_highs.resize(m_bars.size());
        for (auto &flags : m_flags) {
            flags.assign(m_bars.size(), nan);
        }
        for (size_t i = 0; i < m_bars.size(); ++i) {
            m_highs[i] = m_bars[i].high;
            if (i % 3 == 0) {
                m_flags[i / 3 % 3][i] = 1.0;
            }
        }
    }

private:
    std::vector<double> m_highs;
    std::vector<double> m_flags[3];
};

/// One order of each kind in the middle of the chart, and one beyond each edge; a click lists two
/// orders, asks before it cancels one, and tells the outcome.
class OrderOverlay : public TestOverlay
{
public:
    using TestOverlay::TestOverlay;

    bool paintIt(Korvane::IChartPainter &painter) override
    {
        double low = 0;
        double high = 0;
        if (!m_axis.visiblePriceRange(low, high)) {
            return false;
        }
        for (int kind = Korvane::BuyWaiting; kind <= Korvane::SellDealed; ++kind) {
            painter.drawMarker(0, barOf(kind), kind, 0, (low + high) / 2);
        }
        painter.drawMarker(0, barOf(26), 20, 1, low);
        painter.drawMarker(0, barOf(27), 23, 0, high);
        return true;
    }
    int hitTest(double x, double y) override
    {
        double low = 0;
        double high = 0;
        m_axis.visiblePriceRange(low, high);
        const double top = m_axis.priceToY((low + high) / 2, -1, -1);
        return y >= top && y <= top + 16 && std::abs(x - m_axis.barToX(barOf(20))) < 8 ? 0 : -1;
    }
    void handleMousePress(double, double) override
    {
        const char *lines[] = {"买入[测试]\n状态:未成交\n编号:1\n委托价格:10.000\n委托数量:300",
                               "卖出[测试]\n状态:已成交\n编号:2\n委托价格:11.000", nullptr};
        const int chosen = m_axis.popupMenu(lines, nullptr);
        note("chose " + std::to_string(chosen));
        if (chosen == 0) {
            const bool confirmed = m_axis.confirmBox((std::string("撤单?\n") + lines[0]).c_str());
            note(confirmed ? "confirmed" : "kept");
            m_axis.showMessage(confirmed ? "撤单成功" : "未撤单");
        }
    }

protected:
    void prepare() override {}

private:
    int barOf(int kind) const { return static_cast<int>(m_bars.size()) / 2 + (kind - 23) * 15; }
};

} // namespace

/// The combined overlay: a click anywhere lists two trades in an array without an end mark.
class Q_DECL_EXPORT CChartTradeObject : public QObject, public TestOverlay
{
public:
    CChartTradeObject(Korvane::IChartAxis &axis, const char *json);

    bool paintIt(Korvane::IChartPainter &) override { return true; }
    int hitTest(double, double) override { return 0; }
    void handleMousePress(double, double) override
    {
        std::vector<const char *> lines = {"买入\t00:00:00\t成交价:10.50\t成交量:300",
                                           "卖出\t00:00:00\t成交价:11.50\t成交量:100"};
        setProperty(Korvane::CombinedOverlay::listLength, static_cast<int>(lines.size()));
        note("chose " + std::to_string(m_axis.popupMenu(lines.data(), nullptr)));
    }

protected:
    void prepare() override {}
};

CChartTradeObject::CChartTradeObject(Korvane::IChartAxis &axis, const char *json) : TestOverlay(axis)
{
    note(std::string("combined ") + json);
}

extern "C" {

Q_DECL_EXPORT Korvane::IChartObject *CreateChartObject(Korvane::IChartAxis &axis, const char *json)
{
    if (!makesOverlays()) {
        return nullptr;
    }
    const int type = QJsonDocument::fromJson(json).object().value(QLatin1String("type")).toInt(-1);
    switch (type) {
    case 0:
        return new LineOverlay(axis);
    case 1:
        return new MarkOverlay(axis);
    case 2:
        return new OrderOverlay(axis);
    default:
        return nullptr;
    }
}

Q_DECL_EXPORT void setMakesOverlays(bool makes)
{
    makesOverlays() = makes;
}

Q_DECL_EXPORT void setCostOffset(double offset)
{
    costOffset() = offset;
}

/// The log so far; it is emptied.
Q_DECL_EXPORT const char *takeOverlayLog()
{
    static std::string taken;
    taken.swap(eventLog());
    eventLog().clear();
    return taken.c_str();
}
}
