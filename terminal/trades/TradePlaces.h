#pragma once

#include "terminal/chart/axes/BarSpan.h"
#include "terminal/data/DataFolder.h"
#include "terminal/trades/AccountTrade.h"

#include <optional>
#include <utility>
#include <vector>

namespace Terminal {

/// The bar in which something happened: its minute, or the day, week or month that it is in; of closed hours
/// the next minute, after the last minute that one. Nothing where the chart has no such bar. Costs a binary
/// search.
std::optional<int> barOf(const ChartData &data, Trading::TradingDate day, Trading::ClockTime time);

/// A trade on the chart.
struct PlacedTrade
{
    int bar = 0;
    double price = 0; ///< as the chart shows it
    size_t trade = 0; ///< its number among the trades
};

/// Where trades are on a chart, by the number of their bar: what of them is in view is found by binary
/// search.
class TradePlaces
{
public:
    using Iterator = std::vector<PlacedTrade>::const_iterator;

    TradePlaces() = default;
    /// Of trades that are oldest first.
    TradePlaces(const ChartData &data, const Trades &trades);

    /// Those on bars of `range`, as first and last.
    std::pair<Iterator, Iterator> within(const BarRange &range) const;

    /// The place of a trade; null where the chart has no bar for it. Valid as long as this object.
    const PlacedTrade *find(size_t trade) const;

    size_t size() const { return m_places.size(); }

private:
    std::vector<PlacedTrade> m_places; ///< bars and trades both grow
};

} // namespace Terminal
