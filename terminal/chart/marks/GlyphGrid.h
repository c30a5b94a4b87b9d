#pragma once

#include "terminal/chart/axes/ChartGeometry.h"
#include "terminal/chart/marks/glyphs/GlyphSet.h"

#include <QHash>
#include <QPointF>
#include <QtAlgorithms>

#include <algorithm>
#include <array>
#include <cstdint>
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

    /// The first mark in the square and those around it that `isMeant`, or noMark. On the chart, that of the
    /// square itself is not asked about: whatever lies there is less than a glyph's size away from it.
    template <typename IsMeant>
    int firstAround(GlyphNumber number, Square square, IsMeant isMeant) const
    {
        const Kind &kind = m_kinds[static_cast<std::size_t>(number)];
        if (kind.marks.empty()) {
            return noMark;
        }
        return isInside(square) ? firstTaken(kind, indexOf(square), isMeant)
                                : firstAtEdge(number, square, isMeant);
    }

    /// The mark that was put there, or noMark.
    int markIn(GlyphNumber number, Square square) const
    {
        const Kind &kind = m_kinds[static_cast<std::size_t>(number)];
        if (kind.marks.empty()) {
            return noMark;
        }
        return isOnChart(square) ? kind.marks[indexOf(square)] : markFarAway(number, square);
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

    /// The marks of one kind, by square. Both lists are empty where there is none.
    struct Kind
    {
        std::vector<int> marks;
        std::vector<std::uint16_t> taken; ///< a bit for each square around that has a mark
    };

    /// A square and those around it, in the order of the search.
    static constexpr std::array<Square, 9> around = {
        {{0, 0}, {0, -1}, {0, 1}, {-1, 0}, {-1, -1}, {-1, 1}, {1, 0}, {1, -1}, {1, 1}}};

    /// Requires isInside(). Squares without a mark, nearly all, are not looked at.
    template <typename IsMeant>
    int firstTaken(const Kind &kind, std::size_t square, IsMeant isMeant) const
    {
        constexpr unsigned itself = 1;
        unsigned taken = kind.taken[square];
        if ((taken & itself) != 0) {
            return kind.marks[square];
        }
        for (; taken != 0; taken &= taken - 1) {
            const int mark = kind.marks[square + m_steps[qCountTrailingZeroBits(taken)]];
            if (isMeant(mark)) {
                return mark;
            }
        }
        return noMark;
    }

    template <typename IsMeant>
    int firstAtEdge(GlyphNumber number, Square square, IsMeant isMeant) const
    {
        for (const Square &step : around) {
            const int mark = markIn(number, {square.column + step.column, square.row + step.row});
            if (mark != noMark && isMeant(mark)) {
                return mark;
            }
        }
        return noMark;
    }

    static unsigned squaresFrom(int first, double lastPixel);

    bool isOnChart(Square square) const
    {
        return static_cast<unsigned>(square.column - m_first.column) < m_columns &&
               static_cast<unsigned>(square.row - m_first.row) < m_rows;
    }

    /// True when all squares around are on the chart, too.
    bool isInside(Square square) const
    {
        const int column = square.column - m_first.column;
        const int row = square.row - m_first.row;
        return column > 0 && column + 1 < static_cast<int>(m_columns) && row > 0 &&
               row + 1 < static_cast<int>(m_rows);
    }

    std::size_t indexOf(Square square) const
    {
        return static_cast<std::size_t>(square.column - m_first.column) * m_rows +
               static_cast<std::size_t>(square.row - m_first.row);
    }

    void tellAround(Kind *kind, Square square) const;
    int markFarAway(GlyphNumber number, Square square) const;

    Square m_first;
    unsigned m_columns;
    unsigned m_rows;
    std::array<std::size_t, 9> m_steps{}; ///< from a square to those around it, backwards by overflow
    std::array<Kind, glyphCount> m_kinds;
    QHash<quint64, int> m_farAway; ///< an overlay may name any price
};

} // namespace Terminal
