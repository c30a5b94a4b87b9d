#pragma once

#include "terminal/trades/TradePlaces.h"

namespace Terminal {

/// The way of an order on a minute chart: from where it was placed to where it was dealt.
struct OrderPath
{
    struct Point
    {
        int bar = 0;
        double price = 0;
    };

    QString number{};
    Direction side = Direction::Buy;
    Point placed{};
    std::vector<Point> dealt{};
};

using OrderPaths = std::vector<OrderPath>;

/// The ways of the orders that the chart has a minute for; none on a chart of other periods. A trade belongs
/// to an order of its day that has its number and side.
OrderPaths pathsOf(const OrderRecords &orders, const ChartData &data, const Trades &trades,
                   const TradePlaces &places);

} // namespace Terminal
