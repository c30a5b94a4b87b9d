#include "terminal/trades/OrderPath.h"

#include <QHash>

namespace Terminal {

namespace {

using TradesOfOrders = QMultiHash<QString, const PlacedTrade *>;

/// Of the trades on the chart alone, which is one day's.
TradesOfOrders byOrder(const Trades &trades, const ChartData &data, const TradePlaces &places)
{
    TradesOfOrders found;
    const auto [first, last] = places.within({0, data.bars.size()});
    for (auto place = first; place != last; ++place) {
        const QString &number = trades[place->trade].orderNumber;
        if (!number.isEmpty()) {
            found.insert(number, &*place);
        }
    }
    return found;
}

} // namespace

OrderPaths pathsOf(const OrderRecords &orders, const ChartData &data, const Trades &trades,
                   const TradePlaces &places)
{
    OrderPaths paths;
    if (data.period != ChartPeriod::Minute || orders.empty()) {
        return paths;
    }
    const TradesOfOrders dealt = byOrder(trades, data, places);
    for (const OrderRecord &order : orders) {
        const auto bar = order.day && order.time ? barOf(data, *order.day, *order.time) : std::nullopt;
        if (!bar) {
            continue;
        }
        OrderPath path{order.number, order.side, {*bar, data.shownPrice(order.price, *order.day)}};
        for (auto found = dealt.constFind(order.number);
             found != dealt.constEnd() && found.key() == order.number; ++found) {
            if (trades[(*found)->trade].side == order.side) {
                path.dealt.push_back({(*found)->bar, (*found)->price});
            }
        }
        paths.push_back(std::move(path));
    }
    return paths;
}

} // namespace Terminal
