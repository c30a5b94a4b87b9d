#include "tests/tradechartobject/objects/entrustpoint/EntrustPointTest.h"

#include <cstring>
#include <stdexcept>

using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;
using ::testing::StartsWith;
using namespace TradeChart;

namespace {

class EntrustPointSecurities : public EntrustPointTest
{
};

TEST_F(EntrustPointSecurities, KnowsASecurityByItsIdentityWordOnly)
{
    createOnThreeMinutes();
    hearOrders({SentOrder()});
    calc(makeSecurity(0, "000001", 7001), threeMinutes, Korvane::IntradayPeriod);
    EXPECT_THAT(questions(), IsEmpty());
    EXPECT_THAT(drawn(), SizeIs(1));
    overlay->sendQueryTodayEntrustInfoReq();
    EXPECT_THAT(questions()[0].toStdString(), HasSubstr(R"("stkcode":"600536")"));
}

TEST_F(EntrustPointSecurities, KnowsASecurityByItsWholeIdentityWord)
{
    createOnThreeMinutes();
    for (const int bit : {0, 31, 32, 63}) {
        const std::uint64_t word = 7001 ^ (std::uint64_t{1} << bit);
        calc(makeSecurity(1, "600536", static_cast<std::int64_t>(word)), threeMinutes,
             Korvane::IntradayPeriod);
        calc(shanghai, threeMinutes, Korvane::IntradayPeriod);
    }
    EXPECT_THAT(questions(), SizeIs(8));
}

TEST_F(EntrustPointSecurities, TakesASecurityWithoutAnIdentityWordForNone)
{
    create();
    EXPECT_TRUE(calc(makeSecurity(1, "600536", 0), threeMinutes, Korvane::IntradayPeriod));
    EXPECT_THAT(questions(), IsEmpty());
    EXPECT_TRUE(timer()->isActive());
}

TEST_F(EntrustPointSecurities, TakesOverTheSecurityAlsoWithANegativeNumberOfBars)
{
    createOnThreeMinutes();
    hearOrders({SentOrder()});
    EXPECT_THROW(overlay->calcIt(shenzhen, threeMinutes.data(), -1, Korvane::IntradayPeriod, 0, 0),
                 std::length_error);
    EXPECT_FALSE(paint()) << "the orders were the other security's";
    overlay->sendQueryTodayEntrustInfoReq();
    EXPECT_THAT(questions()[0].toStdString(), HasSubstr(R"("stkcode":"000001")"));
}

TEST_F(EntrustPointSecurities, ReadsACodeAndANameWithoutAnEndNoFurtherThanTheyReach)
{
    Korvane::tagCodeWithName endless = shanghai;
    endless.identity = 7003;
    std::memset(endless.code, 'c', sizeof endless.code);
    std::memset(endless.name, 'n', sizeof endless.name);
    create();
    calc(endless, threeMinutes, Korvane::IntradayPeriod);
    const std::string code(39, 'c');
    EXPECT_THAT(questions()[0].toStdString(), HasSubstr("\"stkcode\":\"" + code + "\""));
    hear(Topic::TRADEQUERY, sentAnswer("EntrustTodayTrade", QJsonArray{anOrder()}, code.c_str()));
    listAt(0, yOfTen());
    ASSERT_THAT(axis.popups, SizeIs(1));
    EXPECT_THAT(axis.popups[0][0].toStdString(), StartsWith("买入[" + std::string(32, 'n') + "]\n"));
}

TEST_F(EntrustPointSecurities, ForgetsTheOrdersWithTheSecurity)
{
    createOnThreeMinutes();
    hearOrders({SentOrder()});
    calc(shenzhen, threeMinutes, Korvane::IntradayPeriod);
    EXPECT_FALSE(paint());
    EXPECT_THAT(listAt(0, yOfTen()), IsEmpty());
    hearOrders({SentOrder()});
    EXPECT_FALSE(paint()) << "a late answer for the security before";
    calc(shanghai, threeMinutes, Korvane::IntradayPeriod);
    EXPECT_FALSE(paint());
}

TEST_F(EntrustPointSecurities, ForgetsTheOrdersAndStopsItsTimerForASecurityWithoutBars)
{
    createOnThreeMinutes();
    hearOrders({SentOrder()});
    calc(shenzhen, {}, Korvane::IntradayPeriod);
    EXPECT_FALSE(timer()->isActive());
    EXPECT_FALSE(paint());
    EXPECT_THAT(listAt(0, yOfTen()), IsEmpty());
}

TEST_F(EntrustPointSecurities, NamesTheNewSecurityInItsTexts)
{
    createOnThreeMinutes();
    calc(shenzhen, threeMinutes, Korvane::IntradayPeriod);
    hear(Topic::TRADEQUERY,
         sentAnswer("EntrustTodayTrade", QJsonArray{with(SentOrder(), "market", QStringLiteral("2"))},
                    "000001"));
    EXPECT_THAT(listedText(), StartsWith("买入[平湖机械]\n"));
}

} // namespace
