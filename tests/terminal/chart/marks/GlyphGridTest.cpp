#include "terminal/chart/marks/GlyphGrid.h"

#include <gtest/gtest.h>

using namespace Terminal;

namespace {

constexpr GlyphNumber waiting = orderGlyph(Korvane::BuyWaiting, EdgeClamp::None);
constexpr GlyphNumber dealt = orderGlyph(Korvane::BuyDealed, EdgeClamp::None);

class GlyphGridTest : public ::testing::Test
{
protected:
    static ChartGeometry chart()
    {
        ChartGeometry geometry;
        geometry.left = 10;
        geometry.right = 410;
        geometry.top = 20;
        geometry.bottom = 220;
        return geometry;
    }

    GlyphGrid m_grid{chart()};
};

TEST_F(GlyphGridTest, FindsWhatWasPutIntoASquareAndNothingBesideIt)
{
    const auto square = GlyphGrid::squareOf({100, 100});
    m_grid.put(waiting, square, 7);
    EXPECT_EQ(m_grid.markIn(waiting, square), 7);
    for (const int column : {-1, 0, 1}) {
        for (const int row : {-1, 0, 1}) {
            if (column != 0 || row != 0) {
                EXPECT_EQ(m_grid.markIn(waiting, {square.column + column, square.row + row}),
                          GlyphGrid::noMark);
            }
        }
    }
}

TEST_F(GlyphGridTest, TellsTheKindsApart)
{
    const auto square = GlyphGrid::squareOf({100, 100});
    m_grid.put(waiting, square, 7);
    EXPECT_EQ(m_grid.markIn(dealt, square), GlyphGrid::noMark);
    m_grid.put(dealt, square, 8);
    EXPECT_EQ(m_grid.markIn(waiting, square), 7);
    EXPECT_EQ(m_grid.markIn(dealt, square), 8);
}

TEST_F(GlyphGridTest, FindsWhatIsOffTheChart)
{
    int mark = 0;
    for (const QPointF place :
         {QPointF(-1e300, 100), QPointF(100, 1e300), QPointF(500, -3000), QPointF(9, 19)}) {
        const auto square = GlyphGrid::squareOf(place);
        EXPECT_EQ(m_grid.markIn(waiting, square), GlyphGrid::noMark);
        m_grid.put(waiting, square, ++mark);
        EXPECT_EQ(m_grid.markIn(waiting, square), mark);
    }
}

TEST(GlyphGrid, HoldsMarksOfAChartWithoutSize)
{
    GlyphGrid grid{ChartGeometry()};
    grid.put(waiting, {40, 40}, 1);
    EXPECT_EQ(grid.markIn(waiting, {40, 40}), 1);
    EXPECT_EQ(grid.markIn(waiting, {0, 0}), GlyphGrid::noMark);
}

} // namespace
