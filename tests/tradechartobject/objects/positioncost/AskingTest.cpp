#include "tests/tradechartobject/objects/positioncost/PositionCostTest.h"

#include <algorithm>
#include <iterator>

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

namespace {

class PositionCostAsking : public PositionCostTest
{
};

TEST_F(PositionCostAsking, AsksNothingWhenConstructed)
{
    create();
    EXPECT_THAT(questions(), IsEmpty());
    EXPECT_FALSE(timer()->isActive());
}

TEST_F(PositionCostAsking, AsksForTheCostAtOnceWhenASecurityComes)
{
    createOnShanghai();
    ASSERT_THAT(bus().sent, SizeIs(1));
    EXPECT_EQ(bus().sent[0].channel, "Global");
    EXPECT_EQ(bus().sent[0].topic, "TradeQuery");
    EXPECT_EQ(bus().sent[0].payload,
              R"({"cmd":"HolderCostPrice","market":"SH","screenId":"screen-1","stkcode":"600536"})");
}

TEST_F(PositionCostAsking, AsksAgainOnlyForAnotherIdentityWord)
{
    createOnShanghai();
    calc(shanghai, threeDays, Korvane::DayPeriod);
    calc(makeSecurity(0, "000001", 7001), threeDays, Korvane::DayPeriod);
    EXPECT_THAT(questions(), SizeIs(1)) << "code and market alone do not make another security";
    hearCost(QStringLiteral("50"));
    EXPECT_EQ(drawnCost(), 50.0) << "nor are they taken over";
    calc(shenzhen, threeDays, Korvane::DayPeriod);
    EXPECT_EQ(questions().back(),
              R"({"cmd":"HolderCostPrice","market":"SZ","screenId":"screen-1","stkcode":"000001"})");
}

TEST_F(PositionCostAsking, AsksNothingWhileTheMarketNumberIsMinusOne)
{
    create();
    calc(makeSecurity(-1, "600536", 9), threeDays, Korvane::DayPeriod);
    overlay->sendQueryPositionCostReq();
    EXPECT_THAT(questions(), IsEmpty());
    EXPECT_TRUE(timer()->isActive());
}

TEST_F(PositionCostAsking, TakesAnIdentityWordOfZeroForNoSecurityYet)
{
    create();
    EXPECT_TRUE(calc(makeSecurity(1, "600536", 0), threeDays, Korvane::DayPeriod));
    EXPECT_THAT(questions(), IsEmpty());
}

TEST_F(PositionCostAsking, TakesAMissingScreenIdAsAnEmptyOne)
{
    axis.hasScreenId = false;
    createOnShanghai();
    EXPECT_THAT(questions(),
                ElementsAre(R"({"cmd":"HolderCostPrice","market":"SH","screenId":"","stkcode":"600536"})"));
}

TEST_F(PositionCostAsking, AsksWithAnEmptyMarketForANumberWithoutACode)
{
    create();
    for (const int market : {12, -2}) {
        bus().sent.clear();
        calc(makeSecurity(market, "X", market), threeDays, Korvane::DayPeriod);
        EXPECT_THAT(
            questions(),
            ElementsAre(R"({"cmd":"HolderCostPrice","market":"","screenId":"screen-1","stkcode":"X"})"))
            << market;
    }
}

TEST_F(PositionCostAsking, SendsTheScreenIdAsUtf8)
{
    axis.screen = "屏幕 1";
    createOnShanghai();
    EXPECT_EQ(
        QJsonDocument::fromJson(questions().at(0)).object().value(QStringLiteral("screenId")).toString(),
        QStringLiteral("屏幕 1"));
    EXPECT_TRUE(bus().operations.contains(QStringLiteral("subscribe list 屏幕 1 TradeNotify,TradeQuery")));
}

TEST_F(PositionCostAsking, ReadsACodeWithoutItsEndNoFurtherThanTheRecord)
{
    Korvane::tagCodeWithName security = shanghai;
    std::fill(std::begin(security.code), std::end(security.code), '6');
    create();
    calc(security, threeDays, Korvane::DayPeriod);
    EXPECT_EQ(QJsonDocument::fromJson(questions().at(0))
                  .object()
                  .value(QStringLiteral("stkcode"))
                  .toString()
                  .size(),
              static_cast<int>(sizeof security.code));
}

TEST_F(PositionCostAsking, LogsWhatItSent)
{
    const LogCapture log;
    axis.screen = "屏幕 1";
    createOnShanghai();
    EXPECT_THAT(
        log.lines(QtDebugMsg),
        ElementsAre(QStringLiteral(
            R"(send sendQueryPositionCostReq: "{\"cmd\":\"HolderCostPrice\",\"market\":\"SH\",\"screenId\":\"屏幕 1\",\"stkcode\":\"600536\"}")")));
}

TEST_F(PositionCostAsking, KeepsSilentWhenTheBusRefusesTheQuestion)
{
    const LogCapture log;
    bus().takesMessages = false;
    create();
    EXPECT_TRUE(calc(shanghai, threeDays, Korvane::DayPeriod));
    EXPECT_THAT(log.all(), IsEmpty());
    EXPECT_TRUE(timer()->isActive());
}

} // namespace
