#include "tests/trademodule/bus/tradeanswers/TradeAnswersTest.h"

namespace TradeModule {

namespace {

using TradeAnswersActions = TradeAnswersTest;

Execution bonus(int day, qint64 quantity)
{
    Execution received = fill(Side::Bonus, bank(), day, 0, quantity);
    received.fee = Money();
    return received;
}

TEST_F(TradeAnswersActions, TellWhatWasReceivedForWhatWasHeld)
{
    book({fill(Side::Buy, bank(), 20130603, 19, 1000), bonus(20130620, 600),
          fill(Side::Sell, bank(), 20130621, 12, 100), bonus(20140612, 300)});

    const QJsonArray told = rows(question("CorporateActions", bank()));

    ASSERT_EQ(told.size(), 2);
    EXPECT_EQ(told[0].toObject(), json(R"({"date":"20130620","held":"1000","cash":"0.00","bonus":"600"})"));
    EXPECT_EQ(told[1].toObject(), json(R"({"date":"20140612","held":"1500","cash":"0.00","bonus":"300"})"));
}

TEST_F(TradeAnswersActions, TellTheCashOfAStatement)
{
    book({fill(Side::Buy, bank(), 20130603, 19, 1000)});
    MoneyEntry dividend;
    dividend.date = day(20130620);
    dividend.kind = QStringLiteral("dividends");
    dividend.amount = Money::ofCents(17000);
    dividend.currency = QStringLiteral("CNY");
    dividend.code = bank().code;
    Statement statement = statementOf({});
    statement.money = {dividend};
    ledger().book(statement, Ledger::Mode::Keep);

    const QJsonArray told = rows(question("CorporateActions", bank()));

    ASSERT_EQ(told.size(), 1);
    EXPECT_EQ(told[0].toObject(), json(R"({"date":"20130620","held":"1000","cash":"170.00","bonus":"0"})"));
}

TEST_F(TradeAnswersActions, TellNothingOfASecurityThatTheLedgerDoesNotKnow)
{
    EXPECT_TRUE(rows(question("CorporateActions", bank())).isEmpty());
}

TEST_F(TradeAnswersActions, NeedASecurity)
{
    const QJsonObject answer = ask(json(R"({"cmd":"CorporateActions","market":"SZ"})"));
    EXPECT_EQ(answer[QStringLiteral("success")], QJsonValue(false));
    EXPECT_TRUE(answer[QStringLiteral("msg")].toString().contains(QStringLiteral("stkcode")));
}

} // namespace

} // namespace TradeModule
