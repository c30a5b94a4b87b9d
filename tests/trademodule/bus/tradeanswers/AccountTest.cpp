#include "tests/trademodule/bus/tradeanswers/TradeAnswersTest.h"

namespace TradeModule {

namespace {

class TradeAnswersAccount : public TradeAnswersTest
{
protected:
    QJsonObject account()
    {
        const QJsonObject answer = ask(json(R"({"cmd":"AccountInfo","screenId":"s","objectId":"{id}"})"));
        EXPECT_EQ(answer[QStringLiteral("success")], QJsonValue(true))
            << answer[QStringLiteral("msg")].toString().toStdString();
        return answer[QStringLiteral("data")].toObject();
    }

    void place(Direction direction, double price, qint64 quantity)
    {
        PaperExchange(&ledger()).place(bank(), direction, Money::ofYuan(price).value(), quantity);
    }
};

TEST_F(TradeAnswersAccount, NeedNoSecurityAndGoBackToWhoAsked)
{
    const QJsonObject answer = ask(json(R"({"cmd":"AccountInfo","screenId":"s","objectId":"{id}"})"));

    EXPECT_EQ(answer[QStringLiteral("success")], QJsonValue(true));
    EXPECT_EQ(answer[QStringLiteral("screenId")].toString(), QStringLiteral("s"));
    EXPECT_EQ(answer[QStringLiteral("objectId")].toString(), QStringLiteral("{id}"));
}

TEST_F(TradeAnswersAccount, TellTheCashOfANewAccount)
{
    EXPECT_EQ(account(), json(R"({"cash":"1000000.00","available":"1000000.00","positions":[]})"));
}

TEST_F(TradeAnswersAccount, KeepTheCashThatOpenBuysNeedWithTheirFees)
{
    place(Direction::Buy, 10, 1000); // commission 5.00, transfer fee 0.10

    const QJsonObject data = account();

    EXPECT_EQ(data[QStringLiteral("cash")].toString(), QStringLiteral("1000000.00"));
    EXPECT_EQ(data[QStringLiteral("available")].toString(), QStringLiteral("989994.90"));
}

TEST_F(TradeAnswersAccount, ListWhatIsHeldAndHowMuchOfItMayBeSold)
{
    ledger().book(
        {QStringLiteral("statement.csv"),
         {fill(Side::Buy, bank(), 20240102, 10, 300), fill(Side::Buy, liquor(), 20240102, 1700, 100),
          fill(Side::Buy, bank(), TradingDate::today(), 10, 100)},
         {{bank(), QStringLiteral("平安银行")}}},
        Ledger::Mode::Keep);
    place(Direction::Sell, 10, 100);

    EXPECT_EQ(account()[QStringLiteral("positions")].toArray(),
              (QJsonArray{json(R"({"stkcode":"000001","stkname":"平安银行","market":"2","qty":"400",
                                   "sellable":"200","costprice":"10.025"})"),
                          json(R"({"stkcode":"600519","stkname":"","market":"1","qty":"100",
                                   "sellable":"100","costprice":"1700.050"})")}));
}

} // namespace

} // namespace TradeModule
