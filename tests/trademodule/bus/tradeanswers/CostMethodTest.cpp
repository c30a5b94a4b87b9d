#include "tests/trademodule/bus/tradeanswers/TradeAnswersTest.h"

namespace TradeModule {

namespace {

class TradeAnswersCostMethod : public TradeAnswersTest
{
protected:
    std::string refusal(const char *question)
    {
        const QJsonObject answer = ask(json(question));
        EXPECT_EQ(answer[QStringLiteral("errcode")].toInt(), 1);
        return answer[QStringLiteral("msg")].toString().toStdString();
    }
};

TEST_F(TradeAnswersCostMethod, IsSetAndTellsOfEachHolding)
{
    book({fill(Side::Buy, bank(), 20240102, 10, 100)});
    PaperExchange exchange(&ledger());
    std::vector<SecurityId> told;
    TradeAnswers answers(&ledger(), &exchange, [&told](const SecurityId &held) { told.push_back(held); });

    const QJsonObject answer =
        QJsonDocument::fromJson(answers.answer(json(R"({"cmd":"CostMethod","costmethod":"diluted"})")))
            .object();

    EXPECT_EQ(answer[QStringLiteral("data")].toObject(), json(R"({"costmethod":"diluted"})"));
    EXPECT_EQ(ledger().costMethod(), CostMethod::Diluted);
    EXPECT_THAT(told, ::testing::ElementsAre(bank()));
}

TEST_F(TradeAnswersCostMethod, StaysWhereTheWordIsUnknown)
{
    EXPECT_THAT(refusal(R"({"cmd":"CostMethod","costmethod":"lifo"})"),
                ::testing::HasSubstr("diluted or fifo"));
    EXPECT_THAT(refusal(R"({"cmd":"CostMethod"})"), ::testing::HasSubstr("costmethod"));
    EXPECT_EQ(ledger().costMethod(), CostMethod::Average);
}

} // namespace

} // namespace TradeModule
