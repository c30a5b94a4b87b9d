#pragma once

#include "terminal/chart/marks/glyphs/GlyphSet.h"

#include <QPointF>
#include <QRectF>

#include <optional>
#include <utility>
#include <vector>

namespace Terminal {

/// A glyph on the chart.
struct DrawnMark
{
    GlyphNumber glyph = 0;
    int count = 1;
    QRectF box;
    std::vector<QPointF> places; ///< of the marks it stands for: where each would have its middle alone

    /// The pixel at which the overlay answers for the mark in it that is nearest to a position, along
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
    /// nearest mark that the glyph there stands for. Nothing when there is no glyph.
    std::optional<QPointF> targetAt(const QPointF &position) const;

private:
    std::vector<DrawnMark> m_marks;
};

} // namespace Terminal
