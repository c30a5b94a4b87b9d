#pragma once

#include "terminal/chart/axes/ChartGeometry.h"
#include "terminal/chart/marks/glyphs/GlyphSet.h"

#include <QHash>
#include <QPointF>

#include <algorithm>
#include <array>
#include <vector>

namespace Terminal {

/// The squares of an order glyph's size that cover a chart, and which mark of each kind is in them. Those on
/// the chart are looked up by their place, without a search: there may be a mark on each of many thousand
/// bars.
class GlyphGrid
{
public:
    /// A square, counted from the corner of the canvas.
    struct Square
    {
        int column;
        int row;
    };

    static constexpr int noMark = -1;

    /// `geometry` is read at once.
    explicit GlyphGrid(const ChartGeometry &geometry);

    static Square squareOf(const QPointF &place) { return {squareAt(place.x()), squareAt(place.y())}; }

    /// The first mark in the square and those around it that `isMeant`, or noMark.
    template <typename IsMeant>
    int firstAround(GlyphNumber number, Square square, IsMeant isMeant) const
    {
        for (const int column : {0, -1, 1}) {
            for (const int row : {0, -1, 1}) {
                const int mark = markIn(number, {square.column + column, square.row + row});
                if (mark != noMark && isMeant(mark)) {
                    return mark;
                }
            }
        }
        return noMark;
    }

    /// The mark that was put there, or noMark.
    int markIn(GlyphNumber number, Square square) const
    {
        const std::vector<int> &marks = m_marks[static_cast<std::size_t>(number)];
        if (marks.empty()) {
            return noMark;
        }
        return isOnChart(square) ? marks[indexOf(square)] : markFarAway(number, square);
    }

    void put(GlyphNumber number, Square square, int mark);

private:
    /// Rounds down. Counted from far away, where no pixel is below zero: to cut a number is quicker than to
    /// round it.
    static int squareAt(double pixel)
    {
        constexpr int farSquares = 62500;
        constexpr double farAway = farSquares * orderGlyphSize; // beyond any screen
        const double held = std::min(std::max(pixel, -farAway), farAway);
        return static_cast<int>((held + farAway) / orderGlyphSize) - farSquares;
    }

    static unsigned squaresFrom(int first, double lastPixel);

    bool isOnChart(Square square) const
    {
        return static_cast<unsigned>(square.column - m_first.column) < m_columns &&
               static_cast<unsigned>(square.row - m_first.row) < m_rows;
    }

    std::size_t indexOf(Square square) const
    {
        return static_cast<std::size_t>(square.column - m_first.column) * m_rows +
               static_cast<std::size_t>(square.row - m_first.row);
    }

    int markFarAway(GlyphNumber number, Square square) const;

    Square m_first;
    unsigned m_columns;
    unsigned m_rows;
    std::array<std::vector<int>, glyphCount> m_marks; ///< by kind and square; empty for kinds without a mark
    QHash<quint64, int> m_farAway;                    ///< an overlay may name any price
};

} // namespace Terminal
