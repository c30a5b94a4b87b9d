#include "tests/trademodule/bus/tradeanswers/TradeAnswersTest.h"

namespace TradeModule {

namespace {

class TradeAnswersResults : public TradeAnswersTest
{
protected:
    /// Two sales of the bank: 90 and 47.50.
    void bookTrades()
    {
        book({fill(Side::Buy, bank(), 20240102, 10, 100), fill(Side::Sell, bank(), 20240103, 11, 100),
              fill(Side::Buy, bank(), 20240201, 10, 200, QStringLiteral("1")),
              fill(Side::Sell, bank(), 20250201, 10.55, 100)});
    }

    QJsonObject results(const char *question)
    {
        const QJsonObject answer = ask(json(question));
        EXPECT_EQ(answer[QStringLiteral("success")], QJsonValue(true))
            << answer[QStringLiteral("msg")].toString().toStdString();
        return answer[QStringLiteral("data")].toObject();
    }

    std::string refusal(const char *question)
    {
        const QJsonObject answer = ask(json(question));
        EXPECT_EQ(answer[QStringLiteral("success")], QJsonValue(false));
        EXPECT_EQ(answer[QStringLiteral("errcode")].toInt(), 1);
        return answer[QStringLiteral("msg")].toString().toStdString();
    }
};

TEST_F(TradeAnswersResults, HaveTheColumnsOfTheCommandAsTexts)
{
    bookTrades();

    const QJsonArray rows = results(R"({"cmd":"Results","by":"sale"})")[QStringLiteral("rows")].toArray();

    ASSERT_EQ(rows.size(), 2);
    EXPECT_EQ(rows[0].toObject(),
              json(R"({"date":"2024-01-03","time":"10:00:00","code":"000001","market":"SZ","name":"",
                       "price":"11.00","quantity":"100","amount":"1100.00","fee":"5.00","stampduty":"0.00",
                       "soldcost":"1005.00","profit":"90.00","percent":"8.96"})"));
}

TEST_F(TradeAnswersResults, NameTheWayToReckonCosts)
{
    ledger().setCostMethod(CostMethod::Fifo);

    const QJsonObject answer = ask(json(R"({"cmd":"Results","by":"year","objectId":"7"})"));

    EXPECT_EQ(answer[QStringLiteral("costmethod")].toString(), QStringLiteral("fifo"));
    EXPECT_EQ(answer[QStringLiteral("objectId")].toString(), QStringLiteral("7"));
}

TEST_F(TradeAnswersResults, BringAPartWithCountAndSumOfTheWholeList)
{
    bookTrades();

    const QJsonObject data =
        results(R"({"cmd":"Results","by":"sale","first":"1","most":"1","order":"profit","descending":true})");

    EXPECT_EQ(data[QStringLiteral("first")].toString(), QStringLiteral("1"));
    EXPECT_EQ(data[QStringLiteral("count")].toString(), QStringLiteral("2"));
    ASSERT_EQ(data[QStringLiteral("rows")].toArray().size(), 1);
    EXPECT_EQ(data[QStringLiteral("rows")].toArray()[0].toObject()[QStringLiteral("profit")].toString(),
              QStringLiteral("47.50"));
    EXPECT_EQ(data[QStringLiteral("sum")].toObject(),
              json(R"({"amount":"2155.00","fee":"10.00","stampduty":"0.00","soldcost":"2007.50",
                       "profit":"137.50","percent":"6.85"})"));
}

TEST_F(TradeAnswersResults, AreOfOneSecurityWhenItIsNamed)
{
    bookTrades();

    EXPECT_EQ(results(R"({"cmd":"Results","by":"sale","stkcode":"600519"})")[QStringLiteral("count")],
              QStringLiteral("0"));
    EXPECT_EQ(results(R"({"cmd":"Results","by":"sale","stkcode":"000001"})")[QStringLiteral("count")],
              QStringLiteral("2"));
}

TEST_F(TradeAnswersResults, AreNeverMoreThanAThousandRows)
{
    Executions many;
    for (int i = 0; i < 2400; ++i) {
        many.append(fill(i % 2 == 0 ? Side::Buy : Side::Sell, bank(), day(20100101).plusDays(i), 10, 100));
    }
    book(many);

    const QJsonObject data = results(R"({"cmd":"Results","by":"sale"})");

    EXPECT_EQ(data[QStringLiteral("rows")].toArray().size(), 1000);
    EXPECT_EQ(data[QStringLiteral("count")].toString(), QStringLiteral("1200"));
}

TEST_F(TradeAnswersResults, NameTheSecuritiesOfWhichStatementsAreMissing)
{
    book({fill(Side::Sell, bank(), 20240103, 11, 100)});

    EXPECT_EQ(results(R"({"cmd":"Results","by":"trip"})")[QStringLiteral("incomplete")].toArray(),
              QJsonArray{QStringLiteral("000001")});
}

TEST_F(TradeAnswersResults, SayWhichFieldOfTheQuestionIsWrong)
{
    using ::testing::HasSubstr;

    EXPECT_THAT(refusal(R"({"cmd":"Results"})"), HasSubstr("\"by\""));
    EXPECT_THAT(refusal(R"({"cmd":"Results","by":"week"})"), HasSubstr("sale, trip, security"));
    EXPECT_THAT(refusal(R"({"cmd":"Results","by":"year","first":"-1"})"), HasSubstr("\"first\""));
    EXPECT_THAT(refusal(R"({"cmd":"Results","by":"year","most":"1001"})"), HasSubstr("from 1 to 1000"));
    EXPECT_THAT(refusal(R"({"cmd":"Results","by":"year","most":5})"), HasSubstr("\"most\""));
    EXPECT_THAT(refusal(R"({"cmd":"Results","by":"year","order":"held"})"), HasSubstr("column of this list"));
    EXPECT_THAT(refusal(R"({"cmd":"Results","by":"year","order":"luck"})"), HasSubstr("\"order\""));
}

} // namespace

} // namespace TradeModule
