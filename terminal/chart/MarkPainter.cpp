#include "terminal/chart/MarkPainter.h"

#include "terminal/chart/CandleCurve.h"
#include "terminal/chart/ChartView.h"
#include "terminal/chart/VisibleBars.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

namespace Terminal {

namespace {

constexpr int buyAbove = 0;
constexpr int sellAbove = 2;
constexpr int bothAbove = 4;
constexpr double orderMergeCell = 10; ///< orders of one kind that lie in one such square are one glyph

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

/// Where an overlay expects the pointer for a mark at `anchor`.
QPointF seriesTarget(const QPointF &anchor, MarkSide side)
{
    return anchor + QPointF(0, side == MarkSide::Above ? -seriesGlyphHeight / 2 : seriesGlyphHeight / 2);
}

} // namespace

QPointF DrawnMark::targetNear(const QPointF &position) const
{
    return *std::min_element(targets.begin(), targets.end(), [&position](const QPointF &a, const QPointF &b) {
        return std::abs(a.x() - position.x()) < std::abs(b.x() - position.x());
    });
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

MarkPainter::MarkPainter(const ChartView &chart, GlyphSprites *sprites, DrawnMarks *marks)
    : m_chart(chart),
      m_geometry(chart.chartGeometry()),
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
    const auto cell = [](double pixel) {
        return static_cast<quint64>(std::max(0.0, pixel) / orderMergeCell);
    };
    const quint64 key = (cell(x) << 32U) | (cell(y) << 8U) | static_cast<quint64>(number);
    const double top = atLow ? y - orderGlyphSize : y;
    const QPointF target(x, top + orderGlyphSize / 2);
    const auto known = m_orderCells.constFind(key);
    if (known != m_orderCells.constEnd()) {
        DrawnMark &mark = m_orders[*known];
        ++mark.count;
        mark.targets.push_back(target);
        return;
    }
    m_orderCells.insert(key, m_orders.size());
    m_orders.push_back({number, 1, QRectF(x, top, 0, 0), {target}});
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
        mark.targets.push_back(seriesTarget(column.anchor, side));
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
    const auto &columns = m_chart.visibleBars().columns();
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
