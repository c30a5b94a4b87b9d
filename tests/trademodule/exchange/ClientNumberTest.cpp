// An order that its asker gave a number: asked for again, it is the same order.
#include "tests/trademodule/support/ExchangeFixture.h"
#include "trademodule/bus/TradeAnswers.h"

#include <QJsonDocument>
#include <QJsonObject>

namespace TradeModule {

namespace {

using namespace TradeChart::OrderStatus;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::SizeIs;

const QString number = QStringLiteral("desk-1");

class ClientNumberTest : public PaperExchangeOfADay
{
protected:
    Order place(double price, qint64 quantity, const QString &clientNumber)
    {
        return exchange().place(bank(), Direction::Buy, yuan(price), quantity, clientNumber);
    }

    std::string refusalOfPlacing(double price, qint64 quantity, const QString &clientNumber)
    {
        try {
            place(price, quantity, clientNumber);
        } catch (const Error &error) {
            return error.what();
        }
        return "no refusal";
    }

    Orders orders() { return OrderBook(&ledger()).ofDay(TradingDate::today()); }

    QJsonObject ask(const QJsonValue &clientNumber, const char *price = "10.00")
    {
        QJsonObject question{{QStringLiteral("cmd"), QStringLiteral("EntrustPlace")},
                             {QStringLiteral("stkcode"), bank().code},
                             {QStringLiteral("market"), QStringLiteral("SZ")},
                             {QStringLiteral("bsflag2"), QStringLiteral("0B")},
                             {QStringLiteral("orderprice"), QLatin1String(price)},
                             {QStringLiteral("orderqty"), QStringLiteral("100")},
                             {QStringLiteral("clientno"), clientNumber}};
        return QJsonDocument::fromJson(TradeAnswers(&ledger(), &exchange()).answer(question)).object();
    }
};

} // namespace

TEST_F(ClientNumberTest, PlacesOneOrderHoweverOftenItIsAsked)
{
    const Order first = place(10, 100, number);
    const Order again = place(10, 100, number);

    EXPECT_EQ(again.number, first.number);
    EXPECT_THAT(orders(), SizeIs(1));
    EXPECT_THAT(m_statuses, ElementsAre(Quoting));
}

TEST_F(ClientNumberTest, IsKnownAfterARestart)
{
    const Order first = place(10, 100, number);

    Ledger reopened(location());
    const Order again = PaperExchange(&reopened).place(bank(), Direction::Buy, yuan(10), 100, number);

    EXPECT_EQ(again.number, first.number);
    EXPECT_THAT(orders(), SizeIs(1));
}

TEST_F(ClientNumberTest, IsKnownOnAnotherDay)
{
    const Order first = place(10, 100, number);
    Database(location()).run(QStringLiteral("UPDATE trade_order SET order_date = 20240102"));

    EXPECT_EQ(place(10, 100, number).number, first.number);
}

TEST_F(ClientNumberTest, GivesTheOrderBackAlthoughTheAccountCouldNotPayItTwice)
{
    setCash(1100);
    const Order first = place(10, 100, number);

    EXPECT_EQ(place(10, 100, number).number, first.number);
    EXPECT_THAT(refusalOfPlacing(10, 100, QStringLiteral("desk-2")), HasSubstr("there are"));
}

TEST_F(ClientNumberTest, IsRefusedForAnotherOrder)
{
    place(10, 100, number);

    EXPECT_THAT(refusalOfPlacing(10, 200, number), HasSubstr("another order, 1"));
    EXPECT_THAT(refusalOfPlacing(9.99, 100, number), HasSubstr("another order, 1"));
    EXPECT_THAT(orders(), SizeIs(1));
}

TEST_F(ClientNumberTest, OfARefusedOrderIsFree)
{
    refusalOfPlacing(10, 150, number);

    EXPECT_EQ(refusalOfPlacing(10, 100, number), "no refusal");
}

TEST_F(ClientNumberTest, OfARefusedOrderIsRefusedForTheSameOrderThoughItCouldBePlacedNow)
{
    setCash(500);
    const std::string refusal = refusalOfPlacing(10, 100, number);
    ASSERT_THAT(refusal, HasSubstr("there are"));
    setCash(100000);

    EXPECT_EQ(refusalOfPlacing(10, 100, number), refusal) << "a second copy of the question";
    EXPECT_THAT(orders(), SizeIs(0));
    EXPECT_EQ(refusalOfPlacing(10, 100, QStringLiteral("desk-2")), "no refusal");
}

TEST_F(ClientNumberTest, IsNotNeeded)
{
    place(10, 100, {});
    place(10, 100, {});

    EXPECT_THAT(orders(), SizeIs(2));
}

TEST_F(ClientNumberTest, ComesBackInTheAnswerWithTheSameOrder)
{
    const QJsonObject first = ask(number);
    const QJsonObject again = ask(number);

    EXPECT_EQ(first[QStringLiteral("clientno")], QJsonValue(number));
    EXPECT_EQ(first[QStringLiteral("ordersno")], QJsonValue(QStringLiteral("1")));
    EXPECT_EQ(again, first);
}

TEST_F(ClientNumberTest, OfAnotherOrderIsAnsweredWithAReason)
{
    ask(number);

    const QJsonObject other = ask(number, "9.99");

    EXPECT_EQ(other[QStringLiteral("success")], QJsonValue(false));
    EXPECT_EQ(other[QStringLiteral("errcode")], QJsonValue(3));
    EXPECT_EQ(other[QStringLiteral("clientno")], QJsonValue(number));
}

TEST_F(ClientNumberTest, ThatIsNoneIsRefused)
{
    for (const QJsonValue &wrong : {QJsonValue(7), QJsonValue(QJsonValue::Null), QJsonValue(QString()),
                                    QJsonValue(QString(65, QLatin1Char('x')))}) {
        const QJsonObject answer = ask(wrong);
        EXPECT_EQ(answer[QStringLiteral("errcode")], QJsonValue(1));
        EXPECT_THAT(answer[QStringLiteral("msg")].toString().toStdString(), HasSubstr("\"clientno\""));
    }
    EXPECT_TRUE(orders().isEmpty());
}

} // namespace TradeModule
