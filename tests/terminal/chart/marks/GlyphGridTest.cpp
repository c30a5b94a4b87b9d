#include "terminal/chart/marks/GlyphGrid.h"

#include <gtest/gtest.h>

#include <random>

using namespace Terminal;

namespace {

bool any(int /*mark*/)
{
    return true;
}

/// The first mark of the square and those around it, looked up one by one.
int firstOfNine(const GlyphGrid &grid, GlyphNumber number, GlyphGrid::Square square)
{
    for (const int column : {0, -1, 1}) {
        for (const int row : {0, -1, 1}) {
            const int mark = grid.markIn(number, {square.column + column, square.row + row});
            if (mark != GlyphGrid::noMark) {
                return mark;
            }
        }
    }
    return GlyphGrid::noMark;
}

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

TEST_F(GlyphGridTest, FindsTheFirstMarkAroundEachSquareOnTheChartAtItsEdgesAndBeyond)
{
    constexpr int marks = 150;
    std::mt19937 random(5);
    std::uniform_int_distribution<int> column(-6, 34);
    std::uniform_int_distribution<int> row(-6, 22);
    for (int mark = 0; mark < marks; ++mark) {
        m_grid.put(mark % 2 == 0 ? waiting : dealt, {column(random), row(random)}, mark);
    }
    for (GlyphGrid::Square square{-8, 0}; square.column <= 36; ++square.column) {
        for (square.row = -8; square.row <= 24; ++square.row) {
            for (const GlyphNumber number : {waiting, dealt}) {
                ASSERT_EQ(m_grid.firstAround(number, square, any), firstOfNine(m_grid, number, square))
                    << square.column << ", " << square.row;
            }
        }
    }
}

TEST_F(GlyphGridTest, PassesOverMarksAroundThatAreNotMeant)
{
    const auto square = GlyphGrid::squareOf({100, 100});
    m_grid.put(waiting, {square.column - 1, square.row}, 1);
    m_grid.put(waiting, {square.column + 1, square.row}, 2);
    const auto isSecond = [](int mark) { return mark == 2; };
    EXPECT_EQ(m_grid.firstAround(waiting, square, isSecond), 2);
    EXPECT_EQ(m_grid.firstAround(waiting, square, [](int) { return false; }), GlyphGrid::noMark);
}

TEST(GlyphGrid, HoldsMarksOfAChartWithoutSize)
{
    GlyphGrid grid{ChartGeometry()};
    grid.put(waiting, {40, 40}, 1);
    EXPECT_EQ(grid.markIn(waiting, {40, 40}), 1);
    EXPECT_EQ(grid.markIn(waiting, {0, 0}), GlyphGrid::noMark);
}

} // namespace
