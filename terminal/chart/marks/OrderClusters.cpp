#include "terminal/chart/marks/OrderClusters.h"

#include "terminal/chart/marks/glyphs/GlyphSprites.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace Terminal {

OrderClusters::OrderClusters(const ChartGeometry &geometry)
    : m_geometry(geometry),
      m_barWidth(geometry.barWidth()),
      m_grid(geometry)
{
}

void OrderClusters::add(int bar, double price, int kind, bool atLow)
{
    const double x = m_geometry.left + (bar - m_geometry.span.first) * m_barWidth;
    const double y = m_geometry.priceToY(price);
    const EdgeClamp clamp = atLow                           ? EdgeClamp::AtBottom
                            : price >= m_geometry.highPrice ? EdgeClamp::AtTop
                                                            : EdgeClamp::None;
    const GlyphNumber number = orderGlyph(kind, clamp);
    const double top = atLow ? y - orderGlyphSize : y;
    const QPointF place(x, top + orderGlyphSize / 2);
    const GlyphGrid::Square square = GlyphGrid::squareOf(place);
    int mark = markNear(number, place, square);
    if (mark == GlyphGrid::noMark) {
        mark = addMark(number, place, top);
        m_grid.put(number, square, mark);
    }
    m_joined.push_back({mark, place});
}

/// A square has one mark of a kind at most, since two there would be one: what is near lies in it or beside
/// it.
int OrderClusters::markNear(GlyphNumber number, const QPointF &place, GlyphGrid::Square square) const
{
    for (const int column : {0, -1, 1}) {
        for (const int row : {0, -1, 1}) {
            const int known = m_grid.markIn(number, {square.column + column, square.row + row});
            if (known == GlyphGrid::noMark) {
                continue;
            }
            const QPointF away = place - m_firstPlaces[static_cast<size_t>(known)];
            if (std::abs(away.x()) < orderGlyphSize && std::abs(away.y()) < orderGlyphSize) {
                return known;
            }
        }
    }
    return GlyphGrid::noMark;
}

int OrderClusters::addMark(GlyphNumber number, const QPointF &place, double top)
{
    m_marks.push_back({number, 0, QRectF(place.x(), top, 0, 0), {}});
    m_firstPlaces.push_back(place);
    return static_cast<int>(m_marks.size()) - 1;
}

void OrderClusters::shareOutPlaces()
{
    for (const Joined &joined : m_joined) {
        ++m_marks[static_cast<size_t>(joined.mark)].count;
    }
    for (DrawnMark &mark : m_marks) {
        mark.places.reserve(static_cast<size_t>(mark.count));
    }
    for (const Joined &joined : m_joined) {
        m_marks[static_cast<size_t>(joined.mark)].places.push_back(joined.place);
    }
}

void OrderClusters::moveTo(DrawnMarks *marks, GlyphSprites *sprites)
{
    shareOutPlaces();
    for (DrawnMark &mark : m_marks) {
        const QSizeF size = sprites->size(mark.glyph, mark.count);
        const double lowest = std::max(m_geometry.top, m_geometry.bottom - size.height());
        const double top = std::clamp(mark.box.y(), m_geometry.top, lowest);
        mark.box = QRectF(QPointF(mark.box.x() - size.width() / 2, top), size);
        marks->add(std::move(mark));
    }
    m_marks.clear();
    m_firstPlaces.clear();
    m_joined.clear();
    m_grid = GlyphGrid(m_geometry);
}

} // namespace Terminal
