#include "tests/tradechartobject/objects/bspoint/BSPointTest.h"

#include <cfloat>
#include <cmath>

using ::testing::AllOf;
using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::SizeIs;

namespace {

class BSPointPainting : public BSPointTest
{
};

TEST_F(BSPointPainting, PaintsThreeSeriesOverTheHighsAndDoesNotEndThePaint)
{
    createOnThreeDays();
    hearHistory({{"S", "20240103", "9301500", "10.5", "300"}});
    EXPECT_TRUE(paint());
    ASSERT_THAT(painter.calls, SizeIs(3));
    for (std::size_t series = 0; series < 3; ++series) {
        EXPECT_EQ(painter.calls[series].kind, FakePainter::Call::MarkerSeries);
        EXPECT_THAT(painter.calls[series].prices, ElementsAre(11, 12, 13));
        EXPECT_THAT(painter.calls[series].ints, ElementsAre(0, static_cast<int>(2 * series), 1));
    }
    EXPECT_TRUE(std::isnan(painter.calls[1].values[0]));
    EXPECT_EQ(painter.calls[1].values[1], 1.0);
}

TEST_F(BSPointPainting, PaintsTheBarsThatAHostBringsInsideThePaint)
{
    createOnThreeDays();
    painter.onMarkerSeries = [this] {
        if (painter.calls.size() == 1) {
            calc(shanghai, std::vector<Korvane::AnalyData>(100, makeDayBar(20240103, 9, 15)),
                 Korvane::DayPeriod);
        }
    };
    EXPECT_TRUE(paint());
    ASSERT_THAT(painter.calls, SizeIs(3));
    EXPECT_THAT(painter.calls[0].prices, ElementsAre(11, 12, 13));
    for (std::size_t later = 1; later < 3; ++later) {
        EXPECT_THAT(painter.calls[later].prices, AllOf(SizeIs(100), Each(15)));
    }
}

TEST_F(BSPointPainting, NeverWidensThePriceScale)
{
    createOnThreeDays();
    hearHistory({{"B", "20240102", "9301500", "1", "100"}, {"S", "20240103", "9301500", "50", "100"}});
    EXPECT_EQ(drawn(), "BS ");
    int untouched = 4711;
    EXPECT_EQ(overlay->maximizeValue(untouched), DBL_MIN);
    EXPECT_EQ(overlay->minimizeValue(untouched), DBL_MAX);
    EXPECT_EQ(untouched, 4711);
    EXPECT_TRUE(overlay->calcRatio(1, 2));
}

} // namespace
