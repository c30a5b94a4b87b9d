#include "tradechartobject/objects/BSPoint.h"

#include "tradechartobject/common/AnswerRows.h"
#include "tradechartobject/common/BarTime.h"
#include "tradechartobject/common/BusLink.h"
#include "tradechartobject/common/DebugLog.h"
#include "tradechartobject/common/OverlayQuestion.h"
#include "tradechartobject/common/PopupLines.h"
#include "tradechartobject/common/PriceScale.h"
#include "tradechartobject/common/RefreshTimer.h"
#include "tradechartobject/common/Security.h"
#include "tradechartobject/common/TradeMarks.h"
#include "tradechartobject/common/TradeMessage.h"
#include "tradechartobject/common/TradeVocabulary.h"
#include "tradechartobject/objects/BSPoint_p.h"

#include <QDebug>
#include <QPointer>

#include <algorithm>
#include <cstring>
#include <utility>

using namespace TradeChart;

namespace {

constexpr std::int64_t noDate = -1;

/// A marker reaches up from its anchor; this much of its far end is not caught.
constexpr double looseEnd = 2.0; // pixels

void growTo(std::size_t count, std::vector<double> &marks)
{
    marks.resize(std::max(count, marks.size()), unmarked);
}

} // namespace

BSPoint::BSPoint(Korvane::IChartAxis &axis, QJsonObject config, QObject *parent)
    : QObject(parent),
      m_axis(axis),
      m_code(noSecurity()),
      m_refreshTimer(RefreshTimer::create(this, &BSPoint::sendQueryTodayTradeInfoReq)),
      m_refreshSeconds(RefreshTimer::seconds(config))
{
    RefreshTimer::restart(m_refreshTimer, m_refreshSeconds);
    BusLink::join(m_endPoint);
    BusLink::listen(m_endPoint, this, &BSPoint::handleTradeNotify);
    BusLink::subscribeScreen(m_endPoint, m_axis);
}

BSPoint::~BSPoint()
{
    BusLink::leave(m_endPoint, this);
}

int BSPoint::type() const
{
    return Korvane::pluginObjectType;
}

bool BSPoint::deleteObject()
{
    RefreshTimer::remove(m_refreshTimer);
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
    RefreshTimer::startIfIdle(m_refreshTimer, m_refreshSeconds);
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
    RefreshTimer::stop(m_refreshTimer);
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

bool BSPoint::calcBSPointPriceInfo()
{
    markDays(m_daySides, m_barTimes, marks());
    return true;
}

TradeMarks BSPoint::marks()
{
    return {m_buyMarks, m_sellMarks, m_bothMarks};
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
    painter.drawMarkerSeries(0, m_buyMarks.data(), m_barAnchors.data(), Korvane::BuyAbove,
                             Korvane::AboveTheBar);
    painter.drawMarkerSeries(0, m_sellMarks.data(), m_barAnchors.data(), Korvane::SellAbove,
                             Korvane::AboveTheBar);
    painter.drawMarkerSeries(0, m_bothMarks.data(), m_barAnchors.data(), Korvane::BothAbove,
                             Korvane::AboveTheBar);
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
    if (isDebugLogOn()) {
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
    const PopupLines lines(listTrades(trades->second, markerOn(marks(), bar)));
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
    const QByteArray json = toJson(screenRequest(CmdType::TODAYTRADE, m_code, m_axis));
    BusLink::publish(m_endPoint, json);
    BusLink::logSent(__func__, json); // also when the bus refused it: the log shows the refresh cycle
}

bool BSPoint::sendQueryHistoryTradeInfoReq()
{
    QJsonObject request = screenRequest(CmdType::HISTORYTRADE, m_code, m_axis);
    request.insert(QLatin1String(TradeKeyFields::START), QString::number(m_startDate));
    request.insert(QLatin1String(TradeKeyFields::END), QString::number(m_endDate));
    return BusLink::send(m_endPoint, request, __func__);
}

// Answers

void BSPoint::handleTradeNotify(QByteArray topic, QByteArray message)
{
    if (isDebugLogOn()) {
        qDebug() << "handleTradeNotify receive topic:" << topic << ", msg:" << message;
    }
    if (topic == Topic::TRADEQUERY &&
        !TradeMessage::mayBeCommand(message, {CmdType::HISTORYTRADE, CmdType::TODAYTRADE})) {
        return;
    }
    const auto heard = TradeMessage::parse(message);
    if (!heard || !heard->isAbout(m_code)) {
        return;
    }
    if (topic == Topic::TRADEQUERY) {
        handleAnswer(*heard);
    } else if (topic == Topic::TRADENOTIFY) {
        sendQueryTodayTradeInfoReq();
    }
}

void BSPoint::handleAnswer(const TradeMessage &answer)
{
    if (answer.isCommand(CmdType::HISTORYTRADE)) {
        takePastTrades(answer.rows());
    } else if (answer.isCommand(CmdType::TODAYTRADE)) {
        takeTodaysTrades(answer.rows());
    }
}

bool BSPoint::handleQueryTodayTradeInfoRes(QJsonArray rows)
{
    takeTodaysTrades(AnswerRows(std::move(rows)));
    return true;
}

bool BSPoint::handleQueryHistoryTradeInfoRes(QJsonArray rows)
{
    takePastTrades(AnswerRows(std::move(rows)));
    return true;
}

void BSPoint::takeTodaysTrades(const AnswerRows &rows)
{
    const QPointer<QObject> self(this);
    TodaysTrades today = readTodaysTrades(rows);
    if (!today.trades.empty()) {
        m_trades[today.day] = std::move(today.trades);
        showTrades();
    }
    if (self) { // the host may have ended this object while it repainted
        RefreshTimer::restart(m_refreshTimer, m_refreshSeconds);
    }
}

void BSPoint::takePastTrades(const AnswerRows &rows)
{
    if (rows.isEmpty()) {
        RefreshTimer::restart(m_refreshTimer, m_refreshSeconds);
        return;
    }
    addPastTrades(rows, m_trades);
    showTrades(); // the host may end this object in here: nothing may follow
}

/// Marks the bars of the trades as they are now, and has them repainted.
void BSPoint::showTrades()
{
    m_daySides = sumUpDays(m_trades);
    calcBSPointPriceInfo();
    m_axis.updateObject(this);
}
