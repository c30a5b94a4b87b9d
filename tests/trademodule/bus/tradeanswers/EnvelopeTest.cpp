#include "tests/trademodule/bus/tradeanswers/TradeAnswersTest.h"

namespace TradeModule {

namespace {

using TradeAnswersEnvelope = TradeAnswersTest;

TEST_F(TradeAnswersEnvelope, CarryTheEnvelopeOfTheQuestion)
{
    const QJsonObject answer = ask(question("HolderCostPrice", bank()));

    EXPECT_EQ(answer[QStringLiteral("cmd")].toString(), QStringLiteral("HolderCostPrice"));
    EXPECT_EQ(answer[QStringLiteral("stkcode")].toString(), QStringLiteral("000001"));
    EXPECT_EQ(answer[QStringLiteral("market")].toString(), QStringLiteral("2"));
    EXPECT_EQ(answer[QStringLiteral("screenId")].toString(), QStringLiteral("screen1"));
    EXPECT_EQ(answer[QStringLiteral("errcode")], QJsonValue(0));
    EXPECT_EQ(answer[QStringLiteral("success")], QJsonValue(true));
    EXPECT_EQ(answer[QStringLiteral("msg")], QJsonValue(QStringLiteral("")));
}

TEST_F(TradeAnswersEnvelope, LeaveOutAScreenThatWasNotNamed)
{
    QJsonObject object = question("HolderCostPrice", liquor());
    object.remove(QStringLiteral("screenId"));

    const QJsonObject answer = ask(object);

    EXPECT_FALSE(answer.contains(QStringLiteral("screenId")));
    EXPECT_EQ(answer[QStringLiteral("market")].toString(), QStringLiteral("1"));
}

TEST_F(TradeAnswersEnvelope, IgnoreKeysTheyDoNotKnow)
{
    QJsonObject object = question("TodayTrade", bank());
    object[QStringLiteral("colour")] = QStringLiteral("red");

    EXPECT_TRUE(ask(object)[QStringLiteral("success")].toBool());
}

} // namespace

} // namespace TradeModule
