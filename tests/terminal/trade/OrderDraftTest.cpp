// An order before it is sent: its checks and its figures.
#include "terminal/trade/OrderDraft.h"
#include "tests/support/ByName.h"
#include "tests/support/NearestTick.h"
#include "tests/terminal/support/DayAndTime.h"

#include <gmock/gmock.h>

#include <cmath>

namespace Terminal {
namespace {

using ::testing::HasSubstr;

OrderRequest order(Direction side, double price, qint64 quantity, const char *code = "600519")
{
    return {{QLatin1String(code), Market::Shanghai, {}}, side, price, quantity};
}

/// A close of 10.00, ten thousand yuan of cash, 350 shares held, all of them sellable.
DraftFacts facts()
{
    DraftFacts facts;
    facts.moduleAnswers = true;
    facts.closeBefore = 10.0;
    facts.available = 10000.0;
    facts.held = 350;
    facts.sellable = 350;
    return facts;
}

struct Case
{
    const char *name;
    OrderRequest order;
    const char *problem; ///< a part of it; empty: none
};

class OrderDraftChecks : public ::testing::TestWithParam<Case>
{
};

TEST_P(OrderDraftChecks, NamesTheFirstThingThatSpeaksAgainstIt)
{
    const std::string problem = OrderDraft(GetParam().order, facts()).problem().toStdString();
    if (*GetParam().problem == '\0') {
        EXPECT_EQ(problem, "");
    } else {
        EXPECT_THAT(problem, HasSubstr(GetParam().problem));
    }
}

constexpr Direction buy = Direction::Buy;
constexpr Direction sell = Direction::Sell;

const Case cases[] = {
    {"buysALot", order(buy, 10.01, 100), ""},
    {"buysAtTheUpperLimit", order(buy, 11.00, 100), ""},
    {"buysBeyondTheUpperLimit", order(buy, 11.01, 100), "9.00 and 11.00"},
    {"sellsAtTheLowerLimit", order(sell, 9.00, 100), ""},
    {"sellsBeyondTheLowerLimit", order(sell, 8.99, 100), "beyond the day's limits"},
    {"hasWiderLimitsOnYoungBoards", order(buy, 11.99, 100, "300750"), ""},
    {"hasWiderLimitsForTechnology", order(buy, 12.01, 100, "688981"), "8.00 and 12.00"},
    {"isBetweenTicks", order(buy, 10.005, 100), "multiple of 0.01"},
    {"isOnTheFinerTickOfAFund", order(buy, 10.005, 100, "510300"), ""},
    {"isBetweenTheTicksOfAFund", order(buy, 10.0005, 100, "510300"), "multiple of 0.001"},
    {"buysTooFewOfTheStarMarket", order(buy, 10, 150, "688981"), "at least 200"},
    {"buysTheStarMarketSingly", order(buy, 10, 201, "688981"), ""},
    {"buysBondsByTheTen", order(buy, 10, 20, "113050"), ""},
    {"hasNoPrice", order(buy, 0, 100), "no price yet"},
    {"isNoWholeLot", order(buy, 10, 150), "multiple of 100"},
    {"hasNoQuantity", order(sell, 10, 0), "multiple of 100"},
    {"isNegative", order(buy, 10, -100), "multiple of 100"},
    {"sellsTheOddRestWithAll", order(sell, 10, 350), ""},
    {"sellsTheOddRestAlone", order(sell, 10, 50), ""},
    {"sellsAPartOfTheOddRest", order(sell, 10, 20), "multiple of 100"},
    {"sellsTheOddRestWithALot", order(sell, 10, 150), ""},
    {"sellsMoreThanThereIs", order(sell, 10, 400), "Only 350 shares"},
    {"takesAllTheCash", order(buy, 10, 1000), ""},
    {"costsMoreThanThereIs", order(buy, 10, 1100), "not enough cash"},
};

INSTANTIATE_TEST_SUITE_P(Checks, OrderDraftChecks, ::testing::ValuesIn(cases), ByName());

TEST(OrderDraft, NeedsAModuleThatAnswers)
{
    DraftFacts silent = facts();
    silent.moduleAnswers = false;
    EXPECT_THAT(OrderDraft(order(buy, 10, 100), silent).problem().toStdString(),
                HasSubstr("does not answer"));
}

TEST(OrderDraft, NeedsAnAccountThatTakesOrders)
{
    DraftFacts closed = facts();
    closed.isReadOnly = true;
    EXPECT_THAT(OrderDraft(order(buy, 10, 100), closed).problem().toStdString(), HasSubstr("only be read"));
}

TEST(OrderDraft, IsOfTheWindowsOwnAccount)
{
    DraftFacts foreign = facts();
    foreign.isOtherAccount = true;
    EXPECT_THAT(OrderDraft(order(buy, 10, 100), foreign).problem().toStdString(),
                HasSubstr("another account"));
}

TEST(OrderDraft, DoesNotCheckWhatIsNotKnown)
{
    DraftFacts little;
    little.moduleAnswers = true;
    EXPECT_EQ(OrderDraft(order(buy, 99999, 100000), little).problem(), QString());
    EXPECT_EQ(OrderDraft(order(sell, 0.01, 100000), little).problem(), QString());
    EXPECT_FALSE(OrderDraft(order(buy, 10, 100), little).limits());
    EXPECT_FALSE(OrderDraft(order(buy, 10, 100), little).largestQuantity());
    EXPECT_FALSE(OrderDraft(order(sell, 10, 100), little).largestQuantity());
}

TEST(OrderDraft, ShowsTheLimitsThatTheExchangeHoldsForEveryClose)
{
    DraftFacts facts;
    for (qint64 close = 1; close <= 100000; ++close) {
        facts.closeBefore = static_cast<double>(close) / 100;
        for (const auto &[code, percent] : {std::pair("600519", 10), std::pair("688981", 20)}) {
            const Trading::DayLimits limits = OrderDraft(order(buy, 1, 100, code), facts).limits().value();
            ASSERT_TRUE(
                isNearestTick(limits.lowest.steps() / Trading::priceStep.steps(), close, 100 - percent))
                << limits.lowest.digits();
            ASSERT_TRUE(
                isNearestTick(limits.highest.steps() / Trading::priceStep.steps(), close, 100 + percent))
                << limits.highest.digits();
        }
    }
}

TEST(OrderDraft, KnowsTheLimitsOfAFundByItsName)
{
    OrderRequest fund = order(buy, 11.9, 100, "159915");
    fund.security.market = Market::Shenzhen;
    EXPECT_THAT(OrderDraft(fund, facts()).problem().toStdString(), HasSubstr("9.00 and 11.00"));
    fund.security.name = QStringLiteral("创业板ETF");
    EXPECT_EQ(OrderDraft(fund, facts()).problem(), QString());
}

TEST(OrderDraft, KeepsToTheRulesOfItsDay)
{
    DraftFacts ofDay = facts();
    OrderRequest growth = order(buy, 11.5, 100, "300750");
    growth.security.market = Market::Shenzhen;
    ofDay.day = onDay(20200821);
    EXPECT_THAT(OrderDraft(growth, ofDay).problem().toStdString(), HasSubstr("9.00 and 11.00"));
    ofDay.day = onDay(20200824);
    EXPECT_EQ(OrderDraft(growth, ofDay).problem(), QString());
}

TEST(OrderDraft, IsNoLargerThanTheLargestOrderOfTheBoard)
{
    DraftFacts rich = facts();
    rich.available = 1e9;
    rich.held = rich.sellable = 250000;
    OrderRequest star = order(buy, 10, 100001, "688981");
    EXPECT_THAT(OrderDraft(star, rich).problem().toStdString(), HasSubstr("at most 100000"));
    EXPECT_EQ(OrderDraft(star, rich).largestQuantity(), 100000);
    star.side = sell;
    EXPECT_EQ(OrderDraft(star, rich).largestQuantity(), 100000);
}

TEST(OrderDraft, CountsBondsInLotsOfTen)
{
    EXPECT_DOUBLE_EQ(OrderDraft(order(buy, 100, 30, "113050"), facts()).lots(), 3);
    EXPECT_DOUBLE_EQ(OrderDraft(order(buy, 100, 250, "688981"), facts()).lots(), 2.5);
}

TEST(OrderDraft, StatesTheAmountWithoutFees)
{
    EXPECT_DOUBLE_EQ(OrderDraft(order(buy, 10.5, 300), facts()).amount(), 3150);
}

TEST(OrderDraft, ProposesAsMuchAsTheCashCarriesWithFees)
{
    EXPECT_EQ(OrderDraft(order(buy, 10, 100), facts()).largestQuantity(), 900);
    EXPECT_EQ(OrderDraft(order(buy, 9.98, 100), facts()).largestQuantity(), 1000);
    DraftFacts poor = facts();
    poor.available = 5;
    EXPECT_EQ(OrderDraft(order(buy, 0.01, 100), poor).largestQuantity(), 0);
}

TEST(OrderDraft, OffersNoMoreSharesThanAnOrderHasHoweverMuchCashTheModuleTells)
{
    DraftFacts rich = facts();
    rich.available = 1e300;
    EXPECT_EQ(OrderDraft(order(buy, 0.01, 100), rich).largestQuantity(), 1000000);
}

TEST(OrderDraft, ProposesAnOddRestOnlyAsAWhole)
{
    EXPECT_EQ(OrderDraft(order(sell, 10, 100), facts()).largestQuantity(), 350);
    DraftFacts boughtToday = facts();
    boughtToday.sellable = 250;
    EXPECT_EQ(OrderDraft(order(sell, 10, 100), boughtToday).largestQuantity(), 250);
    boughtToday.sellable = 230; // 20 of the odd 50 are on offer
    EXPECT_EQ(OrderDraft(order(sell, 10, 100), boughtToday).largestQuantity(), 200);
}

} // namespace
} // namespace Terminal
