#include "tests/tradechartobject/objects/bspoint/BSPointTest.h"

#include <climits>
#include <cmath>

using ::testing::IsEmpty;

namespace {

class BSPointHits : public BSPointTest
{
protected:
    void SetUp() override
    {
        createOnThreeDays();
        hearHistory({{"B", "20240102", "9301500", "1", "100"},
                     {"S", "20240103", "9301500", "1", "100"},
                     {"B", "20240104", "9301500", "1", "100"},
                     {"S", "20240104", "9301500", "1", "100"}});
    }
};

TEST_F(BSPointHits, ReachesFromTheAnchorUpToTwoPixelsBelowTheMarkersTop)
{
    const double anchor = anchorY(12);
    EXPECT_EQ(overlay->hitTest(10, anchor), 0);
    EXPECT_EQ(overlay->hitTest(10, anchor - 14.0), 0);
    EXPECT_EQ(overlay->hitTest(10, anchor - 14.01), -1);
    EXPECT_EQ(overlay->hitTest(10, anchor + 0.01), -1);
}

TEST_F(BSPointHits, FollowsTheHostsMarkerSize)
{
    axis.markerPixels = 30.0;
    EXPECT_EQ(overlay->hitTest(10, anchorY(12) - 28.0), 0);
    EXPECT_EQ(overlay->hitTest(10, anchorY(12) - 28.01), -1);
}

TEST_F(BSPointHits, CountsOnEveryKindOfMarkerAndAnyXOfItsBar)
{
    EXPECT_EQ(overlay->hitTest(4.9, anchorY(11)), 0) << "buy";
    EXPECT_EQ(overlay->hitTest(14.9, anchorY(12)), 0) << "sell";
    EXPECT_EQ(overlay->hitTest(24.9, anchorY(13)), 0) << "both";
}

TEST_F(BSPointHits, MissesABarWithoutMarker)
{
    calc(shanghai, {makeDayBar(20240105), threeDays[0], threeDays[1]}, Korvane::DayPeriod);
    EXPECT_EQ(overlay->hitTest(0, anchorY(11)), -1);
}

TEST_F(BSPointHits, MissesABarWhoseHighIsNoNumber)
{
    calc(shanghai, {makeDayBar(20240102, 9, std::nan(""))}, Korvane::DayPeriod);
    EXPECT_EQ(overlay->hitTest(0, anchorY(11)), -1);
}

class BSPointHitsIndex : public BSPointHits, public ::testing::WithParamInterface<int>
{
};

TEST_P(BSPointHitsIndex, OutsideTheBarsHitsAndListsNothing)
{
    axis.barUnder = [](double) { return GetParam(); };
    EXPECT_EQ(overlay->hitTest(0, anchorY(11)), -1);
    overlay->handleMousePress(0, 0);
    EXPECT_THAT(axis.popups, IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(Indices, BSPointHitsIndex, ::testing::Values(-1, 3, INT_MAX, INT_MIN));

TEST_F(BSPointHits, StaysInsideTheBarsWhenTheMarksReachFurther)
{
    bus().takesMessages = false;
    EXPECT_FALSE(calc(shanghai, {threeDays[0]}, Korvane::DayPeriod));
    axis.barUnder = [](double) { return 2; };
    EXPECT_EQ(overlay->hitTest(0, anchorY(13)), -1);
    overlay->handleMousePress(0, 0);
    EXPECT_THAT(axis.popups, IsEmpty());
}

} // namespace
