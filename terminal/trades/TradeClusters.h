#pragma once

#include "terminal/chart/axes/ChartGeometry.h"
#include "terminal/trades/TradeGlyphs.h"
#include "terminal/trades/TradePlaces.h"

#include <QPointF>

namespace Terminal {

/// A mark of trades: one, or several that lie closer than a mark.
struct TradeMark
{
    QPointF place; ///< the middle of the mark: minute and price of its first trade
    TradeKind kind = TradeKind::Buy;
    std::vector<size_t> trades{}; ///< their numbers

    int count() const { return static_cast<int>(trades.size()); }
    QRectF box() const;
};

using TradeMarkList = std::vector<TradeMark>;

/// The marks of the trades in view, from left to right, none over another. A price beyond the scale stands at
/// its edge. Costs a pass over the trades in view.
TradeMarkList marksInView(const TradePlaces &places, const Trades &trades, const ChartGeometry &geometry,
                          size_t barCount);

} // namespace Terminal
