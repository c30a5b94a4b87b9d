// What the user is told of wrong answers about orders and cancellations.
#include "tests/terminal/answers/WrongAnswer.h"

#include <gmock/gmock.h>

namespace Terminal {
namespace {

const WrongAnswer orderAnswers[] = {
    {"Refused", "EntrustTodayTrade", "*", R"({"success":false,"msg":"not today"})",
     "EntrustTodayTrade: refused: not today"},
    {"RefusedWithoutReason", "EntrustTodayTrade", "success", "false",
     "EntrustTodayTrade: refused, without a reason"},
    {"SuccessAsNumber", "EntrustTodayTrade", "success", "1",
     R"(EntrustTodayTrade: "success" is 1, but must be: true or false; counts as a success)"},
    {"WithoutData", "EntrustTodayTrade", "data", nullptr,
     R"(EntrustTodayTrade: "data" is missing; counts as nothing)"},
    {"DataIsARecord", "EntrustTodayTrade", "data", "{}",
     R"(EntrustTodayTrade: "data" is object, but must be: array of objects; counts as nothing)"},
    {"DataIsANumber", "EntrustTodayTrade", "data", "3",
     R"(EntrustTodayTrade: "data" is 3, but must be: array of objects; counts as nothing)"},
    {"RowIsANumber", "EntrustTodayTrade", "data", "[1,2]",
     R"(EntrustTodayTrade: "market" is missing (rows: 2); the row is left out
EntrustTodayTrade: "bsflag2" is missing (rows: 2); the row is left out
EntrustTodayTrade: "orderstatus" is missing (rows: 2); the order gets no marker
EntrustTodayTrade: "ordersno" is missing (rows: 2); the order cannot be cancelled
EntrustTodayTrade: "orderdate" is missing (rows: 2); the order stands at 09:31
EntrustTodayTrade: "opertime" is missing (rows: 2); the order stands at 09:31
EntrustTodayTrade: "orderprice" is missing (rows: 2); counts as 0
EntrustTodayTrade: "orderqty" is missing (rows: 2); counts as 0)"},
    {"SecurityMissing", "EntrustTodayTrade", "stkcode", nullptr,
     R"(EntrustTodayTrade: "stkcode" is missing; the message is ignored)"},
    {"SecurityAsNumber", "EntrustTodayTrade", "stkcode", "600519",
     R"(EntrustTodayTrade: "stkcode" is 600519, but must be: text; the message is ignored)"},
    {"CommandMissing", "EntrustTodayTrade", "cmd", nullptr,
     R"(An answer of the trading module: "cmd" is missing; the message is ignored)"},
    {"CommandUnknown", "EntrustTodayTrade", "cmd", R"("Entrusts")",
     R"(Entrusts: "cmd" is "Entrusts", which nobody asked; the message is ignored)"},
    {"OfAnotherScreen", "EntrustTodayTrade", "screenId", R"("screen-7")",
     R"(EntrustTodayTrade: "screenId" names another screen; drawn all the same)"},
    {"MarketMissing", "EntrustTodayTrade", "row.market", nullptr,
     R"(EntrustTodayTrade: "market" is missing (rows: 1); the row is left out)"},
    {"MarketEmpty", "EntrustTodayTrade", "row.market", R"("")",
     R"(EntrustTodayTrade: "market" is "", but must be: "1" or "2" (rows: 1); the row is left out)"},
    {"MarketAsNumber", "EntrustTodayTrade", "row.market", "1",
     R"(EntrustTodayTrade: "market" is 1, but must be: text (rows: 1); the row is left out)"},
    {"MarketInLetters", "EntrustTodayTrade", "row.market", R"("SH")",
     R"(EntrustTodayTrade: "market" is "SH", but must be: "1" or "2" (rows: 1); the row is left out)"},
    {"MarketUnknown", "EntrustTodayTrade", "row.market", R"("3")",
     R"(EntrustTodayTrade: "market" is "3", but must be: "1" or "2" (rows: 1); the row is left out)"},
    {"SideMissing", "EntrustTodayTrade", "row.bsflag2", nullptr,
     R"(EntrustTodayTrade: "bsflag2" is missing (rows: 1); the row is left out)"},
    {"SideOfATrade", "EntrustTodayTrade", "row.bsflag2", R"("B")",
     R"(EntrustTodayTrade: "bsflag2" is "B", but must be: "0B", "0S" or another direction code (rows: 1); the row is left out)"},
    {"SideInCapitals", "EntrustTodayTrade", "row.bsflag2", R"("0F")",
     R"(EntrustTodayTrade: "bsflag2" is "0F", but must be: "0B", "0S" or another direction code (rows: 1); the row is left out)"},
    {"SideAsNumber", "EntrustTodayTrade", "row.bsflag2", "0",
     R"(EntrustTodayTrade: "bsflag2" is 0, but must be: text (rows: 1); the row is left out)"},
    {"StatusMissing", "EntrustTodayTrade", "row.orderstatus", nullptr,
     R"(EntrustTodayTrade: "orderstatus" is missing (rows: 1); the order gets no marker)"},
    {"StatusEmpty", "EntrustTodayTrade", "row.orderstatus", R"("")",
     R"(EntrustTodayTrade: "orderstatus" is "", but must be: a status code (rows: 1); the order gets no marker)"},
    {"StatusUnknown", "EntrustTodayTrade", "row.orderstatus", R"("Z")",
     R"(EntrustTodayTrade: "orderstatus" is "Z", but must be: a status code (rows: 1); the order gets no marker)"},
    {"StatusInLowerCase", "EntrustTodayTrade", "row.orderstatus", R"("a")",
     R"(EntrustTodayTrade: "orderstatus" is "a", but must be: a status code (rows: 1); the order gets no marker)"},
    {"StatusAsNumber", "EntrustTodayTrade", "row.orderstatus", "2",
     R"(EntrustTodayTrade: "orderstatus" is 2, but must be: text (rows: 1); the order gets no marker)"},
    {"StatusAsChinese", "EntrustTodayTrade", "row.orderstatus", R"("已报")",
     R"(EntrustTodayTrade: "orderstatus" is "已报", but must be: a status code (rows: 1); the order gets no marker)"},
    {"NumberMissing", "EntrustTodayTrade", "row.ordersno", nullptr,
     R"(EntrustTodayTrade: "ordersno" is missing (rows: 1); the order cannot be cancelled)"},
    {"NumberAsNumber", "EntrustTodayTrade", "row.ordersno", "17",
     R"(EntrustTodayTrade: "ordersno" is 17, but must be: text (rows: 1); the order cannot be cancelled)"},
    {"NumberWithLetters", "EntrustTodayTrade", "row.ordersno", R"("A17")",
     R"(EntrustTodayTrade: "ordersno" is "A17", but must be: whole number from 1 to 2147483647 (rows: 1); the order cannot be cancelled)"},
    {"NumberTooLong", "EntrustTodayTrade", "row.ordersno", R"("12345678901")",
     R"(EntrustTodayTrade: "ordersno" is "12345678901", but must be: whole number from 1 to 2147483647 (rows: 1); the order cannot be cancelled)"},
    {"NumberZero", "EntrustTodayTrade", "row.ordersno", R"("0")",
     R"(EntrustTodayTrade: "ordersno" is "0", but must be: whole number from 1 to 2147483647 (rows: 1); the order cannot be cancelled)"},
    {"DayMissing", "EntrustHistoryTrade", "row.orderdate", nullptr,
     R"(EntrustHistoryTrade: "orderdate" is missing (rows: 1); the order stands at 09:31)"},
    {"DayAsNumber", "EntrustHistoryTrade", "row.orderdate", "20240102",
     R"(EntrustHistoryTrade: "orderdate" is 20240102, but must be: text (rows: 1); the order stands at 09:31)"},
    {"DayOfTwoDigitYear", "EntrustHistoryTrade", "row.orderdate", R"("240102")",
     R"(EntrustHistoryTrade: "orderdate" is "240102", but must be: yyyymmdd (rows: 1); the order stands at 09:31)"},
    {"TimeMissing", "EntrustHistoryTrade", "row.opertime", nullptr,
     R"(EntrustHistoryTrade: "opertime" is missing (rows: 1); the order stands at 09:31)"},
    {"TimeAsNumber", "EntrustHistoryTrade", "row.opertime", "9315002",
     R"(EntrustHistoryTrade: "opertime" is 9315002, but must be: text (rows: 1); the order stands at 09:31)"},
    {"TimeWithoutHundredths", "EntrustHistoryTrade", "row.opertime", R"("093150")",
     R"(EntrustHistoryTrade: "opertime" is "093150", but must be: hhmmsscc (rows: 1); the order stands at 09:31)"},
    {"TimeEmpty", "EntrustHistoryTrade", "row.opertime", R"("")",
     R"(EntrustHistoryTrade: "opertime" is "", but must be: hhmmsscc (rows: 1); the order stands at 09:31)"},
    {"PriceMissing", "EntrustHistoryTrade", "row.orderprice", nullptr,
     R"(EntrustHistoryTrade: "orderprice" is missing (rows: 1); counts as 0)"},
    {"PriceAsNumber", "EntrustHistoryTrade", "row.orderprice", "10.5",
     R"(EntrustHistoryTrade: "orderprice" is 10.5, but must be: text (rows: 1); counts as 0)"},
    {"PriceAsWord", "EntrustHistoryTrade", "row.orderprice", R"("market")",
     R"(EntrustHistoryTrade: "orderprice" is "market", but must be: decimal, at least 0 (rows: 1); counts as 0)"},
    {"QuantityMissing", "EntrustHistoryTrade", "row.orderqty", nullptr,
     R"(EntrustHistoryTrade: "orderqty" is missing (rows: 1); counts as 0)"},
    {"QuantityAsNumber", "EntrustHistoryTrade", "row.orderqty", "300",
     R"(EntrustHistoryTrade: "orderqty" is 300, but must be: text (rows: 1); counts as 0)"},
    {"QuantityWithDecimals", "EntrustHistoryTrade", "row.orderqty", R"("300.00")",
     R"(EntrustHistoryTrade: "orderqty" is "300.00", but must be: whole number from 0 to 2147483647 (rows: 1); counts as 0)"},
    {"DealtAsNumber", "EntrustHistoryTrade", "row.matchqty", "200",
     R"(EntrustHistoryTrade: "matchqty" is 200, but must be: text (rows: 1); counts as 0)"},
    {"DealtWithDecimals", "EntrustHistoryTrade", "row.matchqty", R"("200.00")",
     R"(EntrustHistoryTrade: "matchqty" is "200.00", but must be: whole number from 0 to 2147483647 (rows: 1); counts as 0)"},
    {"AmountAsNumber", "EntrustHistoryTrade", "row.matchamt", "2100",
     R"(EntrustHistoryTrade: "matchamt" is 2100, but must be: text (rows: 1); counts as 0)"},
    {"CancelledAsWord", "EntrustHistoryTrade", "row.cancelqty", R"("none")",
     R"(EntrustHistoryTrade: "cancelqty" is "none", but must be: whole number from 0 to 2147483647 (rows: 1); counts as 0)"},
    {"CancellationWithoutSuccess", "EntrustCancel", "success", nullptr,
     R"(EntrustCancel: "success" is missing; counts as a failure)"},
    {"CancellationOfNobody", "EntrustCancel", "objectId", nullptr,
     R"(EntrustCancel: "objectId" is missing; the message is ignored)"},
    {"CancellationWithoutItsBlank", "EntrustCancel", "data", R"([{"msgok":"done"}])",
     R"(EntrustCancel: "msgok " is missing (rows: 1); the user reads an empty message)"},
    {"CancellationWithoutData", "EntrustCancel", "data", nullptr,
     R"(EntrustCancel: "data" is missing; counts as nothing)"},
};

class OrderAnswersThatAreWrong : public WrongAnswers
{
};

TEST_P(OrderAnswersThatAreWrong, AreToldWithTheirCommandAndKey)
{
    EXPECT_EQ(toldOf(GetParam()), GetParam().told);
}

INSTANTIATE_TEST_SUITE_P(Answers, OrderAnswersThatAreWrong, ::testing::ValuesIn(orderAnswers),
                         [](const auto &row) { return row.param.name; });

} // namespace
} // namespace Terminal
