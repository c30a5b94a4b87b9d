#include "terminal/chart/marks/MarkPainter.h"

#include "terminal/chart/bars/CandleCurve.h"
#include "terminal/chart/bars/VisibleBars.h"

#include <QPainter>

#include <algorithm>
#include <cmath>
#include <utility>

namespace Terminal {

namespace {

constexpr int buyAbove = 0;
constexpr int sellAbove = 2;
constexpr int bothAbove = 4;

/// Right of an order's middle. An overlay catches an order within half a glyph of its bar, and of several
/// bars takes the first from the left: at the right edge of its glyph no earlier bar is caught.
constexpr double orderTargetOffset = orderGlyphSize / 2 - 0.5;

/// Styles go buy, sell, both, each with its odd twin below the bar.
bool buys(int style)
{
    return style / 2 != sellAbove / 2;
}

bool sells(int style)
{
    return style / 2 != buyAbove / 2;
}

MarkSide sideOf(int style)
{
    return style % 2 == 0 ? MarkSide::Above : MarkSide::Below;
}

GlyphNumber clusterGlyph(bool hasBuys, bool hasSells, MarkSide side)
{
    const int above = hasBuys && hasSells ? bothAbove : hasBuys ? buyAbove : sellAbove;
    return seriesGlyph(side == MarkSide::Above ? above : above + 1);
}

/// The middle of a mark at `anchor`, where an overlay expects the pointer.
QPointF seriesPlace(const QPointF &anchor, MarkSide side)
{
    return anchor + QPointF(0, side == MarkSide::Above ? -seriesGlyphHeight / 2 : seriesGlyphHeight / 2);
}

/// The number of the square of a glyph's size that a pixel is in, along one axis.
int orderCell(double pixel)
{
    constexpr double farAway = 1e6; // beyond any screen: an overlay may name any price
    return static_cast<int>(std::floor(std::clamp(pixel, -farAway, farAway) / orderGlyphSize));
}

quint64 orderCellKey(GlyphNumber number, int column, int row)
{
    constexpr quint64 mask = 0xFFFFFF;
    return ((static_cast<quint64>(column) & mask) << 32U) | ((static_cast<quint64>(row) & mask) << 8U) |
           static_cast<quint64>(number);
}

} // namespace

QPointF DrawnMark::targetNear(const QPointF &position) const
{
    const auto distance = [&position](const QPointF &place) {
        const QPointF away = place - position;
        return std::make_pair(std::abs(away.x()), std::abs(away.y()));
    };
    const QPointF nearest =
        *std::min_element(places.begin(), places.end(), [&distance](const QPointF &a, const QPointF &b) {
            return distance(a) < distance(b);
        });
    return isSeriesStyle(glyph) ? nearest : nearest + QPointF(orderTargetOffset, 0);
}

const DrawnMark *DrawnMarks::markAt(const QPointF &position) const
{
    const auto found = std::find_if(m_marks.rbegin(), m_marks.rend(), [&position](const DrawnMark &mark) {
        return mark.box.contains(position) && glyph(mark.glyph).outline(mark.box).contains(position);
    });
    return found == m_marks.rend() ? nullptr : &*found;
}

std::optional<QPointF> DrawnMarks::targetAt(const QPointF &position) const
{
    const DrawnMark *const mark = markAt(position);
    return mark == nullptr ? std::nullopt : std::optional<QPointF>(mark->targetNear(position));
}

MarkPainter::MarkPainter(const ChartGeometry &geometry, const VisibleBars &bars, GlyphSprites *sprites,
                         DrawnMarks *marks)
    : m_geometry(geometry),
      m_bars(bars),
      m_barWidth(m_geometry.barWidth()),
      m_sprites(sprites),
      m_marks(marks)
{
}

void MarkPainter::addSeriesMark(int bar, double price, int style)
{
    Columns &columns = sideOf(style) == MarkSide::Above ? m_above : m_below;
    if (columns.empty()) {
        columns.resize(static_cast<size_t>(std::max(1.0, m_geometry.right + 2)));
    }
    const double x = m_geometry.left + (bar - m_geometry.span.first) * m_barWidth;
    const auto pixel = static_cast<size_t>(std::clamp(x, 0.0, static_cast<double>(columns.size() - 1)));
    MarkColumn &column = columns[pixel];
    if (++column.count == 1) {
        column.anchor = QPointF(x, m_geometry.priceToY(price));
    }
    column.buys |= buys(style);
    column.sells |= sells(style);
}

void MarkPainter::addOrderMark(int bar, double price, int kind, bool atLow)
{
    const double x = m_geometry.barToX(bar);
    const double y = m_geometry.priceToY(price);
    const EdgeClamp clamp = atLow                           ? EdgeClamp::AtBottom
                            : price >= m_geometry.highPrice ? EdgeClamp::AtTop
                                                            : EdgeClamp::None;
    const GlyphNumber number = orderGlyph(kind, clamp);
    const double top = atLow ? y - orderGlyphSize : y;
    const QPointF place(x, top + orderGlyphSize / 2);
    if (DrawnMark *const known = orderMarkNear(number, place)) {
        ++known->count;
        known->places.push_back(place);
        return;
    }
    m_orderCells.insert(orderCellKey(number, orderCell(place.x()), orderCell(place.y())), m_orders.size());
    m_orders.push_back({number, 1, QRectF(x, top, 0, 0), {place}});
}

/// A square has one mark of a kind at most, since two there would be one: what is near lies in it or beside
/// it.
DrawnMark *MarkPainter::orderMarkNear(GlyphNumber number, const QPointF &place)
{
    for (const int column : {0, -1, 1}) {
        for (const int row : {0, -1, 1}) {
            const auto known = m_orderCells.constFind(
                orderCellKey(number, orderCell(place.x()) + column, orderCell(place.y()) + row));
            if (known == m_orderCells.constEnd()) {
                continue;
            }
            const QPointF away = place - m_orders[*known].places.front();
            if (std::abs(away.x()) < orderGlyphSize && std::abs(away.y()) < orderGlyphSize) {
                return &m_orders[*known];
            }
        }
    }
    return nullptr;
}

void MarkPainter::paint(QPainter *painter)
{
    mergeColumns(m_above, MarkSide::Above);
    mergeColumns(m_below, MarkSide::Below);
    for (DrawnMark &order : m_orders) {
        const QSizeF size = m_sprites->size(order.glyph, order.count);
        order.box = QRectF(QPointF(order.box.x() - size.width() / 2, order.box.y()), size);
        m_marks->add(std::move(order));
    }
    for (const DrawnMark &mark : m_marks->all()) {
        painter->drawPixmap(mark.box.topLeft(), m_sprites->sprite(mark.glyph, mark.count));
    }
}

void MarkPainter::mergeColumns(const Columns &columns, MarkSide side)
{
    // A cluster ends where the next mark would stand clear of a lone glyph and of its widest text.
    const double loneWidth = m_sprites->size(clusterGlyph(true, true, side), 1).width();
    const double widest = m_sprites->size(clusterGlyph(true, true, side), highestShownCount + 1).width();
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
        addCluster(columns, first, last, side);
    }
}

void MarkPainter::addCluster(const Columns &columns, size_t first, size_t last, MarkSide side)
{
    DrawnMark mark;
    mark.count = 0;
    bool hasBuys = false;
    bool hasSells = false;
    double y = columns[first].anchor.y();
    for (size_t i = first; i <= last; ++i) {
        const MarkColumn &column = columns[i];
        if (column.count == 0) {
            continue;
        }
        mark.count += column.count;
        hasBuys |= column.buys;
        hasSells |= column.sells;
        y = side == MarkSide::Above ? std::min(y, column.anchor.y()) : std::max(y, column.anchor.y());
        mark.places.push_back(seriesPlace(column.anchor, side));
    }
    mark.glyph = clusterGlyph(hasBuys, hasSells, side);
    const QSizeF size = m_sprites->size(mark.glyph, mark.count);
    const double centre = (columns[first].anchor.x() + columns[last].anchor.x()) / 2;
    mark.box = QRectF(QPointF(std::round(centre - size.width() / 2), 0), size);
    const double edge = clearOfCandles(mark.box, y, side);
    mark.box.moveTop(std::max(m_geometry.top, side == MarkSide::Above ? edge - size.height() : edge));
    m_marks->add(std::move(mark));
}

double MarkPainter::clearOfCandles(const QRectF &box, double y, MarkSide side) const
{
    const auto &columns = m_bars.columns();
    const double candle = candleWidth(m_geometry.barWidth()) / 2.0;
    const double from = m_geometry.xToBar(box.left() - candle);
    const double to = m_geometry.xToBar(box.right() + candle);
    auto column = std::lower_bound(columns.begin(), columns.end(), from,
                                   [](const BarColumn &one, double bar) { return one.position < bar; });
    for (; column != columns.end() && column->position <= to; ++column) {
        y = side == MarkSide::Above ? std::min(y, m_geometry.priceToY(column->high))
                                    : std::max(y, m_geometry.priceToY(column->low));
    }
    return std::floor(y);
}

} // namespace Terminal
