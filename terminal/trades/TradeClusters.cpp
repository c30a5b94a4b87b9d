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

/// A mark with the room that it takes, which takes a while to reckon.
struct PlacedMark
{
    TradeMark mark;
    QRectF box;
};

void takeIn(PlacedMark *placed, const TradeMark &other)
{
    TradeMark &mark = placed->mark;
    mark.trades.insert(mark.trades.end(), other.trades.begin(), other.trades.end());
    std::sort(mark.trades.begin(), mark.trades.end());
    mark.kind = mark.kind == other.kind ? mark.kind : TradeKind::Both;
    placed->box = mark.box();
}

bool isLeftOf(const PlacedMark &one, const PlacedMark &other)
{
    return one.box.left() < other.box.left();
}

/// Of marks from left to right, the last that this one would lie over; null for none.
PlacedMark *markUnder(std::vector<PlacedMark> *marks, const QRectF &box, double widest)
{
    for (auto mark = marks->rbegin(); mark != marks->rend() && box.left() - mark->box.left() < widest;
         ++mark) {
        if (mark->box.intersects(box)) {
            return &*mark;
        }
    }
    return nullptr;
}

/// Each mark takes in those that lie over it; false when there were none.
bool joinOverlapping(std::vector<PlacedMark> *marks)
{
    std::stable_sort(marks->begin(), marks->end(), isLeftOf);
    double widest = 0;
    for (const PlacedMark &mark : *marks) {
        widest = std::max(widest, mark.box.width());
    }
    std::vector<PlacedMark> apart;
    for (const PlacedMark &mark : *marks) {
        if (PlacedMark *const under = markUnder(&apart, mark.box, widest)) {
            takeIn(under, mark.mark);
        } else {
            apart.push_back(mark);
        }
    }
    const bool hasJoined = apart.size() < marks->size();
    *marks = std::move(apart);
    return hasJoined;
}

/// A count is wider than a mark without one, and may reach over its neighbour.
TradeMarkList withoutOverlaps(const TradeMarkList &marks)
{
    std::vector<PlacedMark> placed;
    placed.reserve(marks.size());
    for (const TradeMark &mark : marks) {
        placed.push_back({mark, mark.box()});
    }
    while (joinOverlapping(&placed)) {
    }
    TradeMarkList apart;
    apart.reserve(placed.size());
    for (PlacedMark &mark : placed) {
        apart.push_back(std::move(mark.mark));
    }
    return apart;
}

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
    return withoutOverlaps(marks.take());
}

} // namespace Terminal
