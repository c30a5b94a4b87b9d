#include "tests/support/ByName.h"
#include "tests/tradechartobject/objects/bspoint/BSPointTest.h"

using ::testing::IsEmpty;
using ::testing::SizeIs;
using namespace TradeChart;

namespace {

class BSPointAnswers : public BSPointTest
{
};

TEST_F(BSPointAnswers, TakesAnswersInAnyLetterCaseOfTheCode)
{
    create();
    calc(makeSecurity(1, "abC1", 5), threeDays, Korvane::DayPeriod);
    hear(Topic::TRADEQUERY,
         sentAnswer("HistoryTrade",
                    QJsonArray{SentTrade{"B", "20240102", "9301500", "1", "1"}.in(pastTrades)}, "ABc1"));
    hear(Topic::TRADEQUERY,
         sentAnswer("TodayTrade",
                    QJsonArray{SentTrade{"S", "20240104", "9301500", "1", "1"}.in(todaysTrades)}, "aBC1"));
    EXPECT_EQ(drawn(), "B S");
}

TEST_F(BSPointAnswers, ReportsEveryAnswerAsHandled)
{
    create();
    EXPECT_TRUE(overlay->handleQueryHistoryTradeInfoRes({}));
    EXPECT_TRUE(overlay->handleQueryTodayTradeInfoRes({}));
    EXPECT_TRUE(overlay->calcBSPointPriceInfo());
    const SentTrade row{"B", "20240102", "9301500", "1", "1"};
    EXPECT_TRUE(overlay->handleQueryHistoryTradeInfoRes({row.in(pastTrades)}));
    EXPECT_TRUE(overlay->handleQueryTodayTradeInfoRes({row.in(todaysTrades)}));
    EXPECT_TRUE(overlay->calcBSPointPriceInfo());
}

TEST_F(BSPointAnswers, TakesAnAnswerThatComesWhileTheQuestionIsSent)
{
    create();
    bus().duringSend = [] {
        bus().duringSend = nullptr;
        hearHistory({{"B", "20240103", "9301500", "1", "1"}});
    };
    EXPECT_TRUE(calc(shanghai, threeDays, Korvane::DayPeriod));
    EXPECT_EQ(drawn(), " B ");
}

TEST_F(BSPointAnswers, TakesMissingRowsAsAnEmptyAnswer)
{
    createOnThreeDays();
    for (const char *cmd : {"TodayTrade", "HistoryTrade"}) {
        for (const QJsonValue &data : {QJsonValue(QJsonValue::Undefined), QJsonValue(QStringLiteral("x")),
                                       QJsonValue(QJsonObject{{QStringLiteral("bsflag2"), 1}})}) {
            timer()->stop();
            hear(Topic::TRADEQUERY, sentAnswer(cmd, data));
            EXPECT_TRUE(timer()->isActive()) << cmd;
        }
    }
    EXPECT_THAT(axis.updated, IsEmpty());
    EXPECT_EQ(drawn(), "   ");
}

TEST_F(BSPointAnswers, AsksForARepaintAfterEveryAnswerAlsoOneThatSaysTheSame)
{
    createOnThreeDays();
    for (int time = 0; time < 2; ++time) {
        hearHistory({{"B", "20240103", "9301500", "1", "100"}});
        hearToday({{"B", "20240104", "9301500", "1", "100"}});
    }
    EXPECT_THAT(axis.updated, SizeIs(4));
}

class BSPointAnswersEach : public BSPointTest, public ::testing::WithParamInterface<TradesAnswer>
{
protected:
    /// An answer with one buy on the first of the three days; its row says `more`, too.
    static QJsonObject oneBuy(const QJsonObject &more = {})
    {
        QJsonObject row = SentTrade{"B", "20240102", "9301500", "1", "1"}.in(GetParam());
        for (auto field = more.begin(); field != more.end(); ++field) {
            row.insert(field.key(), field.value());
        }
        return sentAnswer(GetParam().name, QJsonArray{row});
    }
};

TEST_P(BSPointAnswersEach, IsTakenWhateverMarketAndScreenItNames)
{
    createOnThreeDays();
    QJsonObject other = oneBuy();
    other.insert(QStringLiteral("market"), QStringLiteral("2"));
    other.insert(QStringLiteral("screenId"), QStringLiteral("another"));
    hear(Topic::TRADEQUERY, other);
    EXPECT_EQ(drawn(), "B  ");
}

TEST_P(BSPointAnswersEach, IsTakenAlsoWhenItCallsItselfAFailure)
{
    createOnThreeDays();
    QJsonObject failure = oneBuy();
    failure.insert(QStringLiteral("success"), false);
    failure.insert(QStringLiteral("errcode"), 5);
    failure.insert(QStringLiteral("msg"), QStringLiteral("timed out"));
    hear(Topic::TRADEQUERY, failure);
    EXPECT_EQ(drawn(), "B  ");
}

TEST_P(BSPointAnswersEach, IsTakenWithRowsThatNameAnotherSecurity)
{
    createOnThreeDays();
    hear(Topic::TRADEQUERY, oneBuy({{QStringLiteral("stkcode"), QStringLiteral("000001")},
                                    {QStringLiteral("market"), QStringLiteral("2")}}));
    EXPECT_EQ(drawn(), "B  ");
    EXPECT_THAT(listOn(0), SizeIs(1));
}

INSTANTIATE_TEST_SUITE_P(Kinds, BSPointAnswersEach, ::testing::Values(pastTrades, todaysTrades), ByName());

} // namespace
