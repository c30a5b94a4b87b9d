// What a window hears on the channel of its screen, and what it tells of it.
#include "terminal/answers/ScreenAnswers.h"
#include "tests/support/LogCapture.h"
#include "tests/support/TestBroker.h"
#include "tests/support/WaitUntil.h"
#include "tests/terminal/answers/WrongAnswer.h"

#include <gmock/gmock.h>

namespace Terminal {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

class ScreenAnswersTest : public ::testing::Test
{
protected:
    ScreenAnswersTest()
    {
        answers.setSecurity({QStringLiteral("600519"), Trading::Market::Shanghai});
        QObject::connect(&answers, &ScreenAnswers::foundWrong, &answers,
                         [this](const QStringList &faults) { told += faults; });
        QObject::connect(&answers, &ScreenAnswers::answered, &answers,
                         [this](const Trading::CheckedAnswer &answer) { answered.push_back(answer); });
        QObject::connect(&answers, &ScreenAnswers::asked, &answers,
                         [this](const QString &command) { asked.append(command); });
    }

    void take(const QByteArray &payload, const QByteArray &channel = "screen-1")
    {
        answers.take("TradeQuery", payload, channel);
    }
    void take(const QJsonObject &message, const QByteArray &channel = "screen-1")
    {
        take(QJsonDocument(message).toJson(), channel);
    }

    static QJsonObject history() { return rightAnswer(QStringLiteral("HistoryTrade")); }
    static QJsonObject question()
    {
        return objectOf(R"({"cmd":"HistoryTrade","stkcode":"600519","market":"SH","screenId":"screen-1"})");
    }
    static QJsonObject refusalOf(const char *code)
    {
        return {{QStringLiteral("cmd"), QStringLiteral("TodayTrade")},
                {QStringLiteral("stkcode"), QLatin1String(code)},
                {QStringLiteral("success"), false}};
    }
    static QJsonObject withoutSides()
    {
        QJsonObject answer = history();
        answer[QStringLiteral("data")] = QJsonArray{QJsonObject{{QStringLiteral("bizdate"), QString()}}};
        return answer;
    }

    LogCapture log;
    ScreenAnswers answers{"screen-1", nullptr};
    QStringList told;
    QStringList asked;
    std::vector<Trading::CheckedAnswer> answered;
};

class ScreenAnswersThatAreRight : public ScreenAnswersTest, public ::testing::WithParamInterface<const char *>
{
};

TEST_P(ScreenAnswersThatAreRight, AreNotSpokenOf)
{
    take(rightAnswer(QLatin1String(GetParam())));
    EXPECT_THAT(told, IsEmpty());
    EXPECT_THAT(log.lines(QtWarningMsg), IsEmpty());
    EXPECT_THAT(answered, SizeIs(1));
}

INSTANTIATE_TEST_SUITE_P(Commands, ScreenAnswersThatAreRight,
                         ::testing::Values("HolderCostPrice", "TodayTrade", "HistoryTrade",
                                           "EntrustTodayTrade", "EntrustHistoryTrade", "EntrustCancel"));

TEST_F(ScreenAnswersTest, TellAFaultOnceAndLogItEachTime)
{
    take(withoutSides());
    const int faults = told.size();
    EXPECT_GT(faults, 0);
    take(question(), "Global");
    take(withoutSides());
    EXPECT_EQ(told.size(), faults);
    EXPECT_EQ(log.lines(QtWarningMsg).size(), static_cast<size_t>(2 * faults));
}

TEST_F(ScreenAnswersTest, TellAFaultAgainOfAnotherSecurity)
{
    take(refusalOf("600519"));
    answers.setSecurity({QStringLiteral("000001"), Trading::Market::Shenzhen});
    take(refusalOf("000001"));
    EXPECT_THAT(told, SizeIs(2));
}

TEST_F(ScreenAnswersTest, SayHowManyRowsHaveAFault)
{
    QJsonObject answer = history();
    QJsonArray rows = answer.value(QStringLiteral("data")).toArray();
    for (QJsonValueRef each : rows) {
        QJsonObject row = each.toObject();
        row.remove(QStringLiteral("bsflag2"));
        each = row;
    }
    answer[QStringLiteral("data")] = rows;
    take(answer);
    EXPECT_THAT(told, ElementsAre(QStringLiteral(
                          "HistoryTrade: \"bsflag2\" is missing (rows: 2); counts as a sale")));
}

TEST_F(ScreenAnswersTest, NameWhatCannotBeRead)
{
    take(QByteArray("{\"cmd\":\"HistoryTrade\","));
    ASSERT_THAT(told, SizeIs(1));
    EXPECT_TRUE(told.front().startsWith(
        QLatin1String("An answer of the trading module: the answer is no JSON object: ")));
}

TEST_F(ScreenAnswersTest, CountRowsOfAnotherMarketAndSayNothing)
{
    QJsonObject answer = rightAnswer(QStringLiteral("EntrustTodayTrade"));
    QJsonArray rows = answer.value(QStringLiteral("data")).toArray();
    QJsonObject row = rows.at(0).toObject();
    row[QStringLiteral("market")] = QStringLiteral("2");
    rows[0] = row;
    answer[QStringLiteral("data")] = rows;
    take(answer);
    EXPECT_THAT(told, IsEmpty());
    ASSERT_THAT(answered, SizeIs(1));
    EXPECT_EQ(answered.front().rows, 1);
    EXPECT_EQ(answered.front().otherMarkets, 1);
}

TEST_F(ScreenAnswersTest, LeaveTheAnswerAloneThatCameTooLateForItsSecurity)
{
    answers.setSecurity({QStringLiteral("000001"), Trading::Market::Shenzhen});
    take(withoutSides());
    EXPECT_THAT(told, IsEmpty());
    EXPECT_THAT(answered, IsEmpty());
}

TEST_F(ScreenAnswersTest, TellOfPastTradesThatCameTwice)
{
    take(question(), "Global");
    take(history());
    take(history());
    EXPECT_THAT(told, ElementsAre(QStringLiteral(
                          "HistoryTrade: the answer came twice; every trade is listed twice")));
}

TEST_F(ScreenAnswersTest, TakePastTradesTwiceThatWereAskedForTwice)
{
    take(question(), "Global");
    take(history());
    take(question(), "Global");
    take(history());
    EXPECT_THAT(told, IsEmpty());
}

TEST_F(ScreenAnswersTest, TakeLongPastTradesTwiceThatWereAskedForBeforeTheyWereLookedAt)
{
    const QByteArray longAnswer = QJsonDocument(history()).toJson() + QByteArray(200000, ' ');
    take(question(), "Global");
    take(longAnswer);
    take(question(), "Global");
    take(longAnswer);
    ASSERT_TRUE(waitUntil([this] { return answered.size() == 2; }));
    EXPECT_THAT(told, IsEmpty());
}

TEST_F(ScreenAnswersTest, LeaveALongAnswerAloneWhoseChartHasGoneBeforeItWasLookedAt)
{
    take(QJsonDocument(withoutSides()).toJson() + QByteArray(200000, ' '));
    answers.setSecurity({QStringLiteral("000001"), Trading::Market::Shenzhen});
    take(refusalOf("000001"));
    ASSERT_TRUE(waitUntil([this] { return !answered.empty(); }));
    EXPECT_THAT(told, SizeIs(1)) << "of the refusal alone";
}

TEST_F(ScreenAnswersTest, HearTheQuestionsOfTheirOwnOverlaysAlone)
{
    take(question(), "Global");
    QJsonObject ofAnother = question();
    ofAnother[QStringLiteral("screenId")] = QStringLiteral("screen-2");
    take(ofAnother, "Global");
    EXPECT_THAT(asked, ElementsAre(QStringLiteral("HistoryTrade")));
}

TEST_F(ScreenAnswersTest, SayNothingOfARefusalToAQuestionThatNamedNoSecurity)
{
    QJsonObject ofNone = objectOf(R"({"cmd":"TodayTrade","stkcode":"","market":"","screenId":"screen-1"})");
    take(ofNone, "Global");
    take(refusalOf(""));

    EXPECT_THAT(told, IsEmpty());
    EXPECT_THAT(asked, IsEmpty());

    take(refusalOf("600519"));
    EXPECT_THAT(told, SizeIs(1));
}

TEST_F(ScreenAnswersTest, TellOfAnAnswerThatWentToEverybodyInstead)
{
    take(history(), "Global");
    EXPECT_THAT(told, ElementsAre(QStringLiteral("HistoryTrade: the answer came on channel \"Global\"; "
                                                 "the message is ignored")));
    EXPECT_THAT(answered, IsEmpty());
}

TEST_F(ScreenAnswersTest, LeaveItToTheOverlayToTellWhyACancellationWasRefused)
{
    QJsonObject answer = rightAnswer(QStringLiteral("EntrustCancel"));
    answer[QStringLiteral("success")] = false;
    answer[QStringLiteral("msg")] = QStringLiteral("dealt already");
    take(answer);
    EXPECT_THAT(told, IsEmpty());
    EXPECT_TRUE(log.has(QStringLiteral("dealt already")));
}

TEST_F(ScreenAnswersTest, TellNoValuesWhileAmountsAreHidden)
{
    answers.setAmountsHidden(true);
    QJsonObject answer = rightAnswer(QStringLiteral("HolderCostPrice"));
    answer[QStringLiteral("costprice")] = 12.345;
    take(answer);
    EXPECT_THAT(told, ElementsAre(QStringLiteral(
                          "HolderCostPrice: \"costprice\" is ***, but must be: text; counts as 0")));
}

/// Trade points of a screen on a real bus.
TEST_F(ScreenAnswersTest, HasTheTradePointsAskForTodaysTradesWhenTheyGetNewBars)
{
    TestBroker broker;
    LocalCommunication::EndPoint points(nullptr);
    QList<QByteArray> news;
    QObject::connect(&points, &LocalCommunication::EndPoint::messageReceived, &points,
                     [&news](const QByteArray &, const QByteArray &payload) { news.append(payload); });
    points.subscribe("screen-1", QByteArray("TradeNotify"));
    points.connect(broker.address());
    bool listens = false;
    QObject::connect(&answers, &ScreenAnswers::listening, &answers, [&listens] { listens = true; });
    answers.start(broker.address());
    ASSERT_TRUE(waitUntil([&] { return listens && points.isConnected(); }));

    points.sendMessage("Global", "TradeQuery",
                       R"({"cmd":"TodayTrade","stkcode":"600519","screenId":"screen-1"})");
    points.sendMessage("Global", "TradeQuery", QJsonDocument(question()).toJson());
    ASSERT_TRUE(waitUntil([&news] { return !news.isEmpty(); }));
    EXPECT_THAT(news, ElementsAre(QByteArray(R"({"stkcode":"600519"})"))) << "once, for the past trades";
}

} // namespace
} // namespace Terminal
