#include "terminal/chart/marks/OrderClusters.h"

#include "terminal/chart/marks/glyphs/GlyphSprites.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace Terminal {

namespace {

/// The number of the square of a glyph's size that a pixel is in, along one axis.
int cellOf(double pixel)
{
    constexpr double farAway = 1e6; // beyond any screen: an overlay may name any price
    return static_cast<int>(std::floor(std::clamp(pixel, -farAway, farAway) / orderGlyphSize));
}

quint64 cellKey(GlyphNumber number, int column, int row)
{
    constexpr quint64 mask = 0xFFFFFF;
    return ((static_cast<quint64>(column) & mask) << 32U) | ((static_cast<quint64>(row) & mask) << 8U) |
           static_cast<quint64>(number);
}

} // namespace

void OrderClusters::add(int bar, double price, int kind, bool atLow)
{
    const double x = m_geometry.barToX(bar);
    const double y = m_geometry.priceToY(price);
    const EdgeClamp clamp = atLow                           ? EdgeClamp::AtBottom
                            : price >= m_geometry.highPrice ? EdgeClamp::AtTop
                                                            : EdgeClamp::None;
    const GlyphNumber number = orderGlyph(kind, clamp);
    const double top = atLow ? y - orderGlyphSize : y;
    const QPointF place(x, top + orderGlyphSize / 2);
    if (DrawnMark *const known = markNear(number, place)) {
        ++known->count;
        known->places.push_back(place);
        return;
    }
    m_cells.insert(cellKey(number, cellOf(place.x()), cellOf(place.y())), m_marks.size());
    m_marks.push_back({number, 1, QRectF(x, top, 0, 0), {place}});
}

/// A square has one mark of a kind at most, since two there would be one: what is near lies in it or beside
/// it.
DrawnMark *OrderClusters::markNear(GlyphNumber number, const QPointF &place)
{
    for (const int column : {0, -1, 1}) {
        for (const int row : {0, -1, 1}) {
            const auto known =
                m_cells.constFind(cellKey(number, cellOf(place.x()) + column, cellOf(place.y()) + row));
            if (known == m_cells.constEnd()) {
                continue;
            }
            const QPointF away = place - m_marks[*known].places.front();
            if (std::abs(away.x()) < orderGlyphSize && std::abs(away.y()) < orderGlyphSize) {
                return &m_marks[*known];
            }
        }
    }
    return nullptr;
}

void OrderClusters::moveTo(DrawnMarks *marks, GlyphSprites *sprites)
{
    for (DrawnMark &mark : m_marks) {
        const QSizeF size = sprites->size(mark.glyph, mark.count);
        const double lowest = std::max(m_geometry.top, m_geometry.bottom - size.height());
        const double top = std::clamp(mark.box.y(), m_geometry.top, lowest);
        mark.box = QRectF(QPointF(mark.box.x() - size.width() / 2, top), size);
        marks->add(std::move(mark));
    }
    m_marks.clear();
    m_cells.clear();
}

} // namespace Terminal
