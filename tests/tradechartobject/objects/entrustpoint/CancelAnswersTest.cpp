#include "tests/tradechartobject/objects/entrustpoint/EntrustPointCancelTest.h"

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using namespace TradeChart;

namespace {

class EntrustPointCancelAnswers : public EntrustPointCancelTest
{
};

TEST_F(EntrustPointCancelAnswers, ShowsTheMessagesOfASuccessOneBehindTheOther)
{
    hearCancelled({{QStringLiteral("success"), true},
                   {QStringLiteral("msg"), QStringLiteral("not this")},
                   {QStringLiteral("data"),
                    QJsonArray{QJsonObject{{QStringLiteral("msgok "), QStringLiteral("撤")}},
                               QJsonObject{{QStringLiteral("msgok"), QStringLiteral("nor this")}}, 5,
                               QJsonObject{{QStringLiteral("msgok "), 7}},
                               QJsonObject{{QStringLiteral("msgok "), QStringLiteral("单")}}}}});
    EXPECT_THAT(axis.messages, ElementsAre("撤单"));
}

TEST_F(EntrustPointCancelAnswers, ShowsTheMessageOfAFailure)
{
    hearCancelled({{QStringLiteral("success"), false}, {QStringLiteral("msg"), QStringLiteral("不可撤")}});
    hearCancelled({{QStringLiteral("errcode"), 0}, {QStringLiteral("msg"), QStringLiteral("no success")}});
    hearCancelled({{QStringLiteral("success"), QStringLiteral("true")},
                   {QStringLiteral("msg"), QStringLiteral("text")}});
    EXPECT_THAT(axis.messages, ElementsAre("不可撤", "no success", "text"));
}

TEST_F(EntrustPointCancelAnswers, ShowsAnEmptyMessageToo)
{
    hearCancelled({{QStringLiteral("success"), true}});
    hearCancelled({{QStringLiteral("success"), true},
                   {QStringLiteral("data"),
                    QJsonArray{QJsonObject{{QStringLiteral("msgok"), QStringLiteral("no blank")}}}}});
    hearCancelled({{QStringLiteral("msg"), 5}});
    EXPECT_THAT(axis.messages, ElementsAre("", "", ""));
}

TEST_F(EntrustPointCancelAnswers, ShowsNoMessageOfAFailureForASuccessNorTheOtherWayRound)
{
    const QString text = QStringLiteral("text");
    const QJsonArray parts{QJsonObject{{QStringLiteral("msgok "), QStringLiteral("ok")}}};
    hearCancelled({{QStringLiteral("success"), true}, {QStringLiteral("msg"), text}});
    hearCancelled({{QStringLiteral("success"), false}, {QStringLiteral("data"), parts}});
    hearCancelled(
        {{QStringLiteral("success"), false}, {QStringLiteral("data"), parts}, {QStringLiteral("msg"), text}});
    EXPECT_THAT(axis.messages, ElementsAre("", "", "text"));
}

TEST_F(EntrustPointCancelAnswers, HearsTheAnswerWhateverItsErrorCodeAndSecurity)
{
    hearCancelled({{QStringLiteral("success"), true},
                   {QStringLiteral("errcode"), 99},
                   {QStringLiteral("stkcode"), QStringLiteral("000001")},
                   {QStringLiteral("data"),
                    QJsonArray{QJsonObject{{QStringLiteral("msgok "), QStringLiteral("ok")}}}}});
    EXPECT_THAT(axis.messages, ElementsAre("ok"));
}

TEST_F(EntrustPointCancelAnswers, KnowsItsAnswersByTheExactId)
{
    const QString id = objectId();
    for (const QString &other : {id.toUpper(), id.mid(1, 36), id + QLatin1Char(' ')}) {
        hear(Topic::TRADEQUERY, QJsonObject{{QStringLiteral("cmd"), QStringLiteral("EntrustCancel")},
                                            {QStringLiteral("objectId"), other}});
    }
    EXPECT_THAT(axis.messages, IsEmpty());
}

TEST_F(EntrustPointCancelAnswers, AnswerIsNotHeardAsANotification)
{
    for (const int mode : {1, 2}) {
        axis.mode = mode;
        hear(Topic::TRADENOTIFY, cancelAnswer({{QStringLiteral("msg"), QStringLiteral("text")}}));
    }
    EXPECT_THAT(axis.messages, IsEmpty());
}

TEST_F(EntrustPointCancelAnswers, AnswerIsShownAfterDeleteObject)
{
    const QJsonObject answer = cancelAnswer({{QStringLiteral("msg"), QStringLiteral("text")}});
    overlay->deleteObject();
    hear(Topic::TRADEQUERY, answer);
    EXPECT_THAT(axis.messages, ElementsAre("text"));
}

TEST_F(EntrustPointCancelAnswers, AnswerStartsNoTimerAndAsksForNoRepaint)
{
    timer()->stop();
    axis.updated.clear();
    hearCancelled({{QStringLiteral("success"), true}});
    EXPECT_FALSE(timer()->isActive());
    EXPECT_THAT(axis.updated, IsEmpty());
    EXPECT_THAT(questions(), IsEmpty());
}

} // namespace
