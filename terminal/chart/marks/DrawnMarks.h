#pragma once

#include "terminal/chart/marks/PlaceList.h"
#include "terminal/chart/marks/glyphs/GlyphSet.h"

#include <QPointF>
#include <QRectF>

#include <optional>
#include <vector>

namespace Terminal {

/// A glyph on the chart.
struct DrawnMark
{
    GlyphNumber glyph = 0;
    int count = 1;
    QRectF box;
    PlaceList::Chain places; ///< see DrawnMarks::placesOf()
};

/// The glyphs of the last repaint: what is drawn is what is hit.
class DrawnMarks
{
public:
    void clear();
    void add(const DrawnMark &mark) { m_marks.push_back(mark); }
    /// One that is added, or is going to be.
    void addPlace(DrawnMark *mark, const QPointF &place) { m_places.append(&mark->places, place); }

    const std::vector<DrawnMark> &all() const { return m_marks; }

    /// The places of the marks that a glyph stands for: where each would have its middle alone.
    PlaceList::Range placesOf(const DrawnMark &mark) const { return m_places.of(mark.places); }

    /// The pixel at which the overlay answers for the mark in it that is nearest to a position, along
    /// the bars first. Requires a place of it.
    QPointF targetNear(const DrawnMark &mark, const QPointF &position) const;

    /// The uppermost glyph at `position`; null when there is none. Valid until the next repaint.
    const DrawnMark *markAt(const QPointF &position) const;

    /// Where to tell the overlay that it was clicked, for a pointer at `position`: the place of the
    /// nearest mark that the glyph there stands for. Nothing when there is no glyph.
    std::optional<QPointF> targetAt(const QPointF &position) const;

private:
    std::vector<DrawnMark> m_marks;
    PlaceList m_places;
};

} // namespace Terminal
