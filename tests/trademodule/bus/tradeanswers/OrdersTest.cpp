#include "tests/trademodule/bus/tradeanswers/TradeAnswersTest.h"
#include "trademodule/bus/AnswerMessage.h"

namespace TradeModule {

namespace {

using ::testing::HasSubstr;

using TradeAnswersOrders = TradeAnswersTest;

TEST_F(TradeAnswersOrders, TellTheNumberOfAPlacedOrderAndListIt)
{
    ledger().book({QStringLiteral("statement.csv"),
                   {fill(Side::Buy, bank(), 20240102, 10, 100)},
                   {{bank(), QStringLiteral("平安银行")}}},
                  Ledger::Mode::Keep);
    QJsonObject object = question("EntrustPlace", bank());
    object[QStringLiteral("bsflag2")] = QStringLiteral("0B");
    object[QStringLiteral("orderprice")] = QStringLiteral("10.50");
    object[QStringLiteral("orderqty")] = QStringLiteral("300");

    const QJsonObject placed = ask(object);

    ASSERT_EQ(placed[QStringLiteral("success")], QJsonValue(true))
        << placed[QStringLiteral("msg")].toString().toStdString();
    const QString number = placed[QStringLiteral("data")].toObject()[QStringLiteral("ordersno")].toString();
    const QJsonArray orders = rows(question("EntrustTodayTrade", bank()));
    ASSERT_EQ(orders.size(), 1);
    QJsonObject row = orders[0].toObject();
    row.remove(QStringLiteral("opertime"));    // now
    row.remove(QStringLiteral("orderstatus")); // depends on the hour
    const QString day = TradingDate::today().text();
    QJsonObject expected = json(R"({"stkcode":"000001","stkname":"平安银行","market":"2","bsflag2":"0B",
        "fundid":"paper","orderprice":"10.50","orderqty":"300","matchqty":"0","matchamt":"0.00",
        "cancelqty":"0","cancelflag":"0"})");
    expected[QStringLiteral("ordersno")] = number;
    expected[QStringLiteral("orderdate")] = day;
    expected[QStringLiteral("operdate")] = day;
    EXPECT_EQ(row, expected);
}

TEST_F(TradeAnswersOrders, SayThatAnOrderComesToMoreThanAnyAccountHas)
{
    QJsonObject object = question("EntrustPlace", bank());
    object[QStringLiteral("bsflag2")] = QStringLiteral("0B");
    object[QStringLiteral("orderprice")] = QStringLiteral("1000000");
    object[QStringLiteral("orderqty")] = QStringLiteral("100100");

    const QJsonObject answer = ask(object);

    EXPECT_EQ(answer[QStringLiteral("errcode")], QJsonValue(AnswerMessage::Refused));
    EXPECT_THAT(answer[QStringLiteral("msg")].toString().toStdString(), HasSubstr("price × quantity"));
}

TEST_F(TradeAnswersOrders, ListTheOrdersOfADay)
{
    QJsonObject object = question("EntrustHistoryTrade", bank());
    object[QStringLiteral("date")] = 20240102;
    EXPECT_EQ(rows(object).size(), 0);

    object[QStringLiteral("date")] = QStringLiteral("20240102");
    EXPECT_THAT(ask(object)[QStringLiteral("msg")].toString().toStdString(), HasSubstr("\"date\""));
}

TEST_F(TradeAnswersOrders, ConfirmACancellationToWhoAsked)
{
    PaperExchange exchange(&ledger());
    const Order order = exchange.place(bank(), Direction::Buy, Money::ofYuan(10).value(), 100);
    QJsonObject object = question("EntrustCancel", bank());
    object[QStringLiteral("orderdate")] = order.date.text();
    object[QStringLiteral("ordersno")] = QString::number(order.number);
    object[QStringLiteral("objectId")] = QStringLiteral("{id}");

    const QJsonObject answer = ask(object);

    EXPECT_EQ(answer[QStringLiteral("success")], QJsonValue(true));
    EXPECT_EQ(answer[QStringLiteral("objectId")].toString(), QStringLiteral("{id}"));
    const QJsonArray data = answer[QStringLiteral("data")].toArray();
    ASSERT_EQ(data.size(), 1);
    EXPECT_FALSE(data[0].toObject()[QStringLiteral("msgok ")].toString().isEmpty());
}

TEST_F(TradeAnswersOrders, SayWhyAnOrderIsNotCancelled)
{
    QJsonObject object = question("EntrustCancel", bank());
    object[QStringLiteral("orderdate")] = QStringLiteral("20240102");
    object[QStringLiteral("ordersno")] = QStringLiteral("4711");
    object[QStringLiteral("objectId")] = QStringLiteral("{id}");

    const QJsonObject answer = ask(object);

    EXPECT_EQ(answer[QStringLiteral("success")], QJsonValue(false));
    EXPECT_EQ(answer[QStringLiteral("objectId")].toString(), QStringLiteral("{id}"));
    EXPECT_THAT(answer[QStringLiteral("msg")].toString().toStdString(), HasSubstr("no order 4711"));
}

} // namespace

} // namespace TradeModule
