#include "terminal/trades/TradeClusters.h"

#include <QHash>

#include <algorithm>
#include <cmath>

namespace Terminal {

namespace {

using Cell = QPair<int, int>;

Cell cellOf(const QPointF &place)
{
    return {static_cast<int>(std::floor(place.x() / TradeGlyphs::side)),
            static_cast<int>(std::floor(place.y() / TradeGlyphs::side))};
}

TradeKind kindOf(const AccountTrade &trade)
{
    return trade.isBuy() ? TradeKind::Buy : TradeKind::Sell;
}

/// Collects marks, of which no two lie closer than the size of one.
class Collection
{
public:
    void add(const QPointF &place, size_t number, TradeKind kind)
    {
        TradeMark *const near = markNear(place);
        if (near == nullptr) {
            m_cells.insert(cellOf(place), m_marks.size());
            m_marks.push_back({place, kind, {number}});
            return;
        }
        near->trades.push_back(number);
        near->kind = near->kind == kind ? kind : TradeKind::Both;
    }

    TradeMarkList take() { return std::move(m_marks); }

private:
    TradeMark *markNear(const QPointF &place)
    {
        const Cell own = cellOf(place);
        for (const int column : {0, -1, 1}) {
            for (const int row : {0, -1, 1}) {
                const auto known = m_cells.constFind({own.first + column, own.second + row});
                if (known != m_cells.constEnd() && isNear(m_marks[*known].place, place)) {
                    return &m_marks[*known];
                }
            }
        }
        return nullptr;
    }

    static bool isNear(const QPointF &one, const QPointF &other)
    {
        return std::abs(one.x() - other.x()) < TradeGlyphs::side &&
               std::abs(one.y() - other.y()) < TradeGlyphs::side;
    }

    TradeMarkList m_marks;
    QHash<Cell, size_t> m_cells; ///< the one mark whose place is in it
};

} // namespace

QRectF TradeMark::box() const
{
    const QSizeF size = TradeGlyphs::size(kind, count());
    return {place - QPointF(size.width() / 2, size.height() / 2), size};
}

TradeMarkList marksInView(const TradePlaces &places, const Trades &trades, const ChartGeometry &geometry,
                          size_t barCount)
{
    if (!geometry.hasScale()) {
        return {};
    }
    Collection marks;
    const auto [first, last] = places.within(barsInView(geometry.span, barCount));
    for (auto place = first; place != last; ++place) {
        const double price = std::clamp(place->price, geometry.lowPrice, geometry.highPrice);
        marks.add({geometry.barToX(place->bar), geometry.priceToY(price)}, place->trade,
                  kindOf(trades[place->trade]));
    }
    return marks.take();
}

} // namespace Terminal
