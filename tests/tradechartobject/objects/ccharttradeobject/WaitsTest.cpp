#include "tests/tradechartobject/objects/ccharttradeobject/CChartTradeObjectTest.h"

using ::testing::SizeIs;

namespace {

class CChartTradeObjectWaits : public CChartTradeObjectTest
{
};

TEST_F(CChartTradeObjectWaits, HearsANotificationWhileItWaitsForTheCost)
{
    create(costLine);
    bus().answerRequest = [](const RecordedBus::Message &request) {
        if (request.payload.contains("TodayTrade")) {
            return todaysAnswer({buy(10)});
        }
        hearNotification();
        return QByteArray(R"({"costprice":"12.5"})");
    };
    recalc();
    EXPECT_THAT(requests(), SizeIs(2));
    EXPECT_EQ(drawnCost(), 12.5);
}

TEST_F(CChartTradeObjectWaits, AddsTheInnerAnswerFirstWhenNotificationsCrossWithItsWaits)
{
    createMarkers();
    bus().answerRequest = [this](const RecordedBus::Message &) {
        const double price = 10.0 + static_cast<double>(requests().size());
        if (requests().size() < 3) {
            hearNotification();
        }
        return todaysAnswer({buy(price)});
    };
    hearNotification();
    recalc();
    EXPECT_EQ(listAt(0, 10.5, 3),
              (QStringList{line("买入", "13.00"), line("买入", "12.00"), line("买入", "11.00")}));
}

TEST_F(CChartTradeObjectWaits, ReplacesItsTradesByPastOnesWhileItWaitsForTodays)
{
    createMarkers();
    hearHistory({buy(11)});
    bus().answerRequest = [](const RecordedBus::Message &) {
        hearHistory({buy(12)});
        return todaysAnswer({buy(13)});
    };
    hearNotification();
    recalc();
    EXPECT_EQ(listAt(0, 10.5, 2), (QStringList{line("买入", "12.00"), line("买入", "13.00")}));
}

TEST_F(CChartTradeObjectWaits, DropsTheCostOfASecurityThatWasLeftWhileItWaited)
{
    create(costLine);
    bus().answerRequest = [this](const RecordedBus::Message &request) {
        if (request.payload.contains("000001")) {
            return QByteArray(R"({"costprice":"2.5"})");
        }
        calc(shenzhen, threeDays, Korvane::DayPeriod);
        return QByteArray(R"({"costprice":"12.5"})");
    };
    recalc();
    EXPECT_EQ(drawnCost(), 2.5);
}

TEST_F(CChartTradeObjectWaits, DropsTodaysTradesOfASecurityThatWasLeftWhileItWaited)
{
    createMarkers();
    bus().answerRequest = [this](const RecordedBus::Message &) {
        calc(shenzhen, threeDays, Korvane::DayPeriod);
        return todaysAnswer({buy(10)});
    };
    hearNotification();
    calc(shenzhen, threeDays, Korvane::DayPeriod);
    EXPECT_EQ(drawn(), "- - -");
}

TEST_F(CChartTradeObjectWaits, TakesOtherBarsWhileTheHistoryQuestionGoesOut)
{
    createMarkers();
    hearHistory({buy(10)});
    bool isNested = false;
    bus().duringSend = [&] {
        if (!isNested) {
            isNested = true;
            overlay->calcIt(shanghai, threeDays.data(), 1, Korvane::DayPeriod, 0, 0);
        }
    };
    calc(shanghai, {makeDayBar(20240105), makeDayBar(20240108), makeDayBar(20240109)}, Korvane::DayPeriod);
    EXPECT_TRUE(isNested);
    EXPECT_EQ(drawn(), "0 - -");
}

} // namespace
