// The pure steps of the order points: rows of an answer become orders of a minute, minutes become marks on
// bars, and a mark a place on the screen.
#pragma once

#include "tradechartobject/ChartInterface.h"
#include "tradechartobject/common/AnswerRows.h"
#include "tradechartobject/common/EntrustInfo.h"

#include <QString>
#include <QVector>

#include <cstdint>
#include <map>
#include <vector>

namespace TradeChart {

/// Orders by the minute that they are shown at, a date-time of today; within a minute as received.
using OrdersByMinute = std::map<std::int64_t, QVector<EntrustInfo>>;

/// Orders by the index of their bar.
using OrdersByBar = std::map<int, QVector<EntrustInfo>>;

/// Marker kinds by the index of their bar and their price key.
using MarksByBar = std::map<int, std::map<std::int64_t, int>>;

/// The readable rows of a market, e.g. "SH". The minute is always one of `today` (yyyymmdd), also for orders
/// of other days: an intraday chart has no other.
OrdersByMinute readOrders(const AnswerRows &rows, const QString &market, std::int64_t today);

/// What stands on the bars, whose date-times are `barTimes`. Orders whose minute is no bar are left out.
struct GroupedOrders
{
    OrdersByBar orders; ///< of every status
    MarksByBar marks;   ///< of the statuses that have a marker
};
GroupedOrders groupOrders(const OrdersByMinute &orders, const std::vector<std::int64_t> &barTimes);

/// The visible prices of a chart.
struct PriceRange
{
    double low = 0.0;
    double high = 0.0;
};

/// Where a marker of a price is drawn and caught: hanging from its price, or, with a price outside the
/// visible range, held at the edge.
struct Placement
{
    double price; ///< of the anchor
    bool isAtLow; ///< held at the bottom edge, where it stands above its anchor
};
Placement place(double price, const PriceRange &visible);

/// True when the pixel row lies on the marker of a price, ends included.
bool isOnMarker(Korvane::IChartAxis &axis, double price, const PriceRange &visible, double y);

/// True when the pixel column belongs to the markers of a bar.
bool isAtBar(Korvane::IChartAxis &axis, int bar, double x);

/// The visible prices as the host tells them; zeros of what it does not tell.
PriceRange visiblePrices(Korvane::IChartAxis &axis);

} // namespace TradeChart
