#pragma once

#include "terminal/chart/axes/ChartGeometry.h"
#include "terminal/chart/marks/DrawnMarks.h"
#include "terminal/chart/marks/GlyphGrid.h"

#include <vector>

namespace Terminal {

class GlyphSprites;

/// Marks of orders of one repaint. Each stands for a price and hangs at it, over a candle if need be, and
/// stays in the price pane where there is less room below the price than the mark is high. One joins a mark
/// of its kind that was added before, when its middle is less than a glyph's width and height from the first
/// one's.
class OrderClusters
{
public:
    /// Both are borrowed; `marks` is not to be cleared before finish().
    OrderClusters(const ChartGeometry &geometry, DrawnMarks *marks);

    /// A mark that hangs from its price, or stands on it at the bottom of the scale.
    void add(int bar, double price, int kind, bool atLow);
    /// Ends the collection: its marks are among those drawn.
    void finish(GlyphSprites *sprites);

private:
    int markNear(GlyphNumber number, const QPointF &place, GlyphGrid::Square square) const;
    int addMark(GlyphNumber number, const QPointF &place, double top);

    const ChartGeometry &m_geometry;
    DrawnMarks *m_drawn;
    const double m_barWidth; ///< kept, because there may be a mark on each of many thousand bars
    GlyphGrid m_grid;        ///< has each of m_marks where it is
    std::vector<DrawnMark> m_marks;
    std::vector<QPointF> m_firstPlaces; ///< by mark
};

} // namespace Terminal
