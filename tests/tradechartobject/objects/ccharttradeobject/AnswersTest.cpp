#include "tests/support/ByName.h"
#include "tests/tradechartobject/objects/ccharttradeobject/CChartTradeObjectTest.h"

using ::testing::IsEmpty;
using namespace TradeChart;

namespace {

class CChartTradeObjectAnswers : public CChartTradeObjectTest
{
};

TEST_F(CChartTradeObjectAnswers, ShowsWhatItHearsAtTheNextCalcItAndAsksForNoRepaint)
{
    createMarkers();
    const LogCapture log;
    hearHistory({buy(10)});
    answerWith(todaysAnswer({sell(9)}));
    hearNotification();
    EXPECT_EQ(drawn(), "- - -");
    EXPECT_THAT(axis.updated, IsEmpty());
    EXPECT_THAT(log.all(), IsEmpty());
    recalc();
    EXPECT_EQ(drawn(), "03 - -");
}

TEST_F(CChartTradeObjectAnswers, TakesTheRowsOfAnAnswerThatCallsItselfAFailure)
{
    createMarkers();
    hear(Topic::TRADEQUERY, with(historyAnswer({buy(10)}), "success", false));
    recalc();
    EXPECT_EQ(drawn(), "0 - -");
}

TEST_F(CChartTradeObjectAnswers, TakesTodaysRowsOfAnAnswerWhateverElseItNames)
{
    createMarkers();
    QJsonObject answer{{QStringLiteral("cmd"), QStringLiteral("x")},
                       {QStringLiteral("stkcode"), QStringLiteral("000001")},
                       {QStringLiteral("market"), QStringLiteral("2")},
                       {QStringLiteral("success"), false},
                       {QStringLiteral("data"), QJsonArray{buy(10)}}};
    answerWith(QJsonDocument(answer).toJson());
    EXPECT_TRUE(overlay->requestTodayTradeInfo());
    recalc();
    EXPECT_EQ(drawn(), "0 - -");
}

TEST_F(CChartTradeObjectAnswers, TakesAnAnswerWhateverMarketAndScreenItNames)
{
    createMarkers();
    QJsonObject answer = historyAnswer({buy(10)});
    answer.insert(QStringLiteral("market"), QStringLiteral("2"));
    answer.insert(QStringLiteral("screenId"), QStringLiteral("another"));
    hear(Topic::TRADEQUERY, answer);
    recalc();
    EXPECT_EQ(drawn(), "0 - -");
}

TEST_F(CChartTradeObjectAnswers, ReplacesAllTradesByAHistoryAnswerTodaysIncluded)
{
    createMarkers();
    answerWith(todaysAnswer({sell(9)}));
    hearNotification();
    hearHistory({buy(10)});
    recalc();
    EXPECT_EQ(drawn(), "0 - -") << "no trade has a time, so all count as past ones";
}

TEST_F(CChartTradeObjectAnswers, TakesAnotherOverlaysHistoryQuestionAsAnAnswerWithoutTrades)
{
    createMarkers();
    hearHistory({buy(10)});
    hear(
        Topic::TRADEQUERY,
        R"({"cmd":"HistoryTrade","end":"20240104","market":"SH","screenId":"s","start":"20240102","stkcode":"600536"})");
    recalc();
    EXPECT_EQ(drawn(), "- - -") << "until the trading module answers the next question of its own";
}

TEST_F(CChartTradeObjectAnswers, IsNotTouchedByAnotherOverlaysOtherQuestions)
{
    createMarkers();
    hearHistory({buy(10)});
    for (const char *cmd : {"TodayTrade", "HolderCostPrice", "EntrustTodayTrade", "EntrustHistoryTrade"}) {
        hear(Topic::TRADEQUERY, {{QStringLiteral("cmd"), QLatin1String(cmd)},
                                 {QStringLiteral("stkcode"), QStringLiteral("600536")}});
    }
    recalc();
    EXPECT_EQ(drawn(), "0 - -");
    EXPECT_THAT(requests(), IsEmpty());
}

TEST_F(CChartTradeObjectAnswers, TakesPastTradesOfTheSecurityInAnyLetterCase)
{
    create(tradeMarkers);
    calc(makeSecurity(1, "abC1", 5), threeDays, Korvane::DayPeriod);
    hear(Topic::TRADEQUERY, sentAnswer("HistoryTrade", QJsonArray{buy(10)}, "ABc1"));
    recalc();
    EXPECT_EQ(drawn(), "0 - -");
}

struct EmptyHistory
{
    const char *name;
    QJsonValue data;
};

class CChartTradeObjectAnswersOfHistory : public CChartTradeObjectTest,
                                          public ::testing::WithParamInterface<EmptyHistory>
{
};

TEST_P(CChartTradeObjectAnswersOfHistory, MakeItForgetItsTrades)
{
    createMarkers();
    hearHistory({buy(10)});
    hear(Topic::TRADEQUERY, sentAnswer("HistoryTrade", GetParam().data));
    recalc();
    EXPECT_EQ(drawn(), "- - -");
}

INSTANTIATE_TEST_SUITE_P(Data, CChartTradeObjectAnswersOfHistory,
                         ::testing::Values(EmptyHistory{"WithoutRows", QJsonArray()},
                                           EmptyHistory{"WithNull", QJsonValue()},
                                           EmptyHistory{"WithoutData", QJsonValue(QJsonValue::Undefined)},
                                           EmptyHistory{"WithAnObject", buy(10)},
                                           EmptyHistory{"WithAText", QStringLiteral("[]")}),
                         ByName());

struct TodaysAnswer
{
    const char *name;
    const char *answer;
    bool isTaken;
};

class CChartTradeObjectAnswersOfToday : public CChartTradeObjectTest,
                                        public ::testing::WithParamInterface<TodaysAnswer>
{
};

TEST_P(CChartTradeObjectAnswersOfToday, LeaveTheTradesWithoutRows)
{
    createMarkers();
    hearHistory({buy(10)});
    answerWith(GetParam().answer);
    EXPECT_EQ(overlay->requestTodayTradeInfo(), GetParam().isTaken);
    recalc();
    EXPECT_EQ(drawn(), "0 - -");
}

INSTANTIATE_TEST_SUITE_P(
    Answers, CChartTradeObjectAnswersOfToday,
    ::testing::Values(TodaysAnswer{"None", "", false}, TodaysAnswer{"NoJson", "{", false},
                      TodaysAnswer{"AnArray", "[]", false}, TodaysAnswer{"AnEmptyObject", "{}", true},
                      TodaysAnswer{"NoRows", R"({"data":[]})", true},
                      TodaysAnswer{"RowsThatAreNoArray", R"({"data":{"buy":true}})", true}),
    ByName());

} // namespace
