#include "terminal/chart/marks/OrderClusters.h"

#include "terminal/chart/marks/glyphs/GlyphSprites.h"

#include <gmock/gmock.h>

namespace Terminal {
namespace {

using Korvane::BuyDealed;
using Korvane::BuyWaiting;

/// A hundred bars of ten pixels, prices from 0 to 100 of five pixels each.
constexpr ChartGeometry geometry{{-0.5, 99.5}, 0, 1000, 0, 100, 0, 500};

class OrderClustersTest : public ::testing::Test
{
protected:
    OrderClustersTest() { m_sprites.setLook(makeTheme(ThemeKind::Dark, RiseColour::Red), 1); }

    const std::vector<DrawnMark> &drawn()
    {
        m_clusters.finish(&m_sprites);
        return m_marks.all();
    }

    GlyphSprites m_sprites;
    DrawnMarks m_marks;
    OrderClusters m_clusters{geometry, &m_marks};
};

TEST_F(OrderClustersTest, HangAMarkFromItsPriceInTheMiddleOfItsBar)
{
    m_clusters.add(10, 50, BuyWaiting, false);

    ASSERT_EQ(drawn().size(), 1U);
    const DrawnMark &mark = drawn().front();
    EXPECT_DOUBLE_EQ(mark.box.top(), geometry.priceToY(50));
    EXPECT_DOUBLE_EQ(mark.box.center().x(), geometry.barToX(10));
    EXPECT_EQ(mark.glyph, orderGlyph(BuyWaiting, EdgeClamp::None));
}

TEST_F(OrderClustersTest, PutAMarkOnTheLowerEdgeWhenItsPriceIsBelowTheScale)
{
    m_clusters.add(10, 0, BuyWaiting, true);

    EXPECT_DOUBLE_EQ(drawn().front().box.bottom(), geometry.bottom);
    EXPECT_EQ(drawn().front().glyph, orderGlyph(BuyWaiting, EdgeClamp::AtBottom));
}

TEST_F(OrderClustersTest, KeepAMarkInThePaneWhosePriceIsAtTheLowerEdge)
{
    m_clusters.add(10, 1, BuyWaiting, false); // five pixels above the edge

    EXPECT_DOUBLE_EQ(drawn().front().box.bottom(), geometry.bottom);
    EXPECT_DOUBLE_EQ(m_marks.placesOf(drawn().front()).begin()->y(),
                     geometry.priceToY(1) + orderGlyphSize / 2)
        << "a click goes where the overlay has it";
}

TEST_F(OrderClustersTest, ShowThatAPriceIsAboveTheScale)
{
    m_clusters.add(10, 100, BuyWaiting, false);

    EXPECT_EQ(drawn().front().glyph, orderGlyph(BuyWaiting, EdgeClamp::AtTop));
}

TEST_F(OrderClustersTest, JoinAMarkNearTheFirstOfItsKind)
{
    m_clusters.add(10, 50, BuyWaiting, false);
    m_clusters.add(11, 51, BuyWaiting, false); // ten and five pixels away

    ASSERT_EQ(drawn().size(), 1U);
    EXPECT_EQ(drawn().front().count, 2);
    const PlaceList::Range places = m_marks.placesOf(drawn().front());
    EXPECT_EQ(std::distance(places.begin(), places.end()), 2);
}

TEST_F(OrderClustersTest, MeasureFromTheFirstMarkAndNotFromTheLast)
{
    for (const int bar : {10, 11, 12}) { // the third is near the second, and 20 pixels from the first
        m_clusters.add(bar, 50, BuyWaiting, false);
    }

    ASSERT_EQ(drawn().size(), 2U);
    EXPECT_EQ(drawn().front().count, 2);
    EXPECT_EQ(drawn().back().count, 1);
}

TEST_F(OrderClustersTest, KeepKindsApart)
{
    m_clusters.add(10, 50, BuyWaiting, false);
    m_clusters.add(10, 50, BuyDealed, false);

    EXPECT_EQ(drawn().size(), 2U);
}

TEST_F(OrderClustersTest, TakeAnyPriceThatAnOverlayNames)
{
    for (const double price : {1e300, -1e300, 1e300}) {
        m_clusters.add(10, price, BuyWaiting, false);
    }

    EXPECT_EQ(drawn().size(), 2U);
}

TEST_F(OrderClustersTest, AreEmptyWhenTheyAreFinished)
{
    m_clusters.add(10, 50, BuyWaiting, false);
    m_clusters.finish(&m_sprites);
    m_marks.clear();

    EXPECT_TRUE(drawn().empty());
}

} // namespace
} // namespace Terminal
