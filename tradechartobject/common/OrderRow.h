// Reads the rows of an answer about orders.
#pragma once

#include "tradechartobject/common/EntrustInfo.h"
#include "tradechartobject/common/FieldText.h"
#include "tradechartobject/common/RowReader.h"

#include <QString>

#include <cstddef>
#include <cstdint>
#include <vector>

namespace TradeChart {

/// Texts of which an answer holds a few in many rows: each is kept once.
class KnownTexts
{
public:
    /// The text, shared with all equal ones while there are not too many different ones.
    QString keep(const FieldText &text);

private:
    std::vector<QString> m_texts;
};

/// Directions of which an answer holds a few in many rows: each is looked up in its table once.
class KnownSides
{
public:
    struct Side
    {
        QString code; ///< of the direction
        bool isKnown; ///< false when it is neither a buy nor a sell
        bool isBuy;
    };

    const Side &find(const FieldText &code);

private:
    std::vector<Side> m_sides;
};

/// What a row of an answer says of an order. What is no number in it counts as 0.
struct OrderRow
{
    QString market; ///< its code, e.g. "SH"; empty when the row names none
    bool hasSide;   ///< false when its direction is neither a buy nor a sell
    int time;       ///< hhmmsscc
    double matchAmount;
    EntrustInfo order;     ///< all but the match price
    KnownTexts knownTexts; ///< statuses and funds
    KnownSides knownSides;
};

constexpr std::size_t orderColumnCount = 12;

/// For a RowReader of such rows.
extern const RowColumn<OrderRow> orderColumns[orderColumnCount];

/// The minute, hhmm00, at which an order of a time of day, hhmmsscc, is shown: one that the chart has a bar
/// for. Orders of earlier days stand at the first one.
std::int64_t shownMinute(int orderTime, bool isOfEarlierDay);

} // namespace TradeChart
