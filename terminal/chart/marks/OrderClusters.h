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
    /// `geometry` is borrowed.
    explicit OrderClusters(const ChartGeometry &geometry);

    /// A mark that hangs from its price, or stands on it at the bottom of the scale.
    void add(int bar, double price, int kind, bool atLow);
    /// Ends the collection.
    void moveTo(DrawnMarks *marks, GlyphSprites *sprites);

private:
    /// A place and the mark that it joined: one list for all, for each place to be a step to the next.
    struct Joined
    {
        int mark;
        QPointF place;
    };

    int markNear(GlyphNumber number, const QPointF &place, GlyphGrid::Square square) const;
    int addMark(GlyphNumber number, const QPointF &place, double top);
    void shareOutPlaces();

    const ChartGeometry &m_geometry;
    const double m_barWidth; ///< kept, because there may be a mark on each of many thousand bars
    GlyphGrid m_grid;        ///< has each of m_marks where it is
    std::vector<DrawnMark> m_marks;
    std::vector<QPointF> m_firstPlaces; ///< by mark
    std::vector<Joined> m_joined;
};

} // namespace Terminal
