#include "tradechartobject/objects/BSPoint.h"

#include "tradechartobject/common/BarTime.h"
#include "tradechartobject/common/NumberText.h"
#include "tradechartobject/common/PopupLines.h"
#include "tradechartobject/common/PriceScale.h"
#include "tradechartobject/common/RowReader.h"
#include "tradechartobject/common/Security.h"
#include "tradechartobject/common/TradeChannel.h"
#include "tradechartobject/common/TradeLine.h"
#include "tradechartobject/common/TradeMarks.h"
#include "tradechartobject/common/TradeVocabulary.h"

#include <QDebug>
#include <QJsonDocument>
#include <QPointer>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>

using namespace TradeChart;

namespace {

constexpr std::int64_t noDate = -1;
constexpr std::int64_t afterAllDays = std::numeric_limits<std::int64_t>::max();

/// A marker reaches up from its anchor; this much of its far end is not caught.
constexpr double looseEnd = 2.0; // pixels

/// What a row says. What is missing or no text reads as zero, and as a sell: executions carry single
/// letters, not the direction codes of orders.
struct DatedTrade
{
    std::int64_t date; ///< yyyymmdd
    int time;          ///< hhmmss
    trade_cj trade;
};

void takeDate(DatedTrade &read, const QString &text)
{
    read.date = toInt(text);
    read.trade.matchTime = dateTime(read.date, read.time);
}

void takeTime(DatedTrade &read, const QString &text)
{
    read.time = toInt(text) / 100;
    read.trade.matchTime = dateTime(read.date, read.time);
}

void takeSide(DatedTrade &read, const QString &text)
{
    read.trade.isBuy = text == QLatin1String(BSFlag::BUY);
}

void takePrice(DatedTrade &read, const QString &text)
{
    read.trade.matchPrice = toDouble(text);
}

void takeQty(DatedTrade &read, const QString &text)
{
    read.trade.matchQty = toDouble(text);
}

const RowColumn<DatedTrade> todayColumns[] = {
    {TradeKeyFields::RTSORDERDATE, takeDate},   // yyyymmdd, of the order
    {TradeKeyFields::RTSENTRUSTTIME, takeTime}, // hhmmsscc, of the order
    {TradeKeyFields::RTSBSFLAG, takeSide},      // "B" or "S"
    {TradeKeyFields::RTSMATCHPRICE, takePrice}, // yuan
    {TradeKeyFields::RTSMATCHQTY, takeQty},     // shares
};

const RowColumn<DatedTrade> historyColumns[] = {
    {TradeKeyFields::RTSDATE, takeDate},        // yyyymmdd, of the execution
    {TradeKeyFields::RTSMATCHTIME, takeTime},   // hhmmsscc, of the execution
    {TradeKeyFields::RTSBSFLAG, takeSide},      // "B" or "S"
    {TradeKeyFields::RTSMATCHPRICE, takePrice}, // yuan
    {TradeKeyFields::RTSMATCHQTY, takeQty},     // shares
};

void logRow(const char *prefix, const QJsonObject &row, QJsonDocument::JsonFormat format)
{
    qDebug() << prefix << QString::fromUtf8(QJsonDocument(row).toJson(format));
}

/// The side under which a trade is listed: the marker's, or the trade's own under a marker of both
/// sides; null without a marker.
const char *lineSide(TradeMarker marker, const trade_cj &trade)
{
    switch (marker) {
    case TradeMarker::Both:
        return sideText(trade.isBuy);
    case TradeMarker::Buys:
        return sideText(true);
    case TradeMarker::Sells:
        return sideText(false);
    case TradeMarker::None:
        break;
    }
    return nullptr;
}

void growTo(std::size_t count, std::vector<double> &marks)
{
    marks.resize(std::max(count, marks.size()), unmarked);
}

} // namespace

BSPoint::BSPoint(Korvane::IChartAxis &axis, QJsonObject config, QObject *parent)
    : QObject(parent),
      m_axis(axis),
      m_endPoint(nullptr),
      m_code(noSecurity()),
      m_period(Korvane::NoPeriod),
      m_startDate(noDate),
      m_endDate(noDate),
      m_calcArg(0),
      m_refreshTimer(nullptr),
      m_refreshSeconds(TradeChannel::refreshSeconds(config))
{
    m_refreshTimer = TradeChannel::createRefreshTimer(this, &BSPoint::sendQueryTodayTradeInfoReq);
    TradeChannel::restart(m_refreshTimer, m_refreshSeconds);
    TradeChannel::joinTerminalBus(m_endPoint);
    TradeChannel::listen(m_endPoint, this, &BSPoint::handleTradeNotify);
    TradeChannel::subscribeScreen(m_endPoint, m_axis);
}

BSPoint::~BSPoint()
{
    TradeChannel::leave(m_endPoint, this);
}

int BSPoint::type() const
{
    return Korvane::pluginObjectType;
}

bool BSPoint::deleteObject()
{
    TradeChannel::remove(m_refreshTimer);
    return true;
}

// The bars

bool BSPoint::isPaintItPeriod(Korvane::Period period)
{
    return period == Korvane::DayPeriod;
}

bool BSPoint::calcIt(const Korvane::tagCodeWithName &code, const Korvane::AnalyData *bars, int count,
                     Korvane::Period period, int a, int)
{
    if (period != Korvane::DayPeriod) {
        return false;
    }
    if (!isSameSecurity(code, m_code)) {
        changeSecurity(code);
    }
    m_period = Korvane::DayPeriod;
    m_calcArg = a;
    readBars(bars, count);
    if (m_barTimes.empty()) {
        return true;
    }
    TradeChannel::startIfIdle(m_refreshTimer, m_refreshSeconds);
    const QPointer<QObject> self(this);
    const bool isAsked = askForShownDays();
    if (!self) { // the host may have ended this object while the question went out
        return true;
    }
    if (!isAsked) {
        return false; // the marks stay until the next calcIt()
    }
    for (auto *marks : {&m_buyMarks, &m_sellMarks, &m_bothMarks}) {
        marks->assign(m_barTimes.size(), unmarked);
    }
    return calcBSPointPriceInfo();
}

void BSPoint::changeSecurity(const Korvane::tagCodeWithName &code)
{
    TradeChannel::stop(m_refreshTimer);
    m_trades.clear();
    m_daySides.clear();
    m_code = code;
    m_startDate = noDate;
    m_endDate = noDate;
}

void BSPoint::readBars(const Korvane::AnalyData *bars, int count)
{
    const std::size_t barCount = usableBarCount(bars, count);
    m_barTimes.resize(barCount);
    m_barAnchors.resize(barCount);
    for (std::size_t bar = 0; bar < barCount; ++bar) { // one walk: the host's bars may be many
        m_barTimes[bar] = dayBarTime(bars[bar].time);
        m_barAnchors[bar] = bars[bar].high;
    }
    // A mark for every bar, also when the marks are not computed anew: the painter reads one for each,
    // and an answer that comes before the next calcIt() marks any of them.
    for (auto *marks : {&m_buyMarks, &m_sellMarks, &m_bothMarks}) {
        growTo(barCount, *marks);
    }
}

/// Asks for past trades when the first or last day shown has changed. The range counts as asked for
/// even when the bus refuses the question: a chart that is redrawn often must not ask at every redraw.
bool BSPoint::askForShownDays()
{
    const std::int64_t first = tradingDay(m_barTimes.front());
    const std::int64_t last = tradingDay(m_barTimes.back());
    if (first == m_startDate && last == m_endDate) {
        return true;
    }
    m_startDate = first;
    m_endDate = last;
    return sendQueryHistoryTradeInfoReq();
}

/// Sums the trades up by day, in the order of the days: marking walks this short list beside the bars.
void BSPoint::sumUpDays()
{
    m_daySides.clear();
    m_daySides.reserve(m_trades.size());
    for (const auto &[day, trades] : m_trades) {
        const auto isBuy = [](const trade_cj &trade) { return trade.isBuy; };
        m_daySides.push_back({static_cast<std::int32_t>(day),
                              std::any_of(trades.begin(), trades.end(), isBuy),
                              !std::all_of(trades.begin(), trades.end(), isBuy)});
    }
}

bool BSPoint::calcBSPointPriceInfo()
{
    if (m_daySides.empty()) {
        return true;
    }
    // Bars come in the order of their days, as the trades do: the search goes on where it ended. Should a
    // host's bars step back, it starts anew.
    auto sides = m_daySides.cbegin();
    std::int64_t tradesDay = sides->day;
    std::int64_t previousDay = std::numeric_limits<std::int64_t>::min();
    std::size_t bar = 0;
    for (const std::int64_t time : m_barTimes) {
        const std::int64_t day = tradingDay(time);
        if (day < previousDay || day > tradesDay) {
            sides = firstNotBefore(day, day < previousDay ? m_daySides.cbegin() : sides);
            tradesDay = sides == m_daySides.cend() ? afterAllDays : sides->day;
        }
        if (day == tradesDay) {
            markBar(bar, *sides);
        }
        previousDay = day;
        ++bar;
    }
    return true;
}

/// The first day, from `sides` on, that is not before a bar's. Mostly it is the same or the next one.
BSPoint::DaysSides::const_iterator BSPoint::firstNotBefore(std::int64_t day,
                                                           DaysSides::const_iterator sides) const
{
    const auto isBefore = [](const DaySides &trades, std::int64_t wanted) { return trades.day < wanted; };
    const auto end = m_daySides.cend();
    for (int step = 0; step < 2; ++step, ++sides) {
        if (sides == end || !isBefore(*sides, day)) {
            return sides;
        }
    }
    return std::lower_bound(sides, end, day, isBefore);
}

TradeMarks BSPoint::marks()
{
    return {m_buyMarks, m_sellMarks, m_bothMarks};
}

void BSPoint::markBar(std::size_t bar, const DaySides &sides)
{
    if (sides.hasBuys) {
        m_buyMarks[bar] = marked;
    }
    if (sides.hasSells) {
        m_sellMarks[bar] = marked;
    }
    mergeSides(marks(), bar);
}

// Scale and painting

bool BSPoint::calcRatio(int, int)
{
    return true;
}

double BSPoint::maximizeValue(int &)
{
    return neutralMaximum;
}

double BSPoint::minimizeValue(int &)
{
    return neutralMinimum;
}

bool BSPoint::paintIt(Korvane::IChartPainter &painter)
{
    if (m_period != Korvane::DayPeriod) {
        return false;
    }
    // A host may bring other bars inside each of these: no array is kept over them.
    painter.drawMarkerSeries(0, m_buyMarks.data(), m_barAnchors.data(), BuyAbove, AboveTheBar);
    painter.drawMarkerSeries(0, m_sellMarks.data(), m_barAnchors.data(), SellAbove, AboveTheBar);
    painter.drawMarkerSeries(0, m_bothMarks.data(), m_barAnchors.data(), BothAbove, AboveTheBar);
    return true;
}

// Mouse

int BSPoint::hitTest(double x, double y)
{
    if (m_period != Korvane::DayPeriod) {
        return -1;
    }
    const int bar = m_axis.xToBar(x);
    if (markerOn(marks(), bar) == TradeMarker::None || !hasBar(m_barAnchors, bar)) {
        return -1;
    }
    // The marker stands on its anchor; y grows downwards.
    const double anchorY = m_axis.priceToY(m_barAnchors[static_cast<std::size_t>(bar)], -1, -1);
    if (anchorY < y) {
        return -1;
    }
    return y >= anchorY - m_axis.markerSize() + looseEnd ? 0 : -1;
}

void BSPoint::handleMousePress(double x, double)
{
    if (TradeChannel::isDebugLogOn()) {
        qDebug() << "BSPoint::handleMousePress is called.";
    }
    const int bar = m_axis.xToBar(x);
    if (!hasBar(m_barTimes, bar)) {
        return;
    }
    tellHostWhichBar(bar);
    if (!hasBar(m_barTimes, bar)) {
        return; // the host has changed the bars meanwhile
    }
    const auto trades = m_trades.find(tradingDay(m_barTimes[static_cast<std::size_t>(bar)]));
    if (trades == m_trades.end()) {
        return;
    }
    const TradeMarker marker = markerOn(marks(), bar);
    PopupLines lines(expectedTradeLines);
    for (const trade_cj &trade : trades->second) {
        if (const char *side = lineSide(marker, trade)) {
            lines.append(tradeLine(side, trade));
        }
    }
    if (!lines.isEmpty()) {
        lines.show(m_axis); // a list to read: the choice does not matter
    }
}

/// Hosts see on a click which bar and which price it asks about; the answers are not used.
void BSPoint::tellHostWhichBar(int bar) const
{
    Korvane::AnalyData record;
    std::memset(&record, 0x7A, sizeof record); // told apart from a real bar, should the host not fill it
    m_axis.barAt(bar, record);
    m_axis.priceToY(record.close, -1, -1);
}

void BSPoint::handleMousePressR(double, double) {}

void BSPoint::handleMouseRelease(double, double) {}

void BSPoint::handleMouseReleaseR(double, double) {}

void BSPoint::handleMouseMove(double, double) {}

// Questions

void BSPoint::sendQueryTodayTradeInfoReq()
{
    const QByteArray json =
        TradeChannel::toJson(TradeChannel::screenRequest(CmdType::TODAYTRADE, m_code, m_axis));
    TradeChannel::publish(m_endPoint, json);
    TradeChannel::logSent(__func__, json); // also when the bus refused it: the log shows the refresh cycle
}

bool BSPoint::sendQueryHistoryTradeInfoReq()
{
    QJsonObject request = TradeChannel::screenRequest(CmdType::HISTORYTRADE, m_code, m_axis);
    request.insert(QLatin1String(TradeKeyFields::START), QString::number(m_startDate));
    request.insert(QLatin1String(TradeKeyFields::END), QString::number(m_endDate));
    return TradeChannel::send(m_endPoint, request, __func__);
}

// Answers

void BSPoint::handleTradeNotify(QByteArray topic, QByteArray message)
{
    if (TradeChannel::isDebugLogOn()) {
        qDebug() << "handleTradeNotify receive topic:" << topic << ", msg:" << message;
    }
    if (topic == Topic::TRADEQUERY) {
        if (const auto answer = TradeChannel::parseMessage(message)) {
            handleAnswer(*answer);
        }
    } else if (topic == Topic::TRADENOTIFY) {
        const auto notification = TradeChannel::parseMessage(message);
        if (notification && TradeChannel::isAbout(*notification, m_code)) {
            sendQueryTodayTradeInfoReq();
        }
    }
}

void BSPoint::handleAnswer(const QJsonObject &answer)
{
    const bool isHistory = TradeChannel::isCommand(answer, CmdType::HISTORYTRADE);
    const bool isToday = TradeChannel::isCommand(answer, CmdType::TODAYTRADE);
    if (!(isHistory || isToday) || !TradeChannel::isAbout(answer, m_code)) {
        return;
    }
    const QJsonArray rows = TradeChannel::rows(answer);
    if (isHistory) {
        handleQueryHistoryTradeInfoRes(rows);
    } else {
        handleQueryTodayTradeInfoRes(rows);
    }
}

bool BSPoint::handleQueryTodayTradeInfoRes(QJsonArray rows)
{
    const bool logRows = TradeChannel::isDebugLogOn();
    RowReader reader(todayColumns);
    std::int64_t workingDate = noDate;
    std::vector<trade_cj> trades;
    trades.reserve(static_cast<std::size_t>(rows.size()));
    for (const QJsonValue &value : qAsConst(rows)) {
        const QJsonObject row = value.toObject();
        if (logRows) {
            logRow("handleQueryTradeInfoRes obo:", row, QJsonDocument::Indented);
        }
        const DatedTrade &read = reader.read(row);
        workingDate = read.date;
        trades.push_back(read.trade);
    }
    // One day is answered: all of its rows stand under the day of the last one.
    const QPointer<QObject> self(this);
    if (!trades.empty()) {
        m_trades[workingDate] = std::move(trades);
        sumUpDays();
        calcBSPointPriceInfo();
        m_axis.updateObject(this);
    }
    if (self) { // the host may have ended this object while it repainted
        TradeChannel::restart(m_refreshTimer, m_refreshSeconds);
    }
    return true;
}

bool BSPoint::handleQueryHistoryTradeInfoRes(QJsonArray rows)
{
    if (rows.isEmpty()) {
        TradeChannel::restart(m_refreshTimer, m_refreshSeconds);
        return true;
    }
    const bool logRows = TradeChannel::isDebugLogOn();
    RowReader reader(historyColumns);
    auto day = m_trades.end();
    for (const QJsonValue &value : qAsConst(rows)) {
        const QJsonObject row = value.toObject();
        if (logRows) {
            logRow("handleQueryHistoryTradeInfoRes obo:", row, QJsonDocument::Compact);
        }
        const DatedTrade &read = reader.read(row);
        if (day == m_trades.end() || day->first != read.date) {
            day = m_trades.try_emplace(read.date).first; // rows of a day mostly follow each other
        }
        day->second.push_back(read.trade);
    }
    for (auto &[date, trades] : m_trades) {
        trades.shrink_to_fit(); // held for as long as the security is shown
    }
    sumUpDays();
    calcBSPointPriceInfo();
    m_axis.updateObject(this); // the host may end this object in here: nothing may follow
    return true;
}
