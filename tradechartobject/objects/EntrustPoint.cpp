#include "tradechartobject/objects/EntrustPoint.h"

#include "tradechartobject/common/BarTime.h"
#include "tradechartobject/common/OrderMarks.h"
#include "tradechartobject/common/OrderRow.h"
#include "tradechartobject/common/OrderStatusTable.h"
#include "tradechartobject/common/OrderText.h"
#include "tradechartobject/common/PopupLines.h"
#include "tradechartobject/common/PriceScale.h"
#include "tradechartobject/common/RowReader.h"
#include "tradechartobject/common/Security.h"
#include "tradechartobject/common/SettlingWaits.h"
#include "tradechartobject/common/TradeChannel.h"
#include "tradechartobject/common/TradeVocabulary.h"

#include <QDebug>
#include <QJsonDocument>
#include <QPointer>
#include <QUuid>

#include <algorithm>
#include <cmath>
#include <iterator>
#include <stdexcept>
#include <utility>

using namespace TradeChart;

namespace {

constexpr std::int64_t noDate = -1;

// The chart modes that orders are shown in.
constexpr int todayChart = 1;
constexpr int pastDayChart = 2;

constexpr double catchDistance = 8.0; // pixels from the centre of a bar
constexpr double markerHeight = 16.0; // pixels

/// Where a marker of a price is drawn and caught: hanging from its price, or, with a price outside the
/// visible range, held at the edge.
struct Placement
{
    double price; ///< of the anchor
    bool isAtLow; ///< held at the bottom edge, where it stands above its anchor
};

struct PriceRange
{
    double low = 0.0;
    double high = 0.0;
};

Placement place(double price, const PriceRange &visible)
{
    if (visible.low >= price) {
        return {visible.low, true};
    }
    return {price >= visible.high ? visible.high : price, false};
}

/// True when the pixel row lies on the marker of a price, ends included.
bool isOnMarker(Korvane::IChartAxis &axis, double price, const PriceRange &visible, double y)
{
    const Placement placement = place(price, visible);
    const double anchorY = axis.priceToY(placement.price, -1, -1);
    const double top = placement.isAtLow ? anchorY - markerHeight : anchorY;
    const double bottom = placement.isAtLow ? anchorY : anchorY + markerHeight;
    return top <= y && y <= bottom;
}

void logUnreadable(const QJsonObject &row)
{
    if (TradeChannel::isDebugLogOn()) {
        qDebug() << "Error:unknown bsflag2 or order status is empty:";
        qDebug() << QString::fromUtf8(QJsonDocument(row).toJson(QJsonDocument::Indented));
    }
}

} // namespace

EntrustPoint::EntrustPoint(Korvane::IChartAxis &axis, QJsonObject config, QObject *)
    : QObject(nullptr),
      m_axis(axis),
      m_endPoint(nullptr),
      m_code(noSecurity()),
      m_period(Korvane::NoPeriod),
      m_firstDate(noDate),
      m_lastDate(noDate),
      m_isTodayChart(axis.chartMode() == todayChart),
      m_lastArg(0),
      m_refreshTimer(nullptr),
      m_refreshSeconds(TradeChannel::refreshSeconds(config)),
      m_waits(std::make_unique<SettlingWaits>(*this, [this] { sendQueryTodayEntrustInfoReq(); }))
{
    m_refreshTimer = TradeChannel::createRefreshTimer(this, &EntrustPoint::sendQueryTodayEntrustInfoReq);
    TradeChannel::joinTerminalBus(m_endPoint);
    TradeChannel::listen(m_endPoint, this, &EntrustPoint::handleTradeNotify);
    TradeChannel::subscribeScreen(m_endPoint, m_axis);
    m_objectId = QUuid::createUuid().toString();
}

EntrustPoint::~EntrustPoint()
{
    TradeChannel::leave(m_endPoint, this);
}

int EntrustPoint::type() const
{
    return Korvane::pluginObjectType;
}

bool EntrustPoint::deleteObject()
{
    TradeChannel::remove(m_refreshTimer);
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
    TradeChannel::startIfIdle(m_refreshTimer, m_refreshSeconds);
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
    TradeChannel::stop(m_refreshTimer);
    m_ordersByTime.clear();
    m_priceMarks.clear();
    m_barOrders.clear();
    m_code = code;
}

void EntrustPoint::askForOrders()
{
    switch (m_axis.chartMode()) {
    case todayChart:
        sendQueryTodayEntrustInfoReq();
        break;
    case pastDayChart:
        sendQueryHistoryEntrustInfoReq(m_lastDate);
        break;
    default:
        break;
    }
}

bool EntrustPoint::calcEntrustPointPriceInfo()
{
    if (m_ordersByTime.empty() || m_barTimes.empty()) {
        return true;
    }
    m_priceMarks.clear();
    m_barOrders.clear();
    for (int bar = static_cast<int>(m_barTimes.size()) - 1; bar >= 0; --bar) {
        const auto found = m_ordersByTime.find(m_barTimes[static_cast<std::size_t>(bar)]);
        if (found == m_ordersByTime.end()) {
            continue;
        }
        const QVector<EntrustInfo> &orders = found->second;
        m_barOrders.emplace(bar, orders);
        std::map<std::int64_t, int> marks;
        for (const EntrustInfo &order : orders) {
            addOrder(order, marks);
        }
        if (!marks.empty()) {
            m_priceMarks.emplace(bar, std::move(marks));
        }
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
        if (!(std::abs(x - m_axis.barToX(bar)) < catchDistance)) {
            continue;
        }
        PriceRange visible;
        m_axis.visiblePriceRange(visible.low, visible.high);
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
        if (TradeChannel::isDebugLogOn()) {
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
        if (std::abs(x - m_axis.barToX(bar)) < catchDistance) {
            PriceRange visible;
            m_axis.visiblePriceRange(visible.low, visible.high);
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
    TradeChannel::send(m_endPoint, TradeChannel::screenRequest(CmdType::ENTRUSTTODAYTRADE, m_code, m_axis),
                       __func__);
}

bool EntrustPoint::sendQueryHistoryEntrustInfoReq(long long date)
{
    QJsonObject request = TradeChannel::screenRequest(CmdType::ENTRUSTHISTORYTRADE, m_code, m_axis);
    request.insert(QLatin1String(TradeKeyFields::DATE), static_cast<qint64>(date));
    return TradeChannel::send(m_endPoint, request, __func__);
}

void EntrustPoint::sendCancelOrderReq(EntrustInfo &order)
{
    cancel(order, m_code);
}

void EntrustPoint::cancel(const EntrustInfo &order, const Korvane::tagCodeWithName &security)
{
    QJsonObject request = TradeChannel::screenRequest(CmdType::ENTRUSTCANCEL, security, m_axis);
    request.insert(QLatin1String(TradeKeyFields::RTSORDERDATE), QString::number(order.orderDate));
    request.insert(QLatin1String(TradeKeyFields::RTSORDERNO), QString::number(order.orderNo));
    request.insert(QLatin1String(TradeKeyFields::OBJECTID), m_objectId);
    TradeChannel::send(m_endPoint, request, "sendCancelOrderReq");
}

// Answers

void EntrustPoint::handleTradeNotify(QByteArray topic, QByteArray message)
{
    if (topic == Topic::TRADEQUERY) {
        if (const auto answer = TradeChannel::parseMessage(message)) {
            handleAnswer(*answer);
        }
    } else if (topic == Topic::TRADENOTIFY) {
        const auto notification = TradeChannel::parseMessage(message);
        if (notification && TradeChannel::isAbout(*notification, m_code) &&
            m_axis.chartMode() == todayChart) {
            m_waits->waitAndAsk(); // the host may end this object in here: nothing may follow
        }
    }
}

void EntrustPoint::handleAnswer(const QJsonObject &answer)
{
    if (TradeChannel::isCommand(answer, CmdType::ENTRUSTCANCEL)) {
        handleCancelAnswer(answer);
        return;
    }
    const bool isToday = TradeChannel::isCommand(answer, CmdType::ENTRUSTTODAYTRADE);
    const bool isHistory = TradeChannel::isCommand(answer, CmdType::ENTRUSTHISTORYTRADE);
    if (!(isToday || isHistory) || !TradeChannel::isAbout(answer, m_code)) {
        return;
    }
    const QJsonArray rows = TradeChannel::rows(answer);
    if (isToday) {
        handleQueryTodayEntrustInfoRes(rows);
    } else {
        handleQueryHistoryEntrustInfoRes(rows);
    }
}

void EntrustPoint::handleCancelAnswer(const QJsonObject &answer)
{
    if (TradeChannel::text(answer, TradeKeyFields::OBJECTID) != m_objectId) {
        return;
    }
    QByteArray message;
    if (answer.value(QLatin1String(TradeKeyFields::SUCCESS)).toBool()) {
        const QJsonArray parts = TradeChannel::rows(answer);
        for (const QJsonValue &part : parts) {
            message += TradeChannel::text(part.toObject(), TradeKeyFields::MSGOK).toUtf8();
        }
    } else {
        message = TradeChannel::text(answer, TradeKeyFields::MSG).toUtf8();
    }
    m_axis.showMessage(message.constData()); // the host may end this object in here: nothing may follow
}

bool EntrustPoint::handleQueryTodayEntrustInfoRes(QJsonArray data)
{
    const QPointer<QObject> self(this);
    if (!data.isEmpty()) {
        storeOrders(data);
        calcEntrustPointPriceInfo();
        m_axis.updateObject(this);
    }
    if (self) { // the host may have ended this object while it repainted
        TradeChannel::restart(m_refreshTimer, m_refreshSeconds);
    }
    return true;
}

bool EntrustPoint::handleQueryHistoryEntrustInfoRes(QJsonArray data)
{
    return handleQueryTodayEntrustInfoRes(data);
}

/// Keeps the readable rows of the shown security's market by the minute they are shown at. That minute
/// is always one of today, also for orders of other days: an intraday chart has no other.
void EntrustPoint::storeOrders(const QJsonArray &rows)
{
    m_ordersByTime.clear();
    const std::int64_t today = currentDate();
    const QString market = marketCode(m_code);
    RowReader reader(orderColumns);
    auto minute = m_ordersByTime.end();
    for (const QJsonValue &value : rows) {
        const QJsonObject row = value.toObject();
        const OrderRow &read = reader.read(row);
        if (read.market != market) {
            continue;
        }
        if (read.order.orderStatus.isEmpty() || !read.hasSide) {
            logUnreadable(row);
            continue;
        }
        const std::int64_t time = dateTime(today, shownMinute(read.time, today > read.order.orderDate));
        if (minute == m_ordersByTime.end() || minute->first != time) {
            minute = m_ordersByTime.try_emplace(time).first; // orders of a minute mostly follow each other
        }
        EntrustInfo order = read.order;
        order.matchPrice = read.matchAmount / static_cast<double>(order.matchQty);
        minute->second.append(std::move(order));
    }
}
