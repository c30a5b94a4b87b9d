#include "tests/trademodule/bus/tradeanswers/TradeAnswersTest.h"

namespace TradeModule {

namespace {

using TradeAnswersCost = TradeAnswersTest;

TEST_F(TradeAnswersCost, TellTheCostOfAHolding)
{
    book({fill(Side::Buy, bank(), 20240102, 10, 100), fill(Side::Sell, bank(), 20240103, 12, 50)});

    const QJsonObject answer = ask(question("HolderCostPrice", bank()));

    EXPECT_EQ(answer[QStringLiteral("data")].toObject(),
              json(R"({"stkcode":"000001","market":"2","costprice":"10.050"})"));
    EXPECT_EQ(answer[QStringLiteral("costprice")].toString(), QStringLiteral("10.050"));
}

TEST_F(TradeAnswersCost, HaveNoCostWithoutAHolding)
{
    book({fill(Side::Buy, bank(), 20240102, 10, 100), fill(Side::Sell, bank(), 20240103, 12, 100)});

    const QJsonObject answer = ask(question("HolderCostPrice", bank()));

    EXPECT_EQ(answer[QStringLiteral("data")].toObject(), json(R"({"stkcode":"000001","market":"2"})"));
    EXPECT_EQ(answer[QStringLiteral("costprice")].toString(), QStringLiteral("nan"));
    EXPECT_TRUE(answer[QStringLiteral("success")].toBool());
}

TEST_F(TradeAnswersCost, TellThatThereIsNoCostWhenTheQuestionIsNotUnderstood)
{
    const QJsonObject answer =
        ask(json(R"({"cmd":"HolderCostPrice","stkcode":"00700","market":"HK","screenId":"s"})"));

    EXPECT_EQ(answer[QStringLiteral("success")], QJsonValue(false));
    EXPECT_EQ(answer[QStringLiteral("costprice")].toString(), QStringLiteral("nan"));
}

TEST_F(TradeAnswersCost, TellThatThereIsNoCostWhenTheLedgerFails)
{
    Database(location()).run(QStringLiteral("DROP TABLE holding"));

    const QJsonObject answer = ask(question("HolderCostPrice", bank()));

    EXPECT_EQ(answer[QStringLiteral("success")], QJsonValue(false));
    EXPECT_EQ(answer[QStringLiteral("costprice")].toString(), QStringLiteral("nan"));
}

TEST_F(TradeAnswersCost, TellOfNoCostWhenAnotherQuestionFails)
{
    EXPECT_FALSE(ask(json(R"({"cmd":"TodayTrade"})")).contains(QStringLiteral("costprice")));
}

} // namespace

} // namespace TradeModule
