#include "tests/support/ByName.h"

#include "tradechartobject/common/EntrustInfo.h"
#include "tradechartobject/common/OrderText.h"

#include <gmock/gmock.h>

#include <limits>

using namespace TradeChart;
using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::StartsWith;

namespace {

EntrustInfo makeOrder(const char *status)
{
    EntrustInfo order{};
    order.isBuy = true;
    order.orderStatus = QString::fromUtf8(status);
    order.orderNo = 700001;
    order.orderDate = 20240102;
    order.orderTime = 93005;
    order.orderPrice = 10.1236;
    order.orderQty = 500;
    order.matchQty = 200;
    order.matchPrice = 10.0625;
    order.cancelQty = 100;
    return order;
}

std::string textOf(const EntrustInfo &order)
{
    return orderText(order, "江山科技");
}

struct StatusText
{
    const char *name;
    const char *status;
    const char *text;
};

class OrderTextOfStatus : public ::testing::TestWithParam<StatusText>
{
};

TEST_P(OrderTextOfStatus, IsThisByteForByte)
{
    EXPECT_EQ(textOf(makeOrder(GetParam().status)), GetParam().text);
}

#define DEALT                                                                                                               \
    "买入[江山科技]\n状态:已成交\n编号:700001\n委托时间:09:30:05\n委托价格:10.124\n委托数量:500\n" \
    "委托日期:20240102"
#define PART_DEALT                                                                                                                     \
    "买入[江山科技]\n状态:部成(未成可撤)\n编号:700001\n委托时间:09:30:05\n委托价格:10.124\n委托数量:500\n" \
    "成交均价:10.062\n成交数量:200\n可撤数量:300\n委托日期:20240102"
#define PART_CANCELLED                                                                                                                 \
    "买入[江山科技]\n状态:部成(未成已撤)\n编号:700001\n委托时间:09:30:05\n委托价格:10.124\n委托数量:500\n" \
    "成交均价:10.062\n成交数量:200\n已撤数量:100\n委托日期:20240102"
#define NOT_DEALT                                                                                                           \
    "买入[江山科技]\n状态:未成交\n编号:700001\n委托时间:09:30:05\n委托价格:10.124\n委托数量:500\n" \
    "委托日期:20240102"

INSTANTIATE_TEST_SUITE_P(
    Statuses, OrderTextOfStatus,
    ::testing::Values(StatusText{"NotReported", "0", NOT_DEALT}, StatusText{"Quoting", "1", NOT_DEALT},
                      StatusText{"Quoted", "2", NOT_DEALT},
                      StatusText{"QuotedWaitingForCancel", "3", NOT_DEALT},
                      StatusText{"PartDealtWaitingForCancel", "4", PART_DEALT},
                      StatusText{"PartCancelled", "5", PART_CANCELLED},
                      StatusText{"Cancelled", "6", NOT_DEALT}, StatusText{"PartDealt", "7", PART_DEALT},
                      StatusText{"Dealt", "8", DEALT}, StatusText{"Abolished", "9", NOT_DEALT},
                      StatusText{"WaitingToQuote", "A", NOT_DEALT}, StatusText{"QuotingB", "B", NOT_DEALT},
                      StatusText{"Confirmed", "G", NOT_DEALT}, StatusText{"Unknown", "Z", NOT_DEALT},
                      StatusText{"DealtWithABlank", "8 ", NOT_DEALT}, StatusText{"Empty", "", NOT_DEALT}),
    ByName());

TEST(OrderText, NamesTheSellSide)
{
    for (const char *status : {"8", "7", "5", "2"}) {
        EntrustInfo order = makeOrder(status);
        order.isBuy = false;
        EXPECT_THAT(textOf(order), StartsWith("卖出[江山科技]\n"));
    }
}

TEST(OrderText, HasEmptyBracketsWithoutAName)
{
    EXPECT_THAT(orderText(makeOrder("8"), ""), StartsWith("买入[]\n"));
}

TEST(OrderText, TakesAPercentSignInTheNameAsItIs)
{
    EXPECT_THAT(orderText(makeOrder("8"), "100%s"), StartsWith("买入[100%s]\n"));
}

TEST(OrderText, ShowsTheAveragePriceOfNothingAsItIs)
{
    EntrustInfo order = makeOrder("7");
    order.matchPrice = std::numeric_limits<double>::infinity();
    EXPECT_THAT(textOf(order), HasSubstr("\n成交均价:inf\n"));
    order.matchPrice = std::numeric_limits<double>::quiet_NaN();
    EXPECT_THAT(textOf(order), HasSubstr("\n成交均价:nan\n"));
}

struct Time
{
    const char *name;
    std::int64_t time;
    const char *text;
};

class OrderTextTime : public ::testing::TestWithParam<Time>
{
};

TEST_P(OrderTextTime, HasTwoDigitsEach)
{
    EntrustInfo order = makeOrder("8");
    order.orderTime = GetParam().time;
    EXPECT_THAT(textOf(order), HasSubstr(std::string("\n委托时间:") + GetParam().text + "\n"));
}

INSTANTIATE_TEST_SUITE_P(Times, OrderTextTime,
                         ::testing::Values(Time{"Morning", 93005, "09:30:05"},
                                           Time{"FullHour", 100000, "10:00:00"},
                                           Time{"Afternoon", 145959, "14:59:59"}, Time{"Zero", 0, "00:00:00"},
                                           Time{"Absurd", 21474836, "2147:48:36"},
                                           Time{"Negative", -21474836, "-2147:-48:-36"},
                                           Time{"OneSecondBelowZero", -1, "00:00:-1"}),
                         ByName());

struct Date
{
    const char *name;
    std::int64_t date;
    const char *text;
};

class OrderTextDate : public ::testing::TestWithParam<Date>
{
};

TEST_P(OrderTextDate, HasAtLeastSixDigits)
{
    for (const char *status : {"8", "7", "5", "2"}) {
        EntrustInfo order = makeOrder(status);
        order.orderDate = GetParam().date;
        EXPECT_THAT(textOf(order), EndsWith(std::string("\n委托日期:") + GetParam().text));
    }
}

INSTANTIATE_TEST_SUITE_P(Dates, OrderTextDate,
                         ::testing::Values(Date{"Whole", 20240105, "20240105"},
                                           Date{"SixDigits", 240105, "240105"},
                                           Date{"FiveDigits", 40105, "040105"}, Date{"Missing", 0, "000000"},
                                           Date{"Negative", -5, "-00005"},
                                           Date{"Smallest", -2147483648LL, "-2147483648"}),
                         ByName());

TEST(OrderText, ShowsAbsurdNumbersWhole)
{
    EntrustInfo order = makeOrder("7");
    order.orderNo = std::numeric_limits<std::int64_t>::max();
    order.orderPrice = 1e308;
    order.matchPrice = -1e308;
    order.matchQty = -2147483648LL;
    const std::string text = textOf(order);
    EXPECT_THAT(text, HasSubstr("编号:9223372036854775807\n"));
    EXPECT_THAT(text, HasSubstr("可撤数量:2147484148\n"));
    EXPECT_THAT(text, EndsWith("委托日期:20240102"));
    EXPECT_GT(text.size(), 700U);
}

} // namespace
