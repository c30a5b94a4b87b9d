#include "tradechartobject/objects/CChartTradeObject.h"

#include "tradechartobject/CombinedOverlay.h"
#include "tradechartobject/common/BarTime.h"
#include "tradechartobject/common/CostLine.h"
#include "tradechartobject/common/OverlayConfig.h"
#include "tradechartobject/common/PopupLines.h"
#include "tradechartobject/common/PriceScale.h"
#include "tradechartobject/common/Security.h"
#include "tradechartobject/common/TradeChannel.h"
#include "tradechartobject/common/TradeLine.h"
#include "tradechartobject/common/TradeVocabulary.h"
#include "tradechartobject/objects/CChartTradeObject_p.h"

#include <QPointer>

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

using namespace TradeChart;

namespace TradeChart {

namespace {

std::size_t firstBarNotBefore(std::int64_t time, const TimedBars &bars, std::size_t from)
{
    const std::int64_t *const end = bars.times + bars.count;
    const std::int64_t *const found = std::find_if(bars.times + std::min(from, bars.count), end,
                                                   [time](std::int64_t bar) { return bar >= time; });
    return static_cast<std::size_t>(found - bars.times);
}

bool isOnSide(const trade_cj &trade, TradeMarker kind)
{
    switch (kind) {
    case TradeMarker::Both:
        return true;
    case TradeMarker::Buys:
        return trade.isBuy;
    case TradeMarker::Sells:
        return !trade.isBuy;
    case TradeMarker::None:
        break;
    }
    return false;
}

template <class Condition>
void removeIf(std::vector<trade_cj> &trades, Condition condition)
{
    trades.erase(std::remove_if(trades.begin(), trades.end(), condition), trades.end());
}

} // namespace

void markTrades(const std::vector<trade_cj> &trades, const TimedBars &bars, const TradeMarks &above,
                const TradeMarks &below)
{
    std::size_t bar = trades.empty() ? bars.count : firstBarNotBefore(trades.front().matchTime, bars, 0);
    for (const trade_cj &trade : trades) {
        if (bar < bars.count && trade.matchTime > bars.times[bar]) {
            mergeSides(above, bar);
            mergeSides(below, bar);
            bar = firstBarNotBefore(trade.matchTime, bars, bar + 1);
        }
        if (bar >= bars.count) {
            return;
        }
        const TradeMarks &marks = bars.records[bar].close > trade.matchPrice ? below : above;
        (trade.isBuy ? marks.buys : marks.sells)[bar] = marked;
    }
}

void dropTodays(std::vector<trade_cj> &trades, std::int64_t today)
{
    removeIf(trades,
             [start = dateTime(today, 0)](const trade_cj &trade) { return trade.matchTime >= start; });
}

void dropPast(std::vector<trade_cj> &trades, std::int64_t today)
{
    removeIf(trades, [start = dateTime(today, 0)](const trade_cj &trade) { return trade.matchTime < start; });
}

bool isListed(const trade_cj &trade, const ClickedMarker &marker)
{
    const bool isOnPart = marker.isAbove ? trade.matchPrice >= marker.close : trade.matchPrice < marker.close;
    return isOnPart && isOnSide(trade, marker.kind) && marker.from <= trade.matchTime &&
           trade.matchTime <= marker.to;
}

} // namespace TradeChart

namespace {

static_assert(sizeof(CChartTradeObject) <= Korvane::CombinedOverlay::memorySize,
              "terminals that load the file lay aside this much memory");
static_assert(sizeof(QObject) == Korvane::CombinedOverlay::interfaceOffset,
              "terminals that load the file find the interface behind the QObject");

constexpr int costLineType = 0;
constexpr int tradeMarkersType = 1;

constexpr std::int64_t noDate = -1;

/// Trading modules have always got this overlay's questions indented.
QByteArray toText(const QJsonObject &request)
{
    return TradeChannel::toJson(request, QJsonDocument::Indented);
}

/// The date of a row is not used: without a time every trade stands on the first bar and is listed at
/// 00:00:00, as this overlay has always shown them to its users.
trade_cj readTrade(const QJsonObject &row)
{
    return {row.value(QLatin1String(TradeKeyFields::BUY)).toBool(), 0,
            row.value(QLatin1String(TradeKeyFields::PRICE)).toDouble(),
            row.value(QLatin1String(TradeKeyFields::VOL)).toDouble()};
}

} // namespace

CChartTradeObject::CChartTradeObject(Korvane::IChartAxis &axis, const char *json)
    : m_axis(axis),
      m_endPoint(nullptr),
      m_code(noSecurity()),
      m_period(Korvane::NoPeriod),
      m_calcArg(0),
      m_maxPrice(neutralMaximum),
      m_minPrice(neutralMinimum),
      m_algorithmType(readAlgorithmType(parseConfig(json))),
      m_holderPrice(unknownCost),
      m_startDate(noDate),
      m_endDate(noDate)
{
    TradeChannel::joinTerminalBus(m_endPoint);
    TradeChannel::listen(m_endPoint, this, &CChartTradeObject::handleTradeNotify);
    TradeChannel::subscribeGlobal(m_endPoint);
}

CChartTradeObject::~CChartTradeObject()
{
    TradeChannel::leave(m_endPoint, this);
}

int CChartTradeObject::type() const
{
    return Korvane::pluginObjectType;
}

bool CChartTradeObject::deleteObject()
{
    return true; // there is no timer to stop
}

// The bars

bool CChartTradeObject::calcIt(const Korvane::tagCodeWithName &code, const Korvane::AnalyData *data,
                               int count, Korvane::Period period, int a, int)
{
    m_code = code;
    m_period = period;
    m_calcArg = a;
    if (m_algorithmType == tradeMarkersType && usableBarCount(data, count) > 0) {
        showTrades(data, count, period);
        return true; // this object may be gone by now
    }
    decodeBarTimes(data, count, period, m_barTimes);
    if (m_algorithmType == costLineType && !m_barTimes.empty()) {
        m_holderPrice = unknownCost;
        requestHolderPrice(); // the wait may end this object
    }
    return true;
}

void CChartTradeObject::showTrades(const Korvane::AnalyData *data, int count, Korvane::Period period)
{
    const std::int64_t first = tradingDay(barTime(data[0], period));
    const std::int64_t last = tradingDay(barTime(data[count - 1], period));
    const QPointer<QObject> self(this);
    if (first != m_startDate || last != m_endDate) {
        requestHistoryTradeInfo(first, last);
    }
    if (!self) { // the host may have ended this object while the question went out
        return;
    }
    decodeBars(data, count, period, m_barTimes, m_highs, m_lows);
    for (auto *marks : {&m_buyAbove, &m_buyBelow, &m_sellAbove, &m_sellBelow, &m_bothAbove, &m_bothBelow}) {
        marks->assign(m_barTimes.size(), unmarked);
    }
    calcTradeData(data, count);
}

void CChartTradeObject::calcTradeData(const Korvane::AnalyData *data, int count)
{
    // A terminal may hand over other bars than it did to calcIt().
    const std::size_t barCount = std::min({usableBarCount(data, count), m_barTimes.size(), m_highs.size()});
    markTrades(m_trades, {data, m_barTimes.data(), barCount}, marksAbove(), marksBelow());
}

TradeMarks CChartTradeObject::marksAbove()
{
    return {m_buyAbove, m_sellAbove, m_bothAbove};
}

TradeMarks CChartTradeObject::marksBelow()
{
    return {m_buyBelow, m_sellBelow, m_bothBelow};
}

// Scale and painting

bool CChartTradeObject::calcRatio(int, int)
{
    m_maxPrice = neutralMaximum;
    m_minPrice = neutralMinimum;
    if (m_algorithmType == tradeMarkersType) {
        for (const auto *prices : {&m_highs, &m_lows}) {
            for (const double price : *prices) {
                if (std::isfinite(price)) {
                    m_minPrice = std::min(m_minPrice, price);
                    m_maxPrice = std::max(m_maxPrice, price);
                }
            }
        }
    } else if (m_algorithmType == costLineType && std::isfinite(m_holderPrice)) {
        m_minPrice = m_maxPrice = m_holderPrice;
    }
    return true;
}

double CChartTradeObject::maximizeValue(int &)
{
    return m_maxPrice;
}

double CChartTradeObject::minimizeValue(int &)
{
    return m_minPrice;
}

bool CChartTradeObject::paintIt(Korvane::IChartPainter &painter)
{
    if (m_algorithmType == tradeMarkersType) {
        drawMarkers(painter);
    } else if (m_algorithmType == costLineType && std::isfinite(m_holderPrice) && !m_barTimes.empty()) {
        drawCostLine(painter, m_barTimes.size(), m_holderPrice, 2);
    }
    painter.endPaint();
    return true;
}

void CChartTradeObject::drawMarkers(Korvane::IChartPainter &painter) const
{
    const struct
    {
        MarkerStyle style;
        const std::vector<double> &flags;
        const std::vector<double> &prices;
        MarkerVariant variant;
    } allSeries[] = {
        {BuyAbove, m_buyAbove, m_highs, AboveTheBar},   {SellAbove, m_sellAbove, m_highs, AboveTheBar},
        {BothAbove, m_bothAbove, m_highs, AboveTheBar}, {BuyBelow, m_buyBelow, m_lows, BelowTheBar},
        {SellBelow, m_sellBelow, m_lows, BelowTheBar},  {BothBelow, m_bothBelow, m_lows, BelowTheBar},
    };
    for (const auto &series : allSeries) {
        painter.drawMarkerSeries(0, series.flags.data(), series.prices.data(), series.style, series.variant);
    }
}

// Mouse

int CChartTradeObject::hitTest(double x, double y)
{
    const int bar = m_axis.xToBar(x);
    if (m_algorithmType == costLineType) {
        const int hit = hitTestCostLine(m_axis, m_holderPrice, y);
        return std::isnan(m_holderPrice) ? -1 : hit; // a host may answer with a pixel even then
    }
    return m_algorithmType == tradeMarkersType && hasBar(m_highs, bar) ? hitTestBar(bar, y) : -1;
}

/// The whole bar is caught, not its markers: they are hard to meet on a crowded chart.
int CChartTradeObject::hitTestBar(int bar, double y)
{
    const auto index = static_cast<std::size_t>(bar);
    const double high = m_highs[index];
    const double low = m_lows[index];
    const double highY = m_axis.priceToY(high, -1, -1);
    const double lowY = m_axis.priceToY(low, -1, -1);
    const bool hasMarker =
        markerOn(marksAbove(), bar) != TradeMarker::None || markerOn(marksBelow(), bar) != TradeMarker::None;
    return highY < y && y < lowY && hasMarker ? 0 : -1;
}

void CChartTradeObject::handleMousePress(double x, double y)
{
    const int bar = m_axis.xToBar(x);
    if (!hasBar(m_barTimes, bar)) {
        return;
    }
    Korvane::AnalyData record{};
    record.close = std::numeric_limits<double>::quiet_NaN(); // lists nothing, should the host not fill it
    m_axis.barAt(bar, record);
    const bool isAbove = m_axis.priceToY(record.close, -1, -1) > y; // y grows downwards
    if (!hasBar(m_barTimes, bar)) {
        return; // the host has changed the bars meanwhile
    }
    const auto index = static_cast<std::size_t>(bar);
    const ClickedMarker marker{markerOn(isAbove ? marksAbove() : marksBelow(), bar), isAbove, record.close,
                               bar > 0 ? m_barTimes[index - 1] : 0, m_barTimes[index]};
    PopupLines lines(expectedTradeLines);
    for (const trade_cj &trade : m_trades) {
        if (isListed(trade, marker)) {
            lines.append(tradeLine(sideText(trade.isBuy), trade));
        }
    }
    if (!lines.isEmpty()) {
        // The terminals that construct this overlay were built for a list without an end mark; others
        // read its length from the property at once. It is a list to read: the choice does not matter.
        setProperty(Korvane::CombinedOverlay::listLength, static_cast<int>(lines.size()));
        lines.showUnterminated(m_axis);
    }
}

void CChartTradeObject::handleMousePressR(double, double) {}

void CChartTradeObject::handleMouseRelease(double, double) {}

void CChartTradeObject::handleMouseReleaseR(double, double) {}

void CChartTradeObject::handleMouseMove(double, double) {}

// Questions

/// Asks about the shown security and blocks for the answer. None also when this object has ended or shows
/// another security by then: a bus client may let the host in while it waits.
std::optional<QJsonObject> CChartTradeObject::ask(const char *command)
{
    const QPointer<QObject> self(this);
    const Korvane::tagCodeWithName asked = m_code;
    auto answer = TradeChannel::ask(m_endPoint, toText(TradeChannel::securityRequest(command, asked)));
    return self && isSameSecurity(asked, m_code) ? std::move(answer) : std::nullopt;
}

bool CChartTradeObject::requestHolderPrice()
{
    if (!isSet(m_code)) {
        return false;
    }
    const auto answer = ask(CmdType::HOLDERCOSTPRICE);
    if (!answer) {
        return false;
    }
    m_holderPrice = TradeChannel::text(*answer, TradeKeyFields::COSTPRICE).toDouble();
    return true;
}

bool CChartTradeObject::requestHistoryTradeInfo(long long start, long long end)
{
    QJsonObject request = TradeChannel::securityRequest(CmdType::HISTORYTRADE, m_code);
    request.insert(QLatin1String(TradeKeyFields::START), QString::number(start));
    request.insert(QLatin1String(TradeKeyFields::END), QString::number(end));
    const QPointer<QObject> self(this);
    const bool isSent = TradeChannel::publish(m_endPoint, toText(request));
    if (self && isSent) { // else the next calcIt() asks again
        m_startDate = start;
        m_endDate = end;
    }
    return isSent;
}

bool CChartTradeObject::requestTodayTradeInfo()
{
    const auto answer = ask(CmdType::TODAYTRADE);
    if (!answer) {
        return false;
    }
    dropTodays(m_trades, currentDate());
    parseTradeInfo(TradeChannel::rows(*answer), true);
    return true;
}

// Answers

/// Asks for no repaint: terminals with this overlay redraw by themselves, with a calcIt() before.
void CChartTradeObject::handleTradeNotify(QByteArray topic, QByteArray payload)
{
    if (m_algorithmType != costLineType && m_algorithmType != tradeMarkersType) {
        return;
    }
    const auto message = TradeChannel::parseMessage(payload);
    if (!message || !TradeChannel::isAbout(*message, m_code)) {
        return;
    }
    if (topic == Topic::TRADENOTIFY) {
        requestTodayTradeInfo();
    } else if (topic == Topic::TRADEQUERY && TradeChannel::isCommand(*message, CmdType::HISTORYTRADE)) {
        // Whoever sent it: another overlay's question of this name counts as an answer without trades.
        dropPast(m_trades, currentDate());
        parseTradeInfo(TradeChannel::rows(*message), false);
    }
}

bool CChartTradeObject::parseTradeInfo(QJsonArray array, bool isToday)
{
    std::vector<trade_cj> trades;
    trades.reserve(static_cast<std::size_t>(array.size()));
    for (const QJsonValue &row : qAsConst(array)) {
        trades.push_back(readTrade(row.toObject()));
    }
    m_trades.insert(isToday ? m_trades.end() : m_trades.begin(), trades.begin(), trades.end());
    return true;
}
