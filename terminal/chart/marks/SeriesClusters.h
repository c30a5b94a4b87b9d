#pragma once

#include "terminal/chart/axes/ChartGeometry.h"
#include "terminal/chart/marks/DrawnMarks.h"

#include <vector>

namespace Terminal {

class GlyphSprites;
class VisibleBars;

/// Marks above or below bars of one repaint. Those closer than a glyph on the same side become one with their
/// count, which stands clear of every candle beside it.
class SeriesClusters
{
public:
    /// Both are borrowed.
    SeriesClusters(const ChartGeometry &geometry, const VisibleBars &bars);

    /// A mark at the high or low `price` of a bar; requires isSeriesStyle().
    void add(int bar, double price, int style);
    void moveTo(DrawnMarks *marks, GlyphSprites *sprites);

private:
    /// The marks that fall into one pixel column.
    struct Column
    {
        int count = 0;
        bool buys = false;
        bool sells = false;
        QPointF anchor; ///< of the first of them: the middle of its bar, at its price
    };
    using Columns = std::vector<Column>;

    void merge(const Columns &columns, MarkSide side, DrawnMarks *marks, GlyphSprites *sprites) const;
    DrawnMark cluster(const Columns &columns, size_t first, size_t last, MarkSide side, DrawnMarks *marks,
                      GlyphSprites *sprites) const;
    QRectF placedBox(const QSizeF &size, double centre, double y, MarkSide side) const;
    double clearOfCandles(const QRectF &box, double y, MarkSide side) const;

    const ChartGeometry &m_geometry;
    const VisibleBars &m_bars;
    const double m_barWidth; ///< kept, because there may be a mark on each of many thousand bars
    Columns m_above;
    Columns m_below;
};

} // namespace Terminal
