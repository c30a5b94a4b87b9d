#pragma once

#include "terminal/chart/marks/DrawnMarks.h"
#include "terminal/chart/marks/OrderClusters.h"
#include "terminal/chart/marks/SeriesClusters.h"
#include "terminal/chart/marks/glyphs/GlyphSprites.h"

class QPainter;

namespace Terminal {

/// Collects the marks of one repaint and paints them, those closer than a glyph merged into one with
/// their count.
class MarkPainter
{
public:
    /// All are borrowed for the repaint.
    MarkPainter(const ChartGeometry &geometry, const VisibleBars &bars, GlyphSprites *sprites,
                DrawnMarks *marks);

    /// A mark above or below a bar, as `style` says, at the high or low `price`.
    void addSeriesMark(int bar, double price, int style) { m_series.add(bar, price, style); }
    /// An order's mark hanging from its price, or standing on it at the bottom of the scale.
    void addOrderMark(int bar, double price, int kind, bool atLow) { m_orders.add(bar, price, kind, atLow); }
    void paint(QPainter *painter);

private:
    SeriesClusters m_series;
    OrderClusters m_orders;
    GlyphSprites *m_sprites;
    DrawnMarks *m_marks;
};

} // namespace Terminal
