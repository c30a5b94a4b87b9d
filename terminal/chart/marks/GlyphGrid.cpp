#include "terminal/chart/marks/GlyphGrid.h"

#include <algorithm>

namespace Terminal {

namespace {

constexpr int margin = 2; // squares: the neighbours of those at the edge

quint64 keyOf(GlyphNumber number, GlyphGrid::Square square)
{
    constexpr quint64 mask = 0xFFFFFF;
    return ((static_cast<quint64>(square.column) & mask) << 32U) |
           ((static_cast<quint64>(square.row) & mask) << 8U) | static_cast<quint64>(number);
}

} // namespace

GlyphGrid::GlyphGrid(const ChartGeometry &geometry)
    : m_first{squareAt(geometry.left) - margin, squareAt(geometry.top) - margin},
      m_columns(squaresFrom(m_first.column, geometry.right)),
      m_rows(squaresFrom(m_first.row, geometry.bottom))
{
}

unsigned GlyphGrid::squaresFrom(int first, double lastPixel)
{
    return static_cast<unsigned>(std::max(0, squareAt(lastPixel) + margin + 1 - first));
}

void GlyphGrid::put(GlyphNumber number, Square square, int mark)
{
    std::vector<int> &marks = m_marks[static_cast<std::size_t>(number)];
    if (marks.empty()) {
        marks.assign(std::size_t{m_columns} * m_rows + 1, noMark); // never empty again
    }
    if (isOnChart(square)) {
        marks[indexOf(square)] = mark;
    } else {
        m_farAway.insert(keyOf(number, square), mark);
    }
}

int GlyphGrid::markFarAway(GlyphNumber number, Square square) const
{
    return m_farAway.isEmpty() ? noMark : m_farAway.value(keyOf(number, square), noMark);
}

} // namespace Terminal
