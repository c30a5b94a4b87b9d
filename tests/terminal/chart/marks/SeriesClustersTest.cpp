#include "terminal/chart/marks/SeriesClusters.h"

#include "terminal/chart/bars/VisibleBars.h"
#include "terminal/chart/marks/glyphs/GlyphSprites.h"

#include <gmock/gmock.h>

namespace Terminal {
namespace {

using Korvane::BuyAbove;
using Korvane::BuyBelow;
using Korvane::SellAbove;

/// A hundred bars of ten pixels between the prices 40 and 60, on a scale from 0 to 100 of five pixels each.
constexpr ChartGeometry seriesGeometry{{-0.5, 99.5}, 0, 1000, 0, 100, 0, 500};
constexpr double low = 40;
constexpr double high = 60;

class SeriesClustersTest : public ::testing::Test
{
protected:
    SeriesClustersTest()
    {
        m_sprites.setLook(makeTheme(ThemeKind::Dark, RiseColour::Red), 1);
        m_bars.update(Bars(100, {20240102, 0, low, high, low, high, 1000}), seriesGeometry.span,
                      seriesGeometry.right);
    }

    const std::vector<DrawnMark> &drawn()
    {
        m_clusters.moveTo(&m_marks, &m_sprites);
        return m_marks.all();
    }

    GlyphSprites m_sprites;
    DrawnMarks m_marks;
    VisibleBars m_bars;
    SeriesClusters m_clusters{seriesGeometry, m_bars};
};

TEST_F(SeriesClustersTest, PutAMarkAboveTheHighOrBelowTheLowOfItsBar)
{
    m_clusters.add(10, high, BuyAbove);
    m_clusters.add(50, low, BuyBelow);

    ASSERT_EQ(drawn().size(), 2U);
    EXPECT_DOUBLE_EQ(drawn().front().box.bottom(), seriesGeometry.priceToY(high));
    EXPECT_DOUBLE_EQ(drawn().back().box.top(), seriesGeometry.priceToY(low));
    EXPECT_NEAR(drawn().front().box.center().x(), seriesGeometry.barToX(10), 0.5);
}

TEST_F(SeriesClustersTest, ClearTheCandlesBesideTheirBar)
{
    m_clusters.add(10, low, BuyAbove); // as wide as its neighbours, whose highs are higher

    EXPECT_DOUBLE_EQ(drawn().front().box.bottom(), seriesGeometry.priceToY(high));
}

TEST_F(SeriesClustersTest, MakeOneOfNeighboursOnOneSide)
{
    m_clusters.add(10, high, BuyAbove);
    m_clusters.add(11, high, BuyAbove);

    ASSERT_EQ(drawn().size(), 1U);
    EXPECT_EQ(drawn().front().count, 2);
    EXPECT_EQ(drawn().front().glyph, seriesGlyph(TradeKind::Buy, MarkSide::Above));
}

TEST_F(SeriesClustersTest, LeaveTwoThatStandClearOfEachOther)
{
    m_clusters.add(10, high, BuyAbove);
    m_clusters.add(14, high, BuyAbove);

    EXPECT_EQ(drawn().size(), 2U);
}

TEST_F(SeriesClustersTest, SayThatBothSidesWereTraded)
{
    m_clusters.add(10, high, BuyAbove);
    m_clusters.add(11, high, SellAbove);

    ASSERT_EQ(drawn().size(), 1U);
    EXPECT_EQ(drawn().front().glyph, seriesGlyph(TradeKind::Both, MarkSide::Above));
}

TEST_F(SeriesClustersTest, NeverMakeOneOfMarksAboveAndBelow)
{
    m_clusters.add(10, high, BuyAbove);
    m_clusters.add(10, low, BuyBelow);

    EXPECT_EQ(drawn().size(), 2U);
}

TEST_F(SeriesClustersTest, StayInsideThePaneAtItsTop)
{
    m_clusters.add(10, 100, BuyAbove);

    EXPECT_GE(drawn().front().box.top(), seriesGeometry.top);
}

} // namespace
} // namespace Terminal
