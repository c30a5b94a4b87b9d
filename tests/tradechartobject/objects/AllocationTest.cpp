// A host paints whenever the pointer moves and asks what lies under it: neither is to wait for the heap.
#include "tests/support/Allocations.h"
#include "tests/support/ByName.h"
#include "tests/support/CountingPainter.h"
#include "tests/support/FakeHost.h"
#include "tests/support/RecordedBus.h"
#include "tests/support/SentAnswer.h"
#include "tests/support/SentOrder.h"
#include "tests/support/SentTrade.h"

#include "tradechartobject/common/TradeVocabulary.h"
#include "tradechartobject/objects/BSPoint.h"
#include "tradechartobject/objects/CChartTradeObject.h"
#include "tradechartobject/objects/EntrustPoint.h"
#include "tradechartobject/objects/PositionCost.h"

#include <QJsonArray>
#include <QJsonDocument>

#include <memory>

using namespace TradeChart;

namespace {

using Overlay = std::unique_ptr<Korvane::IChartObject>;

void hear(const QJsonObject &answer)
{
    RecordedBus::instance().deliver(Topic::TRADEQUERY, QJsonDocument(answer).toJson());
}

/// A buy above the close of the first day and a sell below that of the second.
void hearTrades()
{
    hear(sentAnswer("HistoryTrade", QJsonArray{SentTrade{"B", "20240102", "9301500", "10"}.whole(),
                                               SentTrade{"S", "20240103", "9301500", "9"}.whole()}));
}

Overlay shownOn(std::vector<Korvane::AnalyData> bars, Korvane::Period period, Overlay overlay)
{
    overlay->calcIt(makeSecurity(1, "600536", 7001), bars.data(), static_cast<int>(bars.size()), period, 0,
                    0);
    return overlay;
}

/// Each bar spans 9 to 11.
Overlay shownOnDays(Overlay overlay)
{
    return shownOn({makeDayBar(20240102), makeDayBar(20240103)}, Korvane::DayPeriod, std::move(overlay));
}

Overlay showCostLine(FakeAxis &axis)
{
    Overlay overlay = shownOnDays(std::make_unique<PositionCost>(axis, QJsonObject(), nullptr));
    RecordedBus::instance().deliver(
        Topic::TRADEQUERY,
        R"({"cmd":"HolderCostPrice","data":{"stkcode":"600536","market":"1","costprice":"10"}})");
    return overlay;
}

Overlay showBuySellPoints(FakeAxis &axis)
{
    Overlay overlay = shownOnDays(std::make_unique<BSPoint>(axis, QJsonObject(), nullptr));
    hearTrades();
    return overlay;
}

Overlay showOrderPoints(FakeAxis &axis)
{
    const std::uint32_t today = dayFromToday(0);
    Overlay overlay = shownOn({makeMinuteBar(today, 931), makeMinuteBar(today, 932)}, Korvane::IntradayPeriod,
                              std::make_unique<EntrustPoint>(axis, QJsonObject(), nullptr));
    hear(sentAnswer("EntrustTodayTrade", QJsonArray{QJsonObject(SentOrder{"0B", "2", "10", "9310000"}),
                                                    QJsonObject(SentOrder{"0B", "2", "200", "9310000"}),
                                                    QJsonObject(SentOrder{"0B", "2", "10", "9320000"})}));
    return overlay;
}

Overlay showCombinedCostLine(FakeAxis &axis)
{
    RecordedBus::instance().answerRequest = [](auto &) { return QByteArray(R"({"costprice":"10"})"); };
    return shownOnDays(std::make_unique<CChartTradeObject>(axis, R"({"type":0})"));
}

Overlay showCombinedTrades(FakeAxis &axis)
{
    RecordedBus::instance().duringSend = hearTrades;
    return shownOnDays(std::make_unique<CChartTradeObject>(axis, R"({"type":1})"));
}

struct Shown
{
    const char *name;
    Overlay (*show)(FakeAxis &axis);
    double hitPrice; ///< where it is hit on the first bar
    int painterCalls;
    double blocks; ///< of the heap for a paint: a line has a price for every bar
};

class Allocation : public ::testing::TestWithParam<Shown>
{
protected:
    void SetUp() override
    {
        RecordedBus::instance().reset();
        axis.mode = Korvane::TodayChart;
        axis.notesPrices = false;
        overlay = GetParam().show(axis);
    }

    void expectHit(double x, double y, int expected)
    {
        int hit = 0;
        EXPECT_EQ(Allocations::during([&] { hit = overlay->hitTest(x, y); }), 0.0);
        EXPECT_EQ(hit, expected);
    }

    FakeAxis axis;
    Overlay overlay;
};

TEST_P(Allocation, OfAPaintIsNoneButTheLineThatIsHandedOver)
{
    CountingPainter painter;
    EXPECT_EQ(Allocations::during([&] { overlay->paintIt(painter); }), GetParam().blocks);
    EXPECT_EQ(painter.calls, GetParam().painterCalls);
}

TEST_P(Allocation, OfAHitTestIsNone)
{
    expectHit(0.0, axis.yOf(GetParam().hitPrice), 0);
    expectHit(0.0, -1000.0, -1);
    expectHit(1e6, -1000.0, -1);
}

INSTANTIATE_TEST_SUITE_P(Overlays, Allocation,
                         ::testing::Values(Shown{"CostLine", showCostLine, 10.0, 3, 1.0},
                                           Shown{"BuySellPoints", showBuySellPoints, 11.0, 3, 0.0},
                                           Shown{"OrderPoints", showOrderPoints, 10.0, 3, 0.0},
                                           Shown{"CombinedCostLine", showCombinedCostLine, 10.0, 3, 1.0},
                                           Shown{"CombinedTrades", showCombinedTrades, 10.0, 7, 0.0}),
                         ByName());

TEST(Allocations, AreCounted)
{
    EXPECT_EQ(Allocations::during([] { ::operator delete(::operator new(1)); }), 1.0);
}

#ifdef __GLIBC__
TEST(Allocations, AreCountedOfTextsToo)
{
    EXPECT_EQ(Allocations::during([] { QString(10, QLatin1Char('x')); }), 1.0);
}
#endif

} // namespace
