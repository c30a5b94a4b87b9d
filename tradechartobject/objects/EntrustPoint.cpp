#include "tradechartobject/objects/EntrustPoint.h"

#include "tradechartobject/common/AnswerRows.h"
#include "tradechartobject/common/BarTime.h"
#include "tradechartobject/common/BusLink.h"
#include "tradechartobject/common/DebugLog.h"
#include "tradechartobject/common/OrderMarks.h"
#include "tradechartobject/common/OrderStatusTable.h"
#include "tradechartobject/common/OrderText.h"
#include "tradechartobject/common/OverlayQuestion.h"
#include "tradechartobject/common/PopupLines.h"
#include "tradechartobject/common/PriceScale.h"
#include "tradechartobject/common/RefreshTimer.h"
#include "tradechartobject/common/Security.h"
#include "tradechartobject/common/SettlingWaits.h"
#include "tradechartobject/common/TradeMessage.h"
#include "tradechartobject/common/TradeVocabulary.h"
#include "tradechartobject/objects/EntrustPoint_p.h"

#include <QDebug>
#include <QPointer>
#include <QUuid>

#include <algorithm>
#include <iterator>
#include <stdexcept>
#include <utility>

using namespace TradeChart;

namespace {

const RowColumn<QByteArray> cancelColumns[] = {
    {TradeKeyFields::MSGOK,
     [](QByteArray &part, const RowField &field) { part = field.text().toString().toUtf8(); }},
};

/// What the trading module says of a cancellation: its reason when it failed.
QByteArray cancelAnswerText(const TradeMessage &answer)
{
    if (!answer.isTrue(TradeKeyFields::SUCCESS)) {
        return answer.text(TradeKeyFields::MSG).toUtf8();
    }
    QByteArray text;
    answer.rows().read(cancelColumns, [&text](const QByteArray &part, const auto &) { text += part; });
    return text;
}

} // namespace

EntrustPoint::EntrustPoint(Korvane::IChartAxis &axis, QJsonObject config, QObject *)
    : QObject(nullptr),
      m_axis(axis),
      m_code(noSecurity()),
      m_isTodayChart(axis.chartMode() == Korvane::TodayChart),
      m_refreshTimer(RefreshTimer::create(this, &EntrustPoint::sendQueryTodayEntrustInfoReq)),
      m_refreshSeconds(RefreshTimer::seconds(config)),
      m_waits(std::make_unique<SettlingWaits>(*this, [this] { sendQueryTodayEntrustInfoReq(); }))
{
    BusLink::join(m_endPoint);
    BusLink::listen(m_endPoint, this, &EntrustPoint::handleTradeNotify);
    BusLink::subscribeScreen(m_endPoint, m_axis);
    m_objectId = QUuid::createUuid().toString();
}

EntrustPoint::~EntrustPoint()
{
    BusLink::leave(m_endPoint, this);
}

int EntrustPoint::type() const
{
    return Korvane::pluginObjectType;
}

bool EntrustPoint::deleteObject()
{
    RefreshTimer::remove(m_refreshTimer);
    return true;
}

// The bars

bool EntrustPoint::isPaintItPeriod(Korvane::Period period)
{
    return period == Korvane::IntradayPeriod;
}

bool EntrustPoint::calcIt(const Korvane::tagCodeWithName &code, const Korvane::AnalyData *bars, int count,
                          Korvane::Period period, int a, int)
{
    if (period != Korvane::IntradayPeriod) {
        return false;
    }
    m_period = Korvane::IntradayPeriod;
    m_lastArg = a;
    const bool isNewSecurity = !isSameSecurity(code, m_code);
    if (isNewSecurity) {
        changeSecurity(code);
    }
    if (count < 0) {
        throw std::length_error("EntrustPoint::calcIt: a number of bars below zero");
    }
    decodeBarTimes(bars, count, m_period, m_barTimes);
    if (m_barTimes.empty()) {
        return true;
    }
    RefreshTimer::startIfIdle(m_refreshTimer, m_refreshSeconds);
    m_firstDate = tradingDay(m_barTimes.front());
    m_lastDate = tradingDay(m_barTimes.back());
    const QPointer<QObject> self(this);
    if (isNewSecurity) {
        askForOrders();
    }
    return self ? calcEntrustPointPriceInfo() : true; // the host may have ended this object meanwhile
}

void EntrustPoint::changeSecurity(const Korvane::tagCodeWithName &code)
{
    RefreshTimer::stop(m_refreshTimer);
    m_ordersByTime.clear();
    m_priceMarks.clear();
    m_barOrders.clear();
    m_code = code;
}

void EntrustPoint::askForOrders()
{
    switch (m_axis.chartMode()) {
    case Korvane::TodayChart:
        sendQueryTodayEntrustInfoReq();
        break;
    case Korvane::PastDayChart:
        sendQueryHistoryEntrustInfoReq(m_lastDate);
        break;
    default:
        break;
    }
}

bool EntrustPoint::calcEntrustPointPriceInfo()
{
    if (!m_ordersByTime.empty() && !m_barTimes.empty()) {
        GroupedOrders grouped = groupOrders(m_ordersByTime, m_barTimes);
        m_barOrders = std::move(grouped.orders);
        m_priceMarks = std::move(grouped.marks);
    }
    return true;
}

// Scale and painting

bool EntrustPoint::calcRatio(int, int)
{
    return true;
}

double EntrustPoint::maximizeValue(int &)
{
    return neutralMaximum;
}

double EntrustPoint::minimizeValue(int &)
{
    return neutralMinimum;
}

bool EntrustPoint::paintIt(Korvane::IChartPainter &painter)
{
    PriceRange visible;
    if (m_period != Korvane::IntradayPeriod || m_priceMarks.empty() ||
        !m_axis.visiblePriceRange(visible.low, visible.high)) {
        return false;
    }
    for (const auto &[bar, marks] : m_priceMarks) {
        for (const auto &[key, kind] : marks) {
            const Placement placement = place(keyPrice(key), visible);
            painter.drawMarker(0, bar, kind, placement.isAtLow ? 1 : 0, placement.price);
        }
    }
    return true;
}

// Mouse

int EntrustPoint::hitTest(double x, double y)
{
    if (m_period != Korvane::IntradayPeriod || m_barTimes.empty()) {
        return -1;
    }
    for (const auto &[bar, marks] : m_priceMarks) {
        if (!isAtBar(m_axis, bar, x)) {
            continue;
        }
        const PriceRange visible = visiblePrices(m_axis);
        const bool isHit = std::any_of(marks.begin(), marks.end(), [&](const auto &mark) {
            return isOnMarker(m_axis, keyPrice(mark.first), visible, y);
        });
        if (isHit) {
            return 0;
        }
    }
    return -1;
}

void EntrustPoint::handleMousePress(double x, double y)
{
    // Copies: while the list is open, an answer may replace the orders, the host show another security.
    const Korvane::tagCodeWithName security = m_code;
    const std::vector<EntrustInfo> orders = ordersAt(x, y);
    if (orders.empty()) {
        return;
    }
    const std::string name(security.name, qstrnlen(security.name, sizeof security.name));
    std::vector<std::string> texts;
    std::transform(orders.begin(), orders.end(), std::back_inserter(texts),
                   [&](const EntrustInfo &order) { return orderText(order, name); });

    const QPointer<QObject> self(this);
    const int chosen = PopupLines(texts).show(m_axis);
    if (chosen < 0 || static_cast<std::size_t>(chosen) >= orders.size()) {
        if (isDebugLogOn()) {
            qDebug() << "Unknown select:" << chosen << ", select size:" << orders.size();
        }
        return;
    }
    if (self) { // the host may have ended this object while the list was open
        const auto index = static_cast<std::size_t>(chosen);
        offerCancellation(orders[index], security, texts[index]);
    }
}

/// The orders behind the marker at a pixel: those of the first bar, from the left, that has one there.
/// Works on copies and keeps no place in the map: a host that lays out its chart only when it is asked for
/// a pixel may hand over bars or let in an answer meanwhile.
std::vector<EntrustInfo> EntrustPoint::ordersAt(double x, double y) const
{
    std::vector<EntrustInfo> found;
    for (auto next = m_barOrders.begin(); found.empty() && next != m_barOrders.end();) {
        const auto [bar, orders] = *next;
        if (isAtBar(m_axis, bar, x)) {
            const PriceRange visible = visiblePrices(m_axis);
            std::copy_if(
                orders.begin(), orders.end(), std::back_inserter(found),
                [&](const EntrustInfo &order) { return isOnMarker(m_axis, order.orderPrice, visible, y); });
        }
        next = m_barOrders.upper_bound(bar);
    }
    return found;
}

/// Asks the user and then the trading module; the order's new state comes with its notification.
void EntrustPoint::offerCancellation(const EntrustInfo &order, const Korvane::tagCodeWithName &security,
                                     const std::string &text)
{
    if (!isCancellable(order.orderStatus)) {
        return;
    }
    const QPointer<QObject> self(this);
    const bool isConfirmed = m_axis.confirmBox(("撤单?\n" + text).c_str());
    if (isConfirmed && self) {
        cancel(order, security);
    }
}

void EntrustPoint::handleMousePressR(double, double) {}

void EntrustPoint::handleMouseRelease(double, double) {}

void EntrustPoint::handleMouseReleaseR(double, double) {}

void EntrustPoint::handleMouseMove(double, double) {}

// Questions

void EntrustPoint::sendQueryTodayEntrustInfoReq()
{
    BusLink::send(m_endPoint, screenRequest(CmdType::ENTRUSTTODAYTRADE, m_code, m_axis), __func__);
}

bool EntrustPoint::sendQueryHistoryEntrustInfoReq(long long date)
{
    QJsonObject request = screenRequest(CmdType::ENTRUSTHISTORYTRADE, m_code, m_axis);
    request.insert(QLatin1String(TradeKeyFields::DATE), static_cast<qint64>(date));
    return BusLink::send(m_endPoint, request, __func__);
}

void EntrustPoint::sendCancelOrderReq(EntrustInfo &order)
{
    cancel(order, m_code);
}

void EntrustPoint::cancel(const EntrustInfo &order, const Korvane::tagCodeWithName &security)
{
    QJsonObject request = screenRequest(CmdType::ENTRUSTCANCEL, security, m_axis);
    request.insert(QLatin1String(TradeKeyFields::RTSORDERDATE), QString::number(order.orderDate));
    request.insert(QLatin1String(TradeKeyFields::RTSORDERNO), QString::number(order.orderNo));
    request.insert(QLatin1String(TradeKeyFields::OBJECTID), m_objectId);
    BusLink::send(m_endPoint, request, "sendCancelOrderReq");
}

// Answers

void EntrustPoint::handleTradeNotify(QByteArray topic, QByteArray message)
{
    if (topic == Topic::TRADEQUERY &&
        !TradeMessage::mayBeCommand(
            message, {CmdType::ENTRUSTTODAYTRADE, CmdType::ENTRUSTHISTORYTRADE, CmdType::ENTRUSTCANCEL})) {
        return;
    }
    const auto heard = TradeMessage::parse(message);
    if (!heard) {
        return;
    }
    if (topic == Topic::TRADEQUERY) {
        handleAnswer(*heard);
    } else if (topic == Topic::TRADENOTIFY) {
        handleNotification(*heard);
    }
}

void EntrustPoint::handleNotification(const TradeMessage &notification)
{
    if (notification.isAbout(m_code) && m_axis.chartMode() == Korvane::TodayChart) {
        m_waits->waitAndAsk(); // the host may end this object in here: nothing may follow
    }
}

void EntrustPoint::handleAnswer(const TradeMessage &answer)
{
    if (answer.isCommand(CmdType::ENTRUSTCANCEL)) {
        showCancelAnswer(answer);
    } else if (!answer.isAbout(m_code)) {
        return;
    } else if (answer.isCommand(CmdType::ENTRUSTTODAYTRADE) ||
               answer.isCommand(CmdType::ENTRUSTHISTORYTRADE)) {
        takeOrders(answer.rows());
    }
}

void EntrustPoint::showCancelAnswer(const TradeMessage &answer)
{
    if (answer.text(TradeKeyFields::OBJECTID) == m_objectId) {
        m_axis.showMessage(
            cancelAnswerText(answer).constData()); // the host may end this object in here: nothing may follow
    }
}

bool EntrustPoint::handleQueryTodayEntrustInfoRes(QJsonArray data)
{
    takeOrders(AnswerRows(std::move(data)));
    return true;
}

bool EntrustPoint::handleQueryHistoryEntrustInfoRes(QJsonArray data)
{
    return handleQueryTodayEntrustInfoRes(std::move(data));
}

void EntrustPoint::takeOrders(const AnswerRows &rows)
{
    const QPointer<QObject> self(this);
    if (!rows.isEmpty()) {
        m_ordersByTime = readOrders(rows, marketCode(m_code), currentDate());
        calcEntrustPointPriceInfo();
        m_axis.updateObject(this);
    }
    if (self) { // the host may have ended this object while it repainted
        RefreshTimer::restart(m_refreshTimer, m_refreshSeconds);
    }
}
