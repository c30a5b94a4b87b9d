#pragma once

#include "terminal/chart/axes/ChartGeometry.h"
#include "terminal/chart/marks/glyphs/GlyphSprites.h"

#include <QPointF>

#include <optional>
#include <vector>

class QPainter;

namespace Terminal {

class VisibleBars;

/// Marks of one overlay that fall into one pixel column and stand on the same side of their bars.
struct MarkColumn
{
    int count = 0;
    bool buys = false;
    bool sells = false;
    QPointF anchor; ///< of the first of them: the middle of its bar, at its price
};

/// A glyph on the chart.
struct DrawnMark
{
    GlyphNumber glyph = 0;
    int count = 1;
    QRectF box;
    std::vector<QPointF> places; ///< of the marks behind it: where each would have its middle alone

    /// The pixel at which the overlay answers for the mark behind it that is nearest to a position, along
    /// the bars first.
    QPointF targetNear(const QPointF &position) const;
};

/// The glyphs of the last repaint: what is drawn is what is hit.
class DrawnMarks
{
public:
    void clear() { m_marks.clear(); }
    void add(DrawnMark mark) { m_marks.push_back(std::move(mark)); }
    const std::vector<DrawnMark> &all() const { return m_marks; }

    /// The uppermost glyph at `position`; null when there is none. Valid until the next repaint.
    const DrawnMark *markAt(const QPointF &position) const;

    /// Where to tell the overlay that it was clicked, for a pointer at `position`: the place of the
    /// nearest mark behind the glyph there. Nothing when there is no glyph.
    std::optional<QPointF> targetAt(const QPointF &position) const;

private:
    std::vector<DrawnMark> m_marks;
};

/// Collects the marks of one repaint and paints them, those closer than a glyph merged into one with
/// their count. Marks of bars stand clear of every candle beside them; marks of orders stand for a price and
/// hang at it, over a candle if need be.
class MarkPainter
{
public:
    /// All are borrowed for the repaint.
    MarkPainter(const ChartGeometry &geometry, const VisibleBars &bars, GlyphSprites *sprites,
                DrawnMarks *marks);

    /// A mark above or below a bar, as `style` says, at the high or low `price`.
    void addSeriesMark(int bar, double price, int style);
    /// An order's mark hanging from its price, or standing on it at the bottom of the scale. It joins a mark
    /// of its kind that was added before, when its middle is less than a glyph's width and height from the
    /// first one's.
    void addOrderMark(int bar, double price, int kind, bool atLow);
    void paint(QPainter *painter);

private:
    using Columns = std::vector<MarkColumn>;

    DrawnMark *orderMarkNear(GlyphNumber number, const QPointF &place);
    void mergeColumns(const Columns &columns, MarkSide side);
    void addCluster(const Columns &columns, size_t first, size_t last, MarkSide side);
    double clearOfCandles(const QRectF &box, double y, MarkSide side) const;

    const ChartGeometry &m_geometry;
    const VisibleBars &m_bars;
    const double m_barWidth; ///< kept, because there may be a mark on each of many thousand bars
    GlyphSprites *m_sprites;
    DrawnMarks *m_marks;
    Columns m_above;
    Columns m_below;
    QHash<quint64, size_t> m_orderCells; ///< square of a glyph's size, and kind, to the one mark in it
    std::vector<DrawnMark> m_orders;
};

} // namespace Terminal
