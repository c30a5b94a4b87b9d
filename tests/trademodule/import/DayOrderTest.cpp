#include "trademodule/import/DayOrder.h"
#include "tests/trademodule/import/StatementTest.h"

namespace TradeModule {

namespace {

using ::testing::ElementsAre;

const char *const header = "成交日期,证券代码,操作,成交数量,成交价格,股票余额,合同编号\n";

/// Sides and quantities of a statement, in the order that was found: "buy 100".
std::vector<std::string> orderOf(const std::string &rows, int *daysAsListed = nullptr)
{
    const StatementContents contents = readText((header + rows).c_str());
    std::vector<std::string> order;
    for (const Execution &execution : contents.executions) {
        order.push_back((execution.side == Side::Buy ? "buy " : "sell ") +
                        std::to_string(execution.quantity));
    }
    if (daysAsListed != nullptr) {
        *daysAsListed = contents.daysAsListed;
    }
    return order;
}

} // namespace

TEST(DayOrder, FollowsTheBalance)
{
    EXPECT_THAT(orderOf("20240103,600000,卖出,100,21,200,\n20240103,600000,买入,300,20,300,\n"),
                ElementsAre("buy 300", "sell 100"));
}

TEST(DayOrder, StartsABalanceThatGoesInACircleWithWhatWasHeldBefore)
{
    EXPECT_THAT(orderOf("20240102,600000,买入,500,20,500,\n20240103,600000,卖出,100,21,500,\n"
                        "20240103,600000,买入,100,20,600,\n"),
                ElementsAre("buy 500", "buy 100", "sell 100"));
}

TEST(DayOrder, FollowsOrderNumbersWhereTheBalanceDoesNotTell)
{
    EXPECT_THAT(orderOf("20240103,600000,卖出,100,21,100,22\n20240103,600000,买入,100,20,200,21\n"),
                ElementsAre("buy 100", "sell 100"));
}

TEST(DayOrder, StaysAsListedWhereNothingTellsAndSaysSo)
{
    int daysAsListed = 0;

    EXPECT_THAT(orderOf("20240103,600000,卖出,100,21,,\n20240103,600000,买入,100,20,,\n", &daysAsListed),
                ElementsAre("sell 100", "buy 100"));

    EXPECT_EQ(daysAsListed, 1);
}

TEST(DayOrder, IsNoQuestionOnADayOfBuysAlone)
{
    int daysAsListed = 0;

    orderOf("20240103,600000,买入,100,21,,\n20240103,600000,买入,200,20,,\n", &daysAsListed);

    EXPECT_EQ(daysAsListed, 0);
}

TEST(DayOrder, DropsADealThatComesTwiceUnderAnotherRunningNumber)
{
    const StatementContents contents =
        readText("序号,成交日期,证券代码,操作,成交数量,成交价格,成交编号\n"
                 "1,20240103,600000,买入,100,10,89\n2,20240103,600000,买入,100,10,89\n");

    EXPECT_EQ(contents.executions.size(), 1);
    EXPECT_EQ(contents.repeatedRows, 1);
}

} // namespace TradeModule
