// The markers of trades: which sides stand on a bar, and how the painter is told.
#pragma once

#include "tradechartobject/common/BarMarks.h"

#include <cstddef>
#include <vector>

namespace TradeChart {

/// Which trades a marker stands for.
enum class TradeMarker { None, Buys, Sells, Both };

/// The marks of one row of markers, borrowed from the overlay that owns them. A bar whose marks are
/// merged carries at most one of the three.
struct TradeMarks
{
    std::vector<double> &buys;
    std::vector<double> &sells;
    std::vector<double> &both;
};

/// The marker on `bar`, the one for both sides first; None also for an index outside the bars.
inline TradeMarker markerOn(const TradeMarks &marks, int bar)
{
    if (isMarked(marks.both, bar)) {
        return TradeMarker::Both;
    }
    if (isMarked(marks.buys, bar)) {
        return TradeMarker::Buys;
    }
    return isMarked(marks.sells, bar) ? TradeMarker::Sells : TradeMarker::None;
}

/// Turns a buy and a sell marker on the same bar into one marker for both. Requires a bar of the marks.
inline void mergeSides(const TradeMarks &marks, std::size_t bar)
{
    if (std::isfinite(marks.buys[bar]) && std::isfinite(marks.sells[bar])) {
        marks.both[bar] = marked;
        marks.buys[bar] = unmarked;
        marks.sells[bar] = unmarked;
    }
}

} // namespace TradeChart
