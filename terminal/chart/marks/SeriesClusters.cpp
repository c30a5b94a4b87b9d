#include "terminal/chart/marks/SeriesClusters.h"

#include "terminal/chart/bars/CandleCurve.h"
#include "terminal/chart/bars/VisibleBars.h"
#include "terminal/chart/marks/glyphs/GlyphSprites.h"

#include <algorithm>
#include <cmath>

namespace Terminal {

namespace {

TradeKind kindOf(bool hasBuys, bool hasSells)
{
    return hasBuys && hasSells ? TradeKind::Both : hasBuys ? TradeKind::Buy : TradeKind::Sell;
}

/// The middle of a mark at `anchor`, where an overlay expects the pointer.
QPointF placeOf(const QPointF &anchor, MarkSide side)
{
    return anchor + QPointF(0, side == MarkSide::Above ? -seriesGlyphHeight / 2 : seriesGlyphHeight / 2);
}

/// What stands farther from the bars.
double outer(double one, double other, MarkSide side)
{
    return side == MarkSide::Above ? std::min(one, other) : std::max(one, other);
}

} // namespace

SeriesClusters::SeriesClusters(const ChartGeometry &geometry, const VisibleBars &bars)
    : m_geometry(geometry),
      m_bars(bars),
      m_barWidth(geometry.barWidth())
{
}

void SeriesClusters::add(int bar, double price, int style)
{
    const SeriesStyle &meant = rowOf(seriesStyles, style);
    Columns &columns = meant.side == MarkSide::Above ? m_above : m_below;
    if (columns.empty()) {
        columns.resize(static_cast<size_t>(std::max(1.0, m_geometry.right + 2)));
    }
    const double x = m_geometry.left + (bar - m_geometry.span.first) * m_barWidth;
    const auto pixel = static_cast<size_t>(std::clamp(x, 0.0, static_cast<double>(columns.size() - 1)));
    Column &column = columns[pixel];
    if (++column.count == 1) {
        column.anchor = QPointF(x, m_geometry.priceToY(price));
    }
    column.buys |= meant.kind != TradeKind::Sell;
    column.sells |= meant.kind != TradeKind::Buy;
}

void SeriesClusters::moveTo(DrawnMarks *marks, GlyphSprites *sprites)
{
    merge(m_above, MarkSide::Above, marks, sprites);
    merge(m_below, MarkSide::Below, marks, sprites);
    m_above.clear();
    m_below.clear();
}

/// A cluster ends where the next mark would stand clear of a lone glyph and of its widest text.
void SeriesClusters::merge(const Columns &columns, MarkSide side, DrawnMarks *marks,
                           GlyphSprites *sprites) const
{
    const GlyphNumber both = seriesGlyph(TradeKind::Both, side);
    const double loneWidth = sprites->size(both, 1).width();
    const double widest = sprites->size(both, highestShownCount + 1).width();
    size_t next = 0;
    while (next < columns.size()) {
        if (columns[next].count == 0) {
            ++next;
            continue;
        }
        const size_t first = next;
        size_t last = first;
        for (++next; next < columns.size() && static_cast<double>(next - first) < widest &&
                     static_cast<double>(next - last) < loneWidth;
             ++next) {
            if (columns[next].count > 0) {
                last = next;
            }
        }
        next = last + 1;
        marks->add(cluster(columns, first, last, side, marks, sprites));
    }
}

DrawnMark SeriesClusters::cluster(const Columns &columns, size_t first, size_t last, MarkSide side,
                                  DrawnMarks *marks, GlyphSprites *sprites) const
{
    DrawnMark mark;
    mark.count = 0;
    bool hasBuys = false;
    bool hasSells = false;
    double y = columns[first].anchor.y();
    for (size_t i = first; i <= last; ++i) {
        const Column &column = columns[i];
        if (column.count == 0) {
            continue;
        }
        mark.count += column.count;
        hasBuys |= column.buys;
        hasSells |= column.sells;
        y = outer(y, column.anchor.y(), side);
        marks->addPlace(&mark, placeOf(column.anchor, side));
    }
    mark.glyph = seriesGlyph(kindOf(hasBuys, hasSells), side);
    const double centre = (columns[first].anchor.x() + columns[last].anchor.x()) / 2;
    mark.box = placedBox(sprites->size(mark.glyph, mark.count), centre, y, side);
    return mark;
}

QRectF SeriesClusters::placedBox(const QSizeF &size, double centre, double y, MarkSide side) const
{
    QRectF box(QPointF(std::round(centre - size.width() / 2), 0), size);
    const double edge = clearOfCandles(box, y, side);
    box.moveTop(std::max(m_geometry.top, side == MarkSide::Above ? edge - size.height() : edge));
    return box;
}

double SeriesClusters::clearOfCandles(const QRectF &box, double y, MarkSide side) const
{
    const auto &columns = m_bars.columns();
    const double candle = candleWidth(m_geometry.barWidth()) / 2.0;
    const double from = m_geometry.xToBar(box.left() - candle);
    const double to = m_geometry.xToBar(box.right() + candle);
    auto column = std::lower_bound(columns.begin(), columns.end(), from,
                                   [](const BarColumn &one, double bar) { return one.position < bar; });
    for (; column != columns.end() && column->position <= to; ++column) {
        y = outer(y, m_geometry.priceToY(side == MarkSide::Above ? column->high : column->low), side);
    }
    return std::floor(y);
}

} // namespace Terminal
