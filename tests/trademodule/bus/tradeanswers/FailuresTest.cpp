#include "tests/support/ByName.h"
#include "tests/trademodule/bus/tradeanswers/TradeAnswersTest.h"
#include "trademodule/bus/AnswerMessage.h"

namespace TradeModule {

namespace {

using ::testing::HasSubstr;

using TradeAnswersFailures = TradeAnswersTest;

struct WrongQuestion
{
    std::string name;
    const char *text;
    std::string field;
};

class TradeAnswersFailuresOfQuestions : public TradeAnswersTest,
                                        public ::testing::WithParamInterface<WrongQuestion>
{
};

TEST_F(TradeAnswersFailures, SurviveALedgerThatFails)
{
    Database(location()).run(QStringLiteral("DROP TABLE holding"));

    const QJsonObject answer = ask(question("HolderCostPrice", bank()));

    EXPECT_EQ(answer[QStringLiteral("success")], QJsonValue(false));
    EXPECT_EQ(answer[QStringLiteral("errcode")], QJsonValue(AnswerMessage::LedgerFailed));
}

TEST_P(TradeAnswersFailuresOfQuestions, AreAnsweredWithTheNameOfTheField)
{
    const QJsonObject answer = ask(json(GetParam().text));

    EXPECT_EQ(answer[QStringLiteral("success")], QJsonValue(false));
    EXPECT_EQ(answer[QStringLiteral("errcode")], QJsonValue(AnswerMessage::NotUnderstood));
    EXPECT_THAT(answer[QStringLiteral("msg")].toString().toStdString(),
                HasSubstr("\"" + GetParam().field + "\""));
}

INSTANTIATE_TEST_SUITE_P(
    With, TradeAnswersFailuresOfQuestions,
    ::testing::Values(
        WrongQuestion{"Nothing", "{}", "cmd"},
        WrongQuestion{"CommandAsNumber", R"({"cmd":1,"stkcode":"000001","market":"SZ"})", "cmd"},
        WrongQuestion{"UnknownCommand", R"({"cmd":"Dance","stkcode":"000001","market":"SZ"})", "Dance"},
        WrongQuestion{"NoCode", R"({"cmd":"TodayTrade","market":"SZ"})", "stkcode"},
        WrongQuestion{"CodeAsNumber", R"({"cmd":"TodayTrade","stkcode":1,"market":"SZ"})", "stkcode"},
        WrongQuestion{"NoMarket", R"({"cmd":"HolderCostPrice","stkcode":"000001"})", "market"},
        WrongQuestion{"AnswersMarket", R"({"cmd":"HolderCostPrice","stkcode":"000001","market":"2"})",
                      "market"},
        WrongQuestion{"OtherMarket", R"({"cmd":"HolderCostPrice","stkcode":"00700","market":"HK"})",
                      "market"},
        WrongQuestion{"NoStart",
                      R"({"cmd":"HistoryTrade","stkcode":"000001","market":"SZ","end":"20240101"})", "start"},
        WrongQuestion{
            "StartAsNumber",
            R"({"cmd":"HistoryTrade","stkcode":"000001","market":"SZ","start":20240101,"end":"20240101"})",
            "start"},
        WrongQuestion{"PriceOfMoreThanAnyHas",
                      R"({"cmd":"EntrustPlace","stkcode":"000001","market":"SZ","bsflag2":"0B",
                          "orderprice":"1000000.01","orderqty":"100"})",
                      "orderprice"},
        WrongQuestion{"QuantityOfMoreThanThereIs",
                      R"({"cmd":"EntrustPlace","stkcode":"000001","market":"SZ","bsflag2":"0B",
                          "orderprice":"10","orderqty":"1000000001"})",
                      "orderqty"},
        WrongQuestion{
            "EndThatIsNoDate",
            R"({"cmd":"HistoryTrade","stkcode":"000001","market":"SZ","start":"20240101","end":"20240231"})",
            "end"}),
    ByName());

} // namespace

} // namespace TradeModule
