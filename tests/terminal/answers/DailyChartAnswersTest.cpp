// What the user is told of wrong answers about cost and trades.
#include "tests/terminal/answers/WrongAnswer.h"

#include <gmock/gmock.h>

namespace Terminal {
namespace {

const WrongAnswer dailyChartAnswers[] = {
    {"CostRefused", "HolderCostPrice", "success", "false", "HolderCostPrice: refused, without a reason"},
    {"CostRefusedWithReason", "HolderCostPrice", "*", R"({"success":false,"msg":"the ledger is busy"})",
     "HolderCostPrice: refused: the ledger is busy"},
    {"CostSuccessAsText", "HolderCostPrice", "success", R"("yes")",
     R"(HolderCostPrice: "success" is "yes", but must be: true or false; counts as a success)"},
    {"CostWithoutData", "HolderCostPrice", "data", nullptr,
     R"(HolderCostPrice: "data" is missing; counts as nothing)"},
    {"CostDataIsNull", "HolderCostPrice", "data", "null",
     R"(HolderCostPrice: "data" is missing; counts as nothing)"},
    {"CostDataIsRows", "HolderCostPrice", "data", "[]",
     R"(HolderCostPrice: "data" is array of objects, but must be: object; counts as nothing)"},
    {"CostDataIsText", "HolderCostPrice", "data", R"("12.345")",
     R"(HolderCostPrice: "data" is "12.345", but must be: object; counts as nothing)"},
    {"CostAsNumber", "HolderCostPrice", "data.costprice", "12.345",
     R"(HolderCostPrice: "costprice" is 12.345, but must be: text; no line, or one at 0)"},
    {"CostAsWord", "HolderCostPrice", "data.costprice", R"("dear")",
     R"(HolderCostPrice: "costprice" is "dear", but must be: decimal, or "nan"; no line, or one at 0)"},
    {"CostInfinite", "HolderCostPrice", "data.costprice", R"("inf")",
     R"(HolderCostPrice: "costprice" is "inf", but must be: decimal, or "nan"; no line, or one at 0)"},
    {"CostWithComma", "HolderCostPrice", "data.costprice", R"("1,234.50")",
     R"(HolderCostPrice: "costprice" is "1,234.50", but must be: decimal, or "nan"; no line, or one at 0)"},
    {"CostAtTheTopAsNumber", "HolderCostPrice", "costprice", "12.345",
     R"(HolderCostPrice: "costprice" is 12.345, but must be: text; counts as 0)"},
    {"CostOfNoSecurity", "HolderCostPrice", "data.stkcode", nullptr,
     R"(HolderCostPrice: "stkcode" is missing; the message is ignored)"},
    {"CostSecurityAsNumber", "HolderCostPrice", "data.stkcode", "600519",
     R"(HolderCostPrice: "stkcode" is 600519, but must be: text; the message is ignored)"},
    {"CostOfNoMarket", "HolderCostPrice", "data.market", nullptr,
     R"(HolderCostPrice: "market" is missing; the message is ignored)"},
    {"CostMarketAsNumber", "HolderCostPrice", "data.market", "1",
     R"(HolderCostPrice: "market" is 1, but must be: text; the message is ignored)"},
    {"CostMarketInLetters", "HolderCostPrice", "data.market", R"("SH")",
     R"(HolderCostPrice: "market" is "SH", but must be: "1" or "2"; the message is ignored)"},
    {"CostAnswerOfNoSecurity", "HolderCostPrice", "stkcode", nullptr,
     R"(HolderCostPrice: "stkcode" is missing; the message is ignored)"},
    {"CostAnswersSecurityAsNumber", "HolderCostPrice", "stkcode", "600519",
     R"(HolderCostPrice: "stkcode" is 600519, but must be: text; the message is ignored)"},
    {"CostOfAnotherScreen", "HolderCostPrice", "screenId", R"("screen-2")",
     R"(HolderCostPrice: "screenId" names another screen; drawn all the same)"},
    {"TodayRefused", "TodayTrade", "*", R"({"success":false,"msg":"closed"})", "TodayTrade: refused: closed"},
    {"TodayWithoutData", "TodayTrade", "data", nullptr,
     R"(TodayTrade: "data" is missing; counts as nothing)"},
    {"TodayDataIsARecord", "TodayTrade", "data", "{}",
     R"(TodayTrade: "data" is object, but must be: array of objects; counts as nothing)"},
    {"TodayOrderDateMissing", "TodayTrade", "row.orderdate", nullptr,
     R"(TodayTrade: "orderdate" is missing (rows: 1); the trade stands on no bar)"},
    {"TodayOrderDateAsNumber", "TodayTrade", "row.orderdate", "20240102",
     R"(TodayTrade: "orderdate" is 20240102, but must be: text (rows: 1); the trade stands on no bar)"},
    {"TodayOrderDateDashed", "TodayTrade", "row.orderdate", R"("2024-01-02")",
     R"(TodayTrade: "orderdate" is "2024-01-02", but must be: yyyymmdd (rows: 1); the trade stands on no bar)"},
    {"TodayTimeMissing", "TodayTrade", "row.opertime", nullptr,
     R"(TodayTrade: "opertime" is missing (rows: 1); the trade is listed at a wrong time)"},
    {"TodayTimeAsNumber", "TodayTrade", "row.opertime", "9315002",
     R"(TodayTrade: "opertime" is 9315002, but must be: text (rows: 1); the trade is listed at a wrong time)"},
    {"TodayTimeWithoutHundredths", "TodayTrade", "row.opertime", R"("093150")",
     R"(TodayTrade: "opertime" is "093150", but must be: hhmmsscc (rows: 1); the trade is listed at a wrong time)"},
    {"TodayTimeWithColons", "TodayTrade", "row.opertime", R"("09:31:50")",
     R"(TodayTrade: "opertime" is "09:31:50", but must be: hhmmsscc (rows: 1); the trade is listed at a wrong time)"},
    {"HistoryRefused", "HistoryTrade", "*", R"({"success":false,"errcode":2,"msg":"the database is away"})",
     "HistoryTrade: refused: the database is away"},
    {"HistoryWithoutData", "HistoryTrade", "data", nullptr,
     R"(HistoryTrade: "data" is missing; counts as nothing)"},
    {"HistoryRowIsText", "HistoryTrade", "data", R"(["a trade"])",
     R"(HistoryTrade: "bizdate" is missing (rows: 1); the trade stands on no bar
HistoryTrade: "matchtime" is missing (rows: 1); the trade is listed at a wrong time
HistoryTrade: "bsflag2" is missing (rows: 1); counts as a sale
HistoryTrade: "matchprice" is missing (rows: 1); counts as 0
HistoryTrade: "matchqty" is missing (rows: 1); counts as 0)"},
    {"HistorySideMissing", "HistoryTrade", "row.bsflag2", nullptr,
     R"(HistoryTrade: "bsflag2" is missing (rows: 1); counts as a sale)"},
    {"HistorySideEmpty", "HistoryTrade", "row.bsflag2", R"("")",
     R"(HistoryTrade: "bsflag2" is "", but must be: "B" or "S" (rows: 1); counts as a sale)"},
    {"HistorySideOfAnOrder", "HistoryTrade", "row.bsflag2", R"("0B")",
     R"(HistoryTrade: "bsflag2" is "0B", but must be: "B" or "S" (rows: 1); counts as a sale)"},
    {"HistorySideInLowerCase", "HistoryTrade", "row.bsflag2", R"("b")",
     R"(HistoryTrade: "bsflag2" is "b", but must be: "B" or "S" (rows: 1); counts as a sale)"},
    {"HistorySideAsNumber", "HistoryTrade", "row.bsflag2", "1",
     R"(HistoryTrade: "bsflag2" is 1, but must be: text (rows: 1); counts as a sale)"},
    {"HistoryDayMissing", "HistoryTrade", "row.bizdate", nullptr,
     R"(HistoryTrade: "bizdate" is missing (rows: 1); the trade stands on no bar)"},
    {"HistoryDayAsNumber", "HistoryTrade", "row.bizdate", "20240102",
     R"(HistoryTrade: "bizdate" is 20240102, but must be: text (rows: 1); the trade stands on no bar)"},
    {"HistoryDayThatIsNone", "HistoryTrade", "row.bizdate", R"("20240231")",
     R"(HistoryTrade: "bizdate" is "20240231", but must be: yyyymmdd (rows: 1); the trade stands on no bar)"},
    {"HistoryTimeMissing", "HistoryTrade", "row.matchtime", nullptr,
     R"(HistoryTrade: "matchtime" is missing (rows: 1); the trade is listed at a wrong time)"},
    {"HistoryTimeThatIsNone", "HistoryTrade", "row.matchtime", R"("25000000")",
     R"(HistoryTrade: "matchtime" is "25000000", but must be: hhmmsscc (rows: 1); the trade is listed at a wrong time)"},
    {"HistoryPriceMissing", "HistoryTrade", "row.matchprice", nullptr,
     R"(HistoryTrade: "matchprice" is missing (rows: 1); counts as 0)"},
    {"HistoryPriceAsNumber", "HistoryTrade", "row.matchprice", "10.5",
     R"(HistoryTrade: "matchprice" is 10.5, but must be: text (rows: 1); counts as 0)"},
    {"HistoryPriceBelowZero", "HistoryTrade", "row.matchprice", R"("-1")",
     R"(HistoryTrade: "matchprice" is "-1", but must be: decimal, at least 0 (rows: 1); counts as 0)"},
    {"HistoryQuantityAsNumber", "HistoryTrade", "row.matchqty", "300",
     R"(HistoryTrade: "matchqty" is 300, but must be: text (rows: 1); counts as 0)"},
    {"HistoryQuantityAsWord", "HistoryTrade", "row.matchqty", R"("many")",
     R"(HistoryTrade: "matchqty" is "many", but must be: decimal, at least 0 (rows: 1); counts as 0)"},
    {"HistoryOfAnotherMarket", "HistoryTrade", "row.market", R"("2")",
     R"(HistoryTrade: "market" is "2", another market's (rows: 1); drawn all the same)"},
    {"HistoryMarketInLetters", "HistoryTrade", "row.market", R"("SH")",
     R"(HistoryTrade: "market" is "SH", but must be: "1" or "2" (rows: 1); drawn all the same)"},
    {"HistoryBuyAsText", "HistoryTrade", "row.buy", R"("true")",
     R"(HistoryTrade: "buy" is "true", but must be: true or false (rows: 1); counts as a sale)"},
    {"HistoryPlainPriceAsText", "HistoryTrade", "row.price", R"("10.5")",
     R"(HistoryTrade: "price" is "10.5", but must be: number (rows: 1); counts as 0)"},
    {"HistoryCommandMissing", "HistoryTrade", "cmd", nullptr,
     R"(An answer of the trading module: "cmd" is missing; the message is ignored)"},
    {"HistoryCommandAsNumber", "HistoryTrade", "cmd", "7",
     R"(An answer of the trading module: "cmd" is 7, but must be: text; the message is ignored)"},
    {"HistoryCommandUnknown", "HistoryTrade", "cmd", R"("Weather")",
     R"(Weather: "cmd" is "Weather", which nobody asked; the message is ignored)"},
    {"HistoryCommandInLowerCase", "HistoryTrade", "cmd", R"("historytrade")",
     R"(historytrade: "cmd" is "historytrade", which nobody asked; the message is ignored)"},
};

class DailyChartAnswersThatAreWrong : public WrongAnswers
{
};

TEST_P(DailyChartAnswersThatAreWrong, AreToldWithTheirCommandAndKey)
{
    EXPECT_EQ(toldOf(GetParam()), GetParam().told);
}

INSTANTIATE_TEST_SUITE_P(Answers, DailyChartAnswersThatAreWrong, ::testing::ValuesIn(dailyChartAnswers),
                         [](const auto &row) { return row.param.name; });

} // namespace
} // namespace Terminal
