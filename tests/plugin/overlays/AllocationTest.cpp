// A host paints whenever the pointer moves and asks what lies under it: neither is to wait for the heap.
#include "tests/support/Allocations.h"
#include "tests/support/ByName.h"
#include "tests/support/CountingPainter.h"
#include "tests/support/FakeHost.h"
#include "tests/support/RecordedBus.h"

#include "tradechartobject/common/TradeVocabulary.h"
#include "tradechartobject/objects/BSPoint.h"
#include "tradechartobject/objects/CChartTradeObject.h"
#include "tradechartobject/objects/EntrustPoint.h"
#include "tradechartobject/objects/PositionCost.h"

#include <memory>

using namespace TradeChart;

namespace {

using Overlay = std::unique_ptr<Korvane::IChartObject>;

constexpr char tradesAnswer[] = R"({"cmd":"HistoryTrade","stkcode":"600536","data":[
    {"bsflag2":"B","bizdate":"20240102","matchtime":"9301500","matchprice":"10","matchqty":"300","buy":true,"price":10,"vol":300},
    {"bsflag2":"S","bizdate":"20240103","matchtime":"9301500","matchprice":"10","matchqty":"300","buy":false,"price":9,"vol":300}]})";

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
    RecordedBus::instance().deliver(Topic::TRADEQUERY, tradesAnswer);
    return overlay;
}

Overlay showOrderPoints(FakeAxis &axis)
{
    const auto today = static_cast<std::uint32_t>(currentDate());
    Overlay overlay = shownOn({makeMinuteBar(today, 931), makeMinuteBar(today, 932)}, Korvane::IntradayPeriod,
                              std::make_unique<EntrustPoint>(axis, QJsonObject(), nullptr));
    QByteArray rows;
    for (const char *place :
         {R"("opertime":"9310000","orderprice":"10")", R"("opertime":"9310000","orderprice":"200")",
          R"("opertime":"9320000","orderprice":"10")"}) {
        rows += rows.isEmpty() ? "" : ",";
        rows += R"({"market":"1","bsflag2":"0B","orderstatus":"2","operdate":")" + QByteArray::number(today) +
                "\"," + place + '}';
    }
    RecordedBus::instance().deliver(
        Topic::TRADEQUERY, R"({"cmd":"EntrustTodayTrade","stkcode":"600536","data":[)" + rows + "]}");
    return overlay;
}

Overlay showCombinedCostLine(FakeAxis &axis)
{
    RecordedBus::instance().answerRequest = [](auto &) { return QByteArray(R"({"costprice":"10"})"); };
    return shownOnDays(std::make_unique<CChartTradeObject>(axis, R"({"type":0})"));
}

Overlay showCombinedTrades(FakeAxis &axis)
{
    RecordedBus::instance().duringSend = [] {
        RecordedBus::instance().deliver(Topic::TRADEQUERY, tradesAnswer);
    };
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
        axis.mode = 1;
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
