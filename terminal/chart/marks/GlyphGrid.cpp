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
    std::transform(around.begin(), around.end(), m_steps.begin(), [this](const Square &step) {
        return static_cast<std::size_t>(step.column) * m_rows + static_cast<std::size_t>(step.row);
    });
}

unsigned GlyphGrid::squaresFrom(int first, double lastPixel)
{
    return static_cast<unsigned>(std::max(0, squareAt(lastPixel) + margin + 1 - first));
}

void GlyphGrid::put(GlyphNumber number, Square square, int mark)
{
    Kind &kind = m_kinds[static_cast<std::size_t>(number)];
    if (kind.marks.empty()) {
        const std::size_t size = std::size_t{m_columns} * m_rows + 1; // never empty again
        kind.marks.assign(size, noMark);
        kind.taken.assign(size, 0);
    }
    if (isOnChart(square)) {
        kind.marks[indexOf(square)] = mark;
    } else {
        m_farAway.insert(keyOf(number, square), mark);
    }
    tellAround(&kind, square);
}

void GlyphGrid::tellAround(Kind *kind, Square square) const
{
    for (unsigned number = 0; number < around.size(); ++number) {
        const Square from{square.column - around.at(number).column, square.row - around.at(number).row};
        if (isOnChart(from)) {
            kind->taken[indexOf(from)] |= static_cast<std::uint16_t>(1U << number);
        }
    }
}

int GlyphGrid::markFarAway(GlyphNumber number, Square square) const
{
    return m_farAway.isEmpty() ? noMark : m_farAway.value(keyOf(number, square), noMark);
}

} // namespace Terminal
