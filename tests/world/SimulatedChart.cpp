#include "tests/world/SimulatedChart.h"

#include "tests/world/SimulatedTime.h"

#include "tradechartobject/ChartObjectFactory.h"
#include "tradechartobject/objects/CChartTradeObject.h"
#include "trading/TradingDate.h"

#include <algorithm>
#include <cmath>
#include <sstream>

namespace World {

namespace {

constexpr int daysShown = 10;
constexpr int minutesShown = 60; // of the morning

constexpr int shanghaiOfHost = 1;
constexpr int shenzhenOfHost = 0;

Korvane::tagCodeWithName recordOf(const Terminal::Security &security)
{
    const bool isShanghai = security.market == Trading::Market::Shanghai;
    return makeSecurity(isShanghai ? shanghaiOfHost : shenzhenOfHost, security.code.toLatin1().constData(),
                        security.code.toLongLong() + 1);
}

std::uint32_t numberOf(Trading::TradingDate date)
{
    return static_cast<std::uint32_t>(date.number());
}

std::vector<Korvane::AnalyData> dailyBars()
{
    std::vector<Korvane::AnalyData> bars;
    for (int day = daysShown - 1; day >= 0; --day) {
        bars.push_back(makeDayBar(numberOf(Trading::TradingDate::today().plusDays(-day))));
    }
    return bars;
}

std::vector<Korvane::AnalyData> minuteBars()
{
    std::vector<Korvane::AnalyData> bars;
    for (int minute = 1; minute <= minutesShown; ++minute) {
        const int time = 9 * 60 + 30 + minute;
        bars.push_back(makeMinuteBar(numberOf(Trading::TradingDate::today()),
                                     static_cast<std::uint32_t>(time / 60 * 100 + time % 60)));
    }
    return bars;
}

/// Each call of the host has a time of its own for which it may wait.
void asOneCall(const std::function<void()> &call)
{
    SimulatedTime *const time = SimulatedTime::instance();
    time->as(time->current(), call);
}

void write(const FakePainter::Call &call, std::ostream &out)
{
    out << call.kind << ' ' << call.text.constData() << ' ' << call.number;
    for (const int number : call.ints) {
        out << ' ' << number;
    }
    for (size_t i = 0; i < call.values.size(); ++i) {
        const double value = call.values[i];
        if (!std::isnan(value) && value != 0) {
            out << ' ' << i << ':' << value << '@' << (i < call.prices.size() ? call.prices[i] : 0);
        }
    }
    out << '\n';
}

} // namespace

SimulatedChart::SimulatedChart(const QByteArray &screen, bool withCombined, OnceJoined onceJoined)
    : m_onceJoined(std::move(onceJoined))
{
    m_axis.screen = screen;
    m_axis.notesPrices = false;
    const auto factory = [this](const char *config) {
        return [this, config] { return CreateChartObject(m_axis, config); };
    };
    const auto combined = [this](const char *config) {
        return [this, config] { return new CChartTradeObject(m_axis, config); };
    };
    add(factory(R"({"type":0})"), false, true); // as the terminal has them
    add(factory(R"({"type":1})"), true, true);
    add(factory(R"({"type":2})"), true, true);
    if (withCombined) {
        add(combined(R"({"type":0})"), true, false);
        add(combined(R"({"type":1})"), true, false);
    }
    awaitJoining();
}

SimulatedChart::~SimulatedChart()
{
    for (Overlay &overlay : m_overlays) {
        overlay.object->deleteObject();
    }
}

void SimulatedChart::add(const Make &make, bool isBoundToRange, bool asksAnew)
{
    m_overlays.push_back({make, isBoundToRange, asksAnew, std::unique_ptr<Korvane::IChartObject>(make())});
}

void SimulatedChart::renew()
{
    for (Overlay &overlay : m_overlays) {
        if (overlay.isBoundToRange) {
            overlay.object->deleteObject();
            overlay.object.reset(overlay.make());
            overlay.draws = false;
        }
    }
    awaitJoining();
}

/// What they asked before would be lost.
void SimulatedChart::awaitJoining()
{
    m_haveJoined = std::make_shared<bool>(false);
    m_onceJoined([haveJoined = m_haveJoined] { *haveJoined = true; });
}

void SimulatedChart::takeRange(const Range &range)
{
    if (m_range && !(*m_range == range)) {
        renew();
    }
    m_range = range;
}

void SimulatedChart::show(const Terminal::Security &security, Kind kind)
{
    takeRange({security.code, kind, Trading::TradingDate::today().number()});
    const Korvane::tagCodeWithName record = recordOf(security);
    m_axis.bars = kind == Kind::Daily ? dailyBars() : minuteBars();
    m_axis.mode = Korvane::TodayChart;
    m_axis.updated.clear();
    const auto period = kind == Kind::Daily ? Korvane::DayPeriod : Korvane::IntradayPeriod;
    for (Overlay &overlay : m_overlays) {
        overlay.draws = false;
        if (!*m_haveJoined) {
            continue; // at the next repaint
        }
        asOneCall([&] {
            overlay.draws = overlay.object->calcIt(record, m_axis.bars.data(),
                                                   static_cast<int>(m_axis.bars.size()), period, 0, 0);
        });
    }
    paint();
}

void SimulatedChart::paint()
{
    for (Overlay &overlay : m_overlays) {
        overlay.painter.barCount = m_axis.bars.size();
        overlay.painter.calls.clear();
        if (overlay.draws) {
            overlay.object->paintIt(overlay.painter);
        }
    }
}

std::string SimulatedChart::drawing() const
{
    std::ostringstream out;
    for (const Overlay &overlay : m_overlays) {
        if (overlay.asksAnew) {
            for (const FakePainter::Call &call : overlay.painter.calls) {
                write(call, out);
            }
        }
    }
    return out.str();
}

} // namespace World
