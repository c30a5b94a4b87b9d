#include "terminal/chart/marks/OrderClusters.h"

#include "terminal/chart/marks/glyphs/GlyphSprites.h"

#include <algorithm>
#include <cmath>

namespace Terminal {

OrderClusters::OrderClusters(const ChartGeometry &geometry, DrawnMarks *marks)
    : m_geometry(geometry),
      m_drawn(marks),
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
    DrawnMark &joined = m_marks[static_cast<size_t>(mark)];
    ++joined.count;
    m_drawn->addPlace(&joined, place);
}

/// A square has one mark of a kind at most, since two there would be one: what is near lies in it or beside
/// it.
int OrderClusters::markNear(GlyphNumber number, const QPointF &place, GlyphGrid::Square square) const
{
    return m_grid.firstAround(number, square, [this, &place](int known) {
        const QPointF away = place - m_firstPlaces[static_cast<size_t>(known)];
        return std::abs(away.x()) < orderGlyphSize && std::abs(away.y()) < orderGlyphSize;
    });
}

int OrderClusters::addMark(GlyphNumber number, const QPointF &place, double top)
{
    m_marks.push_back({number, 0, QRectF(place.x(), top, 0, 0), {}});
    m_firstPlaces.push_back(place);
    return static_cast<int>(m_marks.size()) - 1;
}

void OrderClusters::finish(GlyphSprites *sprites)
{
    for (DrawnMark &mark : m_marks) {
        const QSizeF size = sprites->size(mark.glyph, mark.count);
        const double lowest = std::max(m_geometry.top, m_geometry.bottom - size.height());
        const double top = std::clamp(mark.box.y(), m_geometry.top, lowest);
        mark.box = QRectF(QPointF(mark.box.x() - size.width() / 2, top), size);
        m_drawn->add(mark);
    }
    m_marks.clear();
    m_firstPlaces.clear();
    m_grid = GlyphGrid(m_geometry);
}

} // namespace Terminal
