#include "tests/tradechartobject/objects/bspoint/BSPointTest.h"

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;
using namespace TradeChart;

namespace {

class BSPointSecurities : public BSPointTest
{
};

TEST_F(BSPointSecurities, KeepsTheMarksOfTheSecurityBeforeWhileTheQuestionForTheNewOneIsRefused)
{
    createOnThreeDays();
    hearHistory({{"B", "20240103", "9301500", "10.5", "300"}});
    bus().takesMessages = false;
    EXPECT_FALSE(calc(shenzhen, threeDays, Korvane::DayPeriod));
    EXPECT_TRUE(overlay->calcBSPointPriceInfo());
    EXPECT_EQ(drawn(), " B ");
    EXPECT_EQ(overlay->hitTest(10, anchorY(12)), 0);
    EXPECT_THAT(listOn(1), IsEmpty()) << "its trades are forgotten";
    bus().takesMessages = true;
    EXPECT_TRUE(calc(shenzhen, threeDays, Korvane::DayPeriod));
    EXPECT_EQ(drawn(), "   ");
    EXPECT_THAT(questions(), IsEmpty()) << "the days count as asked for";
}

TEST_F(BSPointSecurities, TakesTheSameCodeUnderAnotherIdentityWordForAnotherSecurity)
{
    create();
    calc(shanghai, threeDays, Korvane::DayPeriod);
    hearHistory({{"B", "20240103", "9301500", "10.5", "300"}});
    calc(makeSecurity(1, "600536", 7009), threeDays, Korvane::DayPeriod);
    EXPECT_EQ(drawn(), "   ");
    ASSERT_THAT(questions(), SizeIs(2));
    EXPECT_EQ(questions()[1], questions()[0]);
}

TEST_F(BSPointSecurities, TakesAnIdentityWordOfZeroForNoSecurityYet)
{
    create();
    EXPECT_TRUE(calc(makeSecurity(1, "600536", 0), threeDays, Korvane::DayPeriod));
    EXPECT_THAT(
        questions(),
        ElementsAre(
            R"({"cmd":"HistoryTrade","end":"20240104","market":"","screenId":"screen-1","start":"20240102","stkcode":""})"));
}

TEST_F(BSPointSecurities, TurnsToASecurityWithoutAMarketNumberToo)
{
    createOnThreeDays();
    hearHistory({{"B", "20240103", "9301500", "10.5", "300"}});
    EXPECT_TRUE(calc(makeSecurity(-1, "X", 9), threeDays, Korvane::DayPeriod));
    EXPECT_EQ(drawn(), "   ");
    EXPECT_THAT(
        questions(),
        ElementsAre(
            R"({"cmd":"HistoryTrade","end":"20240104","market":"","screenId":"screen-1","start":"20240102","stkcode":"X"})"));
}

TEST_F(BSPointSecurities, ForgetsTheTradesWithTheSecurity)
{
    createOnThreeDays();
    hearHistory({{"B", "20240103", "9301500", "10.5", "300"}});
    calc(shenzhen, threeDays, Korvane::DayPeriod);
    EXPECT_EQ(drawn(), "   ");
    EXPECT_THAT(questions(), SizeIs(1)) << "the same days are asked for again";
    EXPECT_TRUE(questions()[0].contains(R"("stkcode":"000001")"));
    hearHistory({{"B", "20240103", "9301500", "10.5", "300"}});
    EXPECT_EQ(drawn(), "   ") << "a late answer for the security before";
    hear(Topic::TRADEQUERY,
         sentAnswer("HistoryTrade",
                    QJsonArray{SentTrade{"S", "20240102", "9301500", "1", "1"}.in(pastTrades)}, "000001"));
    EXPECT_EQ(drawn(), "S  ");
    EXPECT_THAT(listOn(1), SizeIs(0));
}

TEST_F(BSPointSecurities, KnowsASecurityByItsIdentityWordOnly)
{
    createOnThreeDays();
    calc(makeSecurity(0, "000001", 7001), threeDays, Korvane::DayPeriod);
    EXPECT_THAT(questions(), IsEmpty());
    hearHistory({{"B", "20240103", "9301500", "10.5", "300"}});
    EXPECT_EQ(drawn(), " B ") << "the record that came first is kept";
}

TEST_F(BSPointSecurities, TurnsToAnotherSecurityInsideARepaintRequest)
{
    createOnThreeDays();
    axis.onUpdate = [this] { calc(shenzhen, threeDays, Korvane::DayPeriod); };
    hearToday({{"S", "20240104", "9301500", "1", "1"}});
    EXPECT_EQ(drawn(), "   ");
}

} // namespace
