#include "tests/tradechartobject/objects/ccharttradeobject/CChartTradeObjectTest.h"

using ::testing::SizeIs;

namespace {

class CChartTradeObjectHostEnds : public CChartTradeObjectTest
{
};

TEST_F(CChartTradeObjectHostEnds, IsDestroyedByTheHostInsideThePopup)
{
    createMarkers();
    hearHistory({buy(10)});
    recalc();
    axis.onPopup = [this] {
        destroy();
        return 0;
    };
    listAt(0, 10.5, 1);
    EXPECT_EQ(bus().endPointCount(), 0);
}

TEST_F(CChartTradeObjectHostEnds, IsDestroyedByTheHostWhileItPlacesTheCost)
{
    createLine(R"({"costprice":"12.5"})");
    axis.pixelOf = [this](double) {
        destroy();
        return 0.0;
    };
    EXPECT_EQ(overlay->hitTest(0, 0.0), 0);
    EXPECT_EQ(bus().endPointCount(), 0);
}

TEST_F(CChartTradeObjectHostEnds, IsDestroyedByTheHostWhileTheHistoryQuestionGoesOut)
{
    create(tradeMarkers);
    bus().duringSend = [this] { destroy(); };
    EXPECT_TRUE(calc(shanghai, threeDays, Korvane::DayPeriod));
    EXPECT_EQ(bus().endPointCount(), 0);
}

TEST_F(CChartTradeObjectHostEnds, IsDestroyedByAnEventWhileItWaitsForTheCost)
{
    create(costLine);
    bus().answerRequest = [this](const RecordedBus::Message &) {
        destroy();
        return QByteArray(R"({"costprice":"12.5"})");
    };
    EXPECT_TRUE(calc(shanghai, threeDays, Korvane::DayPeriod));
    EXPECT_EQ(bus().endPointCount(), 0);
}

TEST_F(CChartTradeObjectHostEnds, IsDestroyedByAnEventWhileItWaitsForTodaysTrades)
{
    createMarkers();
    bus().answerRequest = [this](const RecordedBus::Message &) {
        destroy();
        return todaysAnswer({buy(10)});
    };
    hearNotification();
    EXPECT_EQ(bus().endPointCount(), 0);
}

TEST_F(CChartTradeObjectHostEnds, IsDestroyedInsideANotificationThatComesWhileItWaits)
{
    createMarkers();
    bus().answerRequest = [this](const RecordedBus::Message &) {
        requests().size() < 5 ? hearNotification() : destroy();
        return todaysAnswer({buy(10)});
    };
    hearNotification();
    EXPECT_THAT(requests(), SizeIs(5));
    EXPECT_EQ(bus().endPointCount(), 0);
}

TEST_F(CChartTradeObjectHostEnds, IsDestroyedInsideANotificationThatComesWhileItWaitsForTheCost)
{
    create(costLine);
    bus().answerRequest = [this](const RecordedBus::Message &request) {
        request.payload.contains("TodayTrade") ? destroy() : hearNotification();
        return QByteArray(R"({"costprice":"12.5"})");
    };
    calc(shanghai, threeDays, Korvane::DayPeriod);
    EXPECT_EQ(bus().endPointCount(), 0);
}

} // namespace
