#include "trading/Question.h"

#include "tradechartobject/common/TradeVocabulary.h"
#include "trading/ModuleVocabulary.h"

#include <gtest/gtest.h>

#include <QJsonDocument>

namespace Trading {

namespace {

const SecurityId liquor{QStringLiteral("600519"), Market::Shanghai};

QJsonObject json(const QByteArray &text)
{
    return QJsonDocument::fromJson(text).object();
}

Question received(const char *text)
{
    return Question(json(text));
}

TradingDate day(int number)
{
    return TradingDate::ofNumber(number).value();
}

} // namespace

TEST(Question, SaysWhatIsAskedOfWhatAndWhereTheAnswerGoes)
{
    Question question(TradeChart::CmdType::HOLDERCOSTPRICE);
    question.answerOn(QStringLiteral("screen1"), QStringLiteral("id1"));
    question.setSecurity(liquor);

    EXPECT_EQ(json(question.toJson()), json(R"({"cmd":"HolderCostPrice","screenId":"screen1",
        "objectId":"id1","stkcode":"600519","market":"SH"})"));
}

TEST(Question, LeavesOutWhatItWasNotGiven)
{
    Question question(CmdType::ACCOUNTINFO);
    question.answerOn(QStringLiteral("screen1"));

    EXPECT_EQ(json(question.toJson()), json(R"({"cmd":"AccountInfo","screenId":"screen1"})"));
}

TEST(Question, HasTheDayOfOrdersAsANumber)
{
    Question question(TradeChart::CmdType::ENTRUSTHISTORYTRADE);
    question.setDay(day(20240102));

    EXPECT_EQ(json(question.toJson()), json(R"({"cmd":"EntrustHistoryTrade","date":20240102})"));
}

TEST(Question, HasTheDaysOfTradesAsTexts)
{
    Question question(TradeChart::CmdType::HISTORYTRADE);
    question.setDays(day(20240102), day(20240105));

    EXPECT_EQ(json(question.toJson()), json(R"({"cmd":"HistoryTrade","start":"20240102","end":"20240105"})"));
}

TEST(Question, NamesTheOrderThatIsToBeCancelled)
{
    Question question(TradeChart::CmdType::ENTRUSTCANCEL);
    question.setOrder(day(20240102), QStringLiteral("4711"));

    EXPECT_EQ(json(question.toJson()),
              json(R"({"cmd":"EntrustCancel","orderdate":"20240102","ordersno":"4711"})"));
}

TEST(Question, DescribesTheOrderThatIsToBePlaced)
{
    Question question(CmdType::ENTRUSTPLACE);
    question.setNewOrder(Direction::Sell, Money::ofYuan(13.5).value(), 300);

    EXPECT_EQ(json(question.toJson()),
              json(R"({"cmd":"EntrustPlace","bsflag2":"0S","orderprice":"13.50","orderqty":"300"})"));
}

TEST(Question, SaysWhatTheAskerCallsTheOrder)
{
    Question question(CmdType::ENTRUSTPLACE);
    question.setClientNumber(QStringLiteral("desk-1"));

    EXPECT_EQ(json(question.toJson()), json(R"({"cmd":"EntrustPlace","clientno":"desk-1"})"));
}

TEST(Question, TakesOnlyShortPrintableTextsForAClientsNumber)
{
    const auto numberOf = [](const QJsonValue &value) {
        return Question(QJsonObject{{QStringLiteral("clientno"), value}}).clientNumber();
    };
    const QString longest(64, QLatin1Char('~'));

    EXPECT_EQ(numberOf(longest), longest);
    EXPECT_EQ(numberOf(QStringLiteral(" ")), QStringLiteral(" "));
    for (const QJsonValue &wrong :
         {QJsonValue(QString()), QJsonValue(longest + QLatin1Char('x')), QJsonValue(QStringLiteral("a\nb")),
          QJsonValue(QStringLiteral("\x7f")), QJsonValue(QString(QChar(0x4e00))), QJsonValue(7),
          QJsonValue(QJsonValue::Null)}) {
        EXPECT_EQ(numberOf(wrong), std::nullopt) << qPrintable(wrong.toVariant().toString());
    }
}

TEST(Question, IsReadAsItWasBuilt)
{
    Question built(CmdType::ENTRUSTPLACE);
    built.answerOn(QStringLiteral("screen1"));
    built.setSecurity(liquor);
    built.setDays(day(20240102), day(20240105));
    built.setDay(day(20240103));
    built.setOrder(day(20240104), QStringLiteral("4711"));
    built.setNewOrder(Direction::Buy, Money::ofYuan(13.55).value(), 300);
    built.setClientNumber(QStringLiteral("desk-1"));

    const Question read(json(built.toJson()));

    EXPECT_EQ(read.command(), QStringLiteral("EntrustPlace"));
    EXPECT_EQ(read.answerChannel(), QStringLiteral("screen1"));
    EXPECT_EQ(read.securityCode(), QStringLiteral("600519"));
    EXPECT_EQ(read.market(), Market::Shanghai);
    EXPECT_EQ(read.firstDay(), day(20240102));
    EXPECT_EQ(read.lastDay(), day(20240105));
    EXPECT_EQ(read.day(), day(20240103));
    EXPECT_EQ(read.orderDay(), day(20240104));
    EXPECT_EQ(read.orderNumber(), 4711);
    EXPECT_EQ(read.direction(), Direction::Buy);
    EXPECT_EQ(read.orderPrice(), Money::ofYuan(13.55));
    EXPECT_EQ(read.orderQuantity(), 300);
    EXPECT_EQ(read.clientNumber(), QStringLiteral("desk-1"));
}

TEST(Question, GivesNothingForWhatIsMissing)
{
    const Question nothing = received("{}");

    EXPECT_EQ(nothing.command(), std::nullopt);
    EXPECT_EQ(nothing.answerChannel(), std::nullopt);
    EXPECT_EQ(nothing.securityCode(), std::nullopt);
    EXPECT_EQ(nothing.market(), std::nullopt);
    EXPECT_EQ(nothing.day(), std::nullopt);
    EXPECT_EQ(nothing.firstDay(), std::nullopt);
    EXPECT_EQ(nothing.lastDay(), std::nullopt);
    EXPECT_EQ(nothing.orderDay(), std::nullopt);
    EXPECT_EQ(nothing.orderNumber(), std::nullopt);
    EXPECT_EQ(nothing.direction(), std::nullopt);
    EXPECT_EQ(nothing.orderPrice(), std::nullopt);
    EXPECT_EQ(nothing.orderQuantity(), std::nullopt);
    EXPECT_EQ(nothing.clientNumber(), std::nullopt);
    EXPECT_TRUE(nothing.field("cmd").isUndefined());
}

TEST(Question, AsksForAPartOfAListOfResults)
{
    Question question(CmdType::RESULTS);
    question.setList(ResultGroup::Trip, 200, 50);
    question.setListOrder(ResultField::Profit, true);

    const Question read = received(question.toJson().constData());

    EXPECT_EQ(read.listGroup(), ResultGroup::Trip);
    EXPECT_EQ(read.firstRow(), 200);
    EXPECT_EQ(read.mostRows(), 50);
    EXPECT_EQ(read.listOrder(), ResultField::Profit);
    EXPECT_TRUE(read.isDescending());
}

TEST(Question, GivesNothingForAListThatThereIsNot)
{
    const Question odd = received(
        R"({"cmd":"Results","by":"week","first":"-1","most":"1001","order":"luck","descending":"yes"})");

    EXPECT_EQ(odd.listGroup(), std::nullopt);
    EXPECT_EQ(odd.firstRow(), std::nullopt);
    EXPECT_EQ(odd.mostRows(), std::nullopt);
    EXPECT_EQ(odd.listOrder(), std::nullopt);
    EXPECT_FALSE(odd.isDescending());
}

TEST(Question, AsksForAnotherWayToReckonCosts)
{
    Question question(CmdType::COSTMETHOD);
    question.setCostMethod(QLatin1String(CostWords::FIFO));

    EXPECT_EQ(received(question.toJson().constData()).costMethod(), QStringLiteral("fifo"));
}

TEST(Question, GivesNothingForTextsThatShouldBeNumbersAndTheOtherWayRound)
{
    const Question odd = received(R"({"cmd":1,"stkcode":600519,"market":1,"date":"20240102",
        "start":20240102,"orderdate":20240102,"ordersno":4711,"orderprice":13.5,"orderqty":300})");

    EXPECT_EQ(odd.command(), std::nullopt);
    EXPECT_EQ(odd.securityCode(), std::nullopt);
    EXPECT_EQ(odd.market(), std::nullopt);
    EXPECT_EQ(odd.day(), std::nullopt);
    EXPECT_EQ(odd.firstDay(), std::nullopt);
    EXPECT_EQ(odd.orderDay(), std::nullopt);
    EXPECT_EQ(odd.orderNumber(), std::nullopt);
    EXPECT_EQ(odd.orderPrice(), std::nullopt);
    EXPECT_EQ(odd.orderQuantity(), std::nullopt);
    EXPECT_EQ(odd.field("orderqty").toInt(), 300);
}

TEST(Question, GivesNothingForNumbersThatAreNoAmounts)
{
    for (const char *const price : {"0", "-1", "ten", "nan", "inf", "1e12"}) {
        EXPECT_EQ(Question({{QStringLiteral("orderprice"), QLatin1String(price)}}).orderPrice(), std::nullopt)
            << price;
    }
    for (const char *const quantity : {"0", "-100", "1.5", "99999999999999999999", "many"}) {
        EXPECT_EQ(Question({{QStringLiteral("orderqty"), QLatin1String(quantity)}}).orderQuantity(),
                  std::nullopt)
            << quantity;
    }
}

} // namespace Trading
