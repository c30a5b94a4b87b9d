#include "tradechartobject/objects/CChartTradeObject.h"

#include "tradechartobject/CombinedOverlay.h"
#include "tradechartobject/common/AnswerRows.h"
#include "tradechartobject/common/BarTime.h"
#include "tradechartobject/common/BusLink.h"
#include "tradechartobject/common/CostLine.h"
#include "tradechartobject/common/OverlayConfig.h"
#include "tradechartobject/common/OverlayQuestion.h"
#include "tradechartobject/common/PopupLines.h"
#include "tradechartobject/common/PriceScale.h"
#include "tradechartobject/common/Security.h"
#include "tradechartobject/common/TradeLine.h"
#include "tradechartobject/common/TradeMessage.h"
#include "tradechartobject/common/TradeVocabulary.h"
#include "tradechartobject/objects/CChartTradeObject_p.h"

#include <QPointer>

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

using namespace TradeChart;

namespace {

static_assert(sizeof(CChartTradeObject) <= Korvane::CombinedOverlay::memorySize,
              "terminals that load the file lay aside this much memory");
static_assert(sizeof(QObject) == Korvane::CombinedOverlay::interfaceOffset,
              "terminals that load the file find the interface after the QObject");

constexpr int costLineType = 0;
constexpr int tradeMarkersType = 1;

/// Trading modules have always got this overlay's questions indented.
QByteArray toText(const QJsonObject &request)
{
    return toJson(request, QJsonDocument::Indented);
}

/// The date of a row is not used: without a time every trade stands on the first bar and is listed at
/// 00:00:00, as this overlay has always shown them to its users.
const RowColumn<trade_cj> tradeColumns[] = {
    {TradeKeyFields::BUY, [](trade_cj &trade, const RowField &field) { trade.isBuy = field.isTrue(); }},
    {TradeKeyFields::PRICE,
     [](trade_cj &trade, const RowField &field) { trade.matchPrice = field.number(); }},
    {TradeKeyFields::VOL, [](trade_cj &trade, const RowField &field) { trade.matchQty = field.number(); }},
};

} // namespace

CChartTradeObject::CChartTradeObject(Korvane::IChartAxis &axis, const char *json)
    : m_axis(axis),
      m_code(noSecurity()),
      m_algorithmType(readAlgorithmType(parseConfig(json)))
{
    BusLink::join(m_endPoint);
    BusLink::listen(m_endPoint, this, &CChartTradeObject::handleTradeNotify);
    BusLink::subscribeGlobal(m_endPoint);
}

CChartTradeObject::~CChartTradeObject()
{
    BusLink::leave(m_endPoint, this);
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
        decodeBarTimes(data, count, period,
                       m_barTimes); // a click while the question goes out meets these bars
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
        Korvane::MarkerStyle style;
        const std::vector<double> &flags;
        const std::vector<double> &prices;
        Korvane::MarkerVariant variant;
    } allSeries[] = {
        {Korvane::BuyAbove, m_buyAbove, m_highs, Korvane::AboveTheBar},
        {Korvane::SellAbove, m_sellAbove, m_highs, Korvane::AboveTheBar},
        {Korvane::BothAbove, m_bothAbove, m_highs, Korvane::AboveTheBar},
        {Korvane::BuyBelow, m_buyBelow, m_lows, Korvane::BelowTheBar},
        {Korvane::SellBelow, m_sellBelow, m_lows, Korvane::BelowTheBar},
        {Korvane::BothBelow, m_bothBelow, m_lows, Korvane::BelowTheBar},
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
        const double price = m_holderPrice;
        const int hit = hitTestCostLine(m_axis, price, y);
        return std::isnan(price) ? -1 : hit; // a host may answer with a pixel even then
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
std::optional<TradeMessage> CChartTradeObject::ask(const char *command)
{
    const QPointer<QObject> self(this);
    const Korvane::tagCodeWithName asked = m_code;
    const QByteArray reply = m_endPoint.request(Topic::TRADEQUERY, toText(securityRequest(command, asked)));
    return self && isSameSecurity(asked, m_code) ? TradeMessage::parseReply(reply) : std::nullopt;
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
    m_holderPrice = answer->text(TradeKeyFields::COSTPRICE).toDouble();
    return true;
}

bool CChartTradeObject::requestHistoryTradeInfo(long long start, long long end)
{
    QJsonObject request = securityRequest(CmdType::HISTORYTRADE, m_code);
    request.insert(QLatin1String(TradeKeyFields::START), QString::number(start));
    request.insert(QLatin1String(TradeKeyFields::END), QString::number(end));
    const QPointer<QObject> self(this);
    const bool isSent = BusLink::publish(m_endPoint, toText(request));
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
    addTrades(answer->rows(), true);
    return true;
}

// Answers

/// Asks for no repaint: terminals with this overlay redraw by themselves, with a calcIt() before.
void CChartTradeObject::handleTradeNotify(QByteArray topic, QByteArray payload)
{
    if (m_algorithmType != costLineType && m_algorithmType != tradeMarkersType) {
        return;
    }
    if (topic == Topic::TRADEQUERY && !TradeMessage::mayBeCommand(payload, {CmdType::HISTORYTRADE})) {
        return;
    }
    const auto message = TradeMessage::parse(payload);
    if (!message || !message->isAbout(m_code)) {
        return;
    }
    if (topic == Topic::TRADENOTIFY) {
        requestTodayTradeInfo();
    } else if (topic == Topic::TRADEQUERY && message->isCommand(CmdType::HISTORYTRADE)) {
        // Whoever sent it: another overlay's question of this name counts as an answer without trades.
        dropPast(m_trades, currentDate());
        addTrades(message->rows(), false);
    }
}

bool CChartTradeObject::parseTradeInfo(QJsonArray array, bool isToday)
{
    addTrades(AnswerRows(std::move(array)), isToday);
    return true;
}

void CChartTradeObject::addTrades(const AnswerRows &rows, bool isToday)
{
    std::vector<trade_cj> trades;
    trades.reserve(static_cast<std::size_t>(rows.size()));
    rows.read(tradeColumns, [&trades](const trade_cj &trade, const auto &) { trades.push_back(trade); });
    m_trades.insert(isToday ? m_trades.end() : m_trades.begin(), trades.begin(), trades.end());
}
