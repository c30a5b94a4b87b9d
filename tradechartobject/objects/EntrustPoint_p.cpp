#include "tradechartobject/objects/EntrustPoint_p.h"

#include "tradechartobject/common/BarTime.h"
#include "tradechartobject/common/DebugLog.h"
#include "tradechartobject/common/OrderMarks.h"
#include "tradechartobject/common/OrderRow.h"

#include <QDebug>
#include <QJsonDocument>
#include <QJsonObject>

#include <cmath>
#include <utility>

namespace TradeChart {

namespace {

constexpr double catchDistance = 8.0; // pixels from the centre of a bar
constexpr double markerHeight = 16.0; // pixels

template <class Row>
void logUnreadable(const Row &row)
{
    if (isDebugLogOn()) {
        qDebug() << "Error:unknown bsflag2 or order status is empty:";
        qDebug() << QString::fromUtf8(QJsonDocument(row.toObject()).toJson(QJsonDocument::Indented));
    }
}

EntrustInfo orderOf(const OrderRow &row)
{
    EntrustInfo order = row.order;
    order.matchPrice = row.matchAmount / static_cast<double>(order.matchQty);
    return order;
}

std::map<std::int64_t, int> marksOf(const QVector<EntrustInfo> &orders)
{
    std::map<std::int64_t, int> marks;
    for (const EntrustInfo &order : orders) {
        addOrder(order, marks);
    }
    return marks;
}

} // namespace

OrdersByMinute readOrders(const AnswerRows &rows, const QString &market, std::int64_t today)
{
    OrdersByMinute orders;
    auto minute = orders.end();
    rows.read(orderColumns, [&](const OrderRow &read, const auto &row) {
        if (read.market != market) {
            return;
        }
        if (read.order.orderStatus.isEmpty() || !read.hasSide) {
            logUnreadable(row);
            return;
        }
        const std::int64_t time = dateTime(today, shownMinute(read.time, today > read.order.orderDate));
        if (minute == orders.end() || minute->first != time) {
            minute = orders.try_emplace(time).first; // orders of a minute mostly follow each other
        }
        minute->second.append(orderOf(read));
    });
    return orders;
}

GroupedOrders groupOrders(const OrdersByMinute &orders, const std::vector<std::int64_t> &barTimes)
{
    GroupedOrders grouped;
    for (int bar = static_cast<int>(barTimes.size()) - 1; bar >= 0; --bar) {
        const auto found = orders.find(barTimes[static_cast<std::size_t>(bar)]);
        if (found == orders.end()) {
            continue;
        }
        grouped.orders.emplace(bar, found->second);
        auto marks = marksOf(found->second);
        if (!marks.empty()) {
            grouped.marks.emplace(bar, std::move(marks));
        }
    }
    return grouped;
}

Placement place(double price, const PriceRange &visible)
{
    if (visible.low >= price) {
        return {visible.low, true};
    }
    return {price >= visible.high ? visible.high : price, false};
}

bool isOnMarker(Korvane::IChartAxis &axis, double price, const PriceRange &visible, double y)
{
    const Placement placement = place(price, visible);
    const double anchorY = axis.priceToY(placement.price, -1, -1);
    const double top = placement.isAtLow ? anchorY - markerHeight : anchorY;
    const double bottom = placement.isAtLow ? anchorY : anchorY + markerHeight;
    return top <= y && y <= bottom;
}

bool isAtBar(Korvane::IChartAxis &axis, int bar, double x)
{
    return std::abs(x - axis.barToX(bar)) < catchDistance;
}

PriceRange visiblePrices(Korvane::IChartAxis &axis)
{
    PriceRange visible;
    axis.visiblePriceRange(visible.low, visible.high);
    return visible;
}

} // namespace TradeChart
