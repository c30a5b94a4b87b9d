// The pure steps of the combined overlay: which bar a trade marks, and which trades a click lists.
#pragma once

#include "tradechartobject/ChartInterface.h"
#include "tradechartobject/common/Trade.h"
#include "tradechartobject/common/TradeMarks.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace TradeChart {

/// The bars of a chart, borrowed: `count` records with their date-times.
struct TimedBars
{
    const Korvane::AnalyData *records;
    const std::int64_t *times;
    std::size_t count;
};

/// Marks the bars of the trades, which are taken in their order and walk forward over the bars: a
/// trade at or above the close of its bar in `above`, the others in `below`. A bar that is left gets
/// its sides merged. The bar of the last trades keeps its sides apart: it is still being traded on, and
/// terminals show its buys and sells one by one. Trades later than all bars are left out. Requires
/// marks for every bar.
void markTrades(const std::vector<trade_cj> &trades, const TimedBars &bars, const TradeMarks &above,
                const TradeMarks &below);

/// Removes the trades of `today` (yyyymmdd) and later ones; the rest stay in their order.
void dropTodays(std::vector<trade_cj> &trades, std::int64_t today);

/// Removes the trades before `today` (yyyymmdd); the rest stay in their order.
void dropPast(std::vector<trade_cj> &trades, std::int64_t today);

/// A clicked marker and the part of its bar on which it stands.
struct ClickedMarker
{
    TradeMarker kind;
    bool isAbove;      ///< at or above the close, or below it
    double close;      ///< of the bar
    std::int64_t from; ///< date-times of the bar; both ends belong to it
    std::int64_t to;
};

/// True when a click on the marker lists the trade. A trade at the very end of a bar is listed on the
/// next bar, too.
bool isListed(const trade_cj &trade, const ClickedMarker &marker);

} // namespace TradeChart
