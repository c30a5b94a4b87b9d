#include "trademodule/bus/AnswerPost.h"

#include <gmock/gmock.h>

#include <QJsonDocument>

#include <string>
#include <utility>
#include <vector>

namespace TradeModule {

namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Pair;

const QByteArray longAnswer(100'000, 'x');

/// A bus that takes so many bytes more.
class AnswerPostTest : public ::testing::Test
{
protected:
    void give(const QByteArray &answer, const char *screen = "screen")
    {
        const QJsonObject question{{QStringLiteral("cmd"), QStringLiteral("HistoryTrade")},
                                   {QStringLiteral("stkcode"), QStringLiteral("600519")},
                                   {QStringLiteral("screenId"), QLatin1String(screen)}};
        post.give(question, "reply", answer);
    }

    static QJsonObject asObject(const std::string &answer)
    {
        return QJsonDocument::fromJson(QByteArray::fromStdString(answer)).object();
    }

    int room = 1 << 20;
    bool hasBus = true;
    std::vector<std::pair<std::string, std::string>> sent; // channel and answer
    AnswerPost post{[this](const QByteArray &channel, const QByteArray &answer) {
                        const bool isTaken = hasBus && channel != "impossible" && channel != "forgotten" &&
                                             answer.size() <= room;
                        if (isTaken) {
                            room -= answer.size();
                            sent.emplace_back(channel.toStdString(), answer.toStdString());
                        }
                        return isTaken;
                    },
                    [this] { return hasBus; },
                    [this](const QString &reason) { refusals.push_back(reason.toStdString()); }};
    std::vector<std::string> refusals; // for the log
};

} // namespace

TEST_F(AnswerPostTest, SendsAnAnswerToTheScreenThatAsks)
{
    give("answer");
    EXPECT_THAT(sent, ElementsAre(Pair("screen", "answer")));
}

TEST_F(AnswerPostTest, SendsAnAnswerToItsSenderWhereNoScreenAsks)
{
    give("answer", "");
    EXPECT_THAT(sent, ElementsAre(Pair("reply", "answer")));
}

TEST_F(AnswerPostTest, TellsTheAskerOfALongAnswerThatThereIsNoRoomForIt)
{
    room = 10'000;

    give(longAnswer);

    ASSERT_EQ(sent.size(), 1U);
    EXPECT_EQ(sent[0].first, "screen");
    const QJsonObject told = asObject(sent[0].second);
    EXPECT_EQ(told[QStringLiteral("cmd")].toString(), QStringLiteral("HistoryTrade"));
    EXPECT_EQ(told[QStringLiteral("stkcode")].toString(), QStringLiteral("600519"));
    EXPECT_FALSE(told[QStringLiteral("success")].toBool(true));
    EXPECT_EQ(told[QStringLiteral("errcode")].toInt(), 2);
    EXPECT_THAT(told[QStringLiteral("msg")].toString().toStdString(), HasSubstr("no room for the answer"));
    EXPECT_THAT(refusals, ElementsAre(HasSubstr("which has 100000 bytes")));
}

TEST_F(AnswerPostTest, TellsItAsSoonAsThereIsRoom)
{
    room = 0;
    give(longAnswer);
    EXPECT_THAT(sent, IsEmpty());
    post.giveWaiting();
    EXPECT_THAT(sent, IsEmpty());
    room = 10'000;

    post.giveWaiting();

    ASSERT_EQ(sent.size(), 1U);
    EXPECT_EQ(asObject(sent[0].second)[QStringLiteral("errcode")].toInt(), 2);
    post.giveWaiting();
    EXPECT_EQ(sent.size(), 1U) << "once";
}

TEST_F(AnswerPostTest, KeepsShortAnswersAsTheyAreUntilThereIsRoom)
{
    room = 0;
    give("an order was placed");
    give("another one");
    room = 1000;

    post.giveWaiting();

    EXPECT_THAT(sent, ElementsAre(Pair("screen", "an order was placed"), Pair("screen", "another one")));
}

TEST_F(AnswerPostTest, TellsItsSenderThatNoChannelCanHaveTheNameOfTheScreen)
{
    give("answer", "impossible");

    ASSERT_EQ(sent.size(), 1U);
    EXPECT_EQ(sent[0].first, "reply");
    EXPECT_THAT(sent[0].second, HasSubstr("cannot be a channel"));
    EXPECT_THAT(refusals, ElementsAre(HasSubstr("cannot be a channel")));
}

TEST_F(AnswerPostTest, KeepsNothingForABusThatIsGone)
{
    hasBus = false;
    give("answer");
    hasBus = true;

    post.giveWaiting();

    EXPECT_THAT(sent, IsEmpty());
}

TEST_F(AnswerPostTest, KeepsNoAnswerBackForOneThatIsNeverTaken)
{
    room = 0;
    post.give({}, "forgotten", "lost");
    give("answer");
    room = 100;

    post.giveWaiting();

    EXPECT_THAT(sent, ElementsAre(Pair("screen", "answer")));
}

TEST_F(AnswerPostTest, TriesForAMinute)
{
    room = 0;
    give("answer");
    for (int second = 0; second < 60; ++second) {
        post.giveWaiting();
    }
    room = 100;

    post.giveWaiting();

    EXPECT_THAT(sent, IsEmpty());
}

TEST_F(AnswerPostTest, KeepsTheNewestOfThousands)
{
    room = 0;
    for (int i = 0; i < 5000; ++i) {
        give(QByteArray::number(i));
    }
    room = 1 << 20;

    post.giveWaiting();

    EXPECT_EQ(sent.size(), 4096U);
    EXPECT_EQ(sent.back().second, "4999");
}

} // namespace TradeModule
