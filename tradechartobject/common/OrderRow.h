// Reads the rows of an answer about orders.
#pragma once

#include "tradechartobject/common/EntrustInfo.h"
#include "tradechartobject/common/RowReader.h"

#include <QSet>
#include <QString>

#include <cstddef>
#include <cstdint>

namespace TradeChart {

/// What a row of an answer says of an order. What is no number in it counts as 0.
struct OrderRow
{
    QString market; ///< its code, e.g. "SH"; empty when the row names none
    bool hasSide;   ///< false when its direction is neither a buy nor a sell
    int time;       ///< hhmmsscc
    double matchAmount;
    EntrustInfo order;        ///< all but the match price
    QSet<QString> knownTexts; ///< a few statuses and funds, each kept once for all orders
};

constexpr std::size_t orderColumnCount = 12;

/// For a RowReader of such rows.
extern const RowColumn<OrderRow> orderColumns[orderColumnCount];

/// The minute, hhmm00, at which an order of a time of day, hhmmsscc, is shown: one that the chart has a bar
/// for. Orders of earlier days stand at the first one.
std::int64_t shownMinute(int orderTime, bool isOfEarlierDay);

} // namespace TradeChart
