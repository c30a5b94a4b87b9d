#include "trademodule/bus/TradeAnswers.h"
#include "tests/support/ByName.h"
#include "tests/trademodule/support/LedgerFixture.h"
#include "trademodule/bus/AnswerMessage.h"

#include <QJsonArray>
#include <QJsonDocument>

#include <algorithm>

namespace TradeModule {

namespace {

using ::testing::HasSubstr;

QJsonObject json(const char *text)
{
    return QJsonDocument::fromJson(text).object();
}

QJsonObject question(const char *command, const SecurityId &security)
{
    return {{QStringLiteral("cmd"), QLatin1String(command)},
            {QStringLiteral("stkcode"), security.code},
            {QStringLiteral("market"), marketLetters(security.market)},
            {QStringLiteral("screenId"), QStringLiteral("screen1")}};
}

QJsonObject historyQuestion(const SecurityId &security, const char *start, const char *end)
{
    QJsonObject object = question("HistoryTrade", security);
    object[QStringLiteral("start")] = QLatin1String(start);
    object[QStringLiteral("end")] = QLatin1String(end);
    return object;
}

class TradeAnswersTest : public LedgerFixture
{
protected:
    QJsonObject ask(const QJsonObject &object)
    {
        PaperExchange exchange(&ledger());
        return QJsonDocument::fromJson(TradeAnswers(&ledger(), &exchange).answer(object)).object();
    }

    QJsonArray rows(const QJsonObject &object)
    {
        const QJsonObject answer = ask(object);
        EXPECT_TRUE(answer[QStringLiteral("success")].toBool())
            << answer[QStringLiteral("msg")].toString().toStdString();
        return answer[QStringLiteral("data")].toArray();
    }
};

} // namespace

TEST_F(TradeAnswersTest, CarryTheEnvelopeOfTheQuestion)
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

TEST_F(TradeAnswersTest, LeaveOutAScreenThatWasNotNamed)
{
    QJsonObject object = question("HolderCostPrice", liquor());
    object.remove(QStringLiteral("screenId"));

    const QJsonObject answer = ask(object);

    EXPECT_FALSE(answer.contains(QStringLiteral("screenId")));
    EXPECT_EQ(answer[QStringLiteral("market")].toString(), QStringLiteral("1"));
}

TEST_F(TradeAnswersTest, TellTheCostOfAHolding)
{
    book({fill(Side::Buy, bank(), 20240102, 10, 100), fill(Side::Sell, bank(), 20240103, 12, 50)});

    const QJsonObject answer = ask(question("HolderCostPrice", bank()));

    EXPECT_EQ(answer[QStringLiteral("data")].toObject(),
              json(R"({"stkcode":"000001","market":"2","costprice":"10.050"})"));
    EXPECT_EQ(answer[QStringLiteral("costprice")].toString(), QStringLiteral("10.050"));
}

TEST_F(TradeAnswersTest, HaveNoCostWithoutAHolding)
{
    book({fill(Side::Buy, bank(), 20240102, 10, 100), fill(Side::Sell, bank(), 20240103, 12, 100)});

    const QJsonObject answer = ask(question("HolderCostPrice", bank()));

    EXPECT_EQ(answer[QStringLiteral("data")].toObject(), json(R"({"stkcode":"000001","market":"2"})"));
    EXPECT_EQ(answer[QStringLiteral("costprice")].toString(), QStringLiteral("nan"));
    EXPECT_TRUE(answer[QStringLiteral("success")].toBool());
}

TEST_F(TradeAnswersTest, ListPastTradesWithEveryValueTheChartsRead)
{
    Execution trade = fill(Side::Buy, bank(), 20240102, 10.5, 300, QStringLiteral("deal"));
    trade.time = ClockTime::of(9, 31, 42, 5).value();
    trade.orderNo = QStringLiteral("4711");
    book({trade});

    const QJsonArray trades = rows(historyQuestion(bank(), "20240101", "20240131"));

    EXPECT_EQ(trades, (QJsonArray{json(R"({"stkcode":"000001","market":"2","bsflag2":"B","ordersno":"4711",
        "orderdate":"20240102","opertime":"09314205","bizdate":"20240102","matchtime":"09314205",
        "matchprice":"10.50","matchqty":"300","matchamt":"3150.00",
        "buy":true,"date":"20240102","price":10.5,"vol":300})")}));
}

/// What a row of HistoryTrade must hold, made from the trade in another way than the module makes it.
QJsonObject expectedRow(const Execution &trade)
{
    const QString date = QString::asprintf("%08d", trade.date.number());
    const QString time = QString::asprintf("%08d", trade.time.number());
    const bool isBuy = trade.side == Side::Buy;
    QJsonObject row = json(isBuy ? R"({"bsflag2":"B","buy":true})" : R"({"bsflag2":"S","buy":false})");
    row[QStringLiteral("stkcode")] = trade.security.code;
    row[QStringLiteral("market")] = QStringLiteral("2");
    row[QStringLiteral("ordersno")] = trade.orderNo;
    for (const char *day : {"orderdate", "bizdate", "date"}) {
        row[QLatin1String(day)] = date;
    }
    row[QStringLiteral("opertime")] = time;
    row[QStringLiteral("matchtime")] = time;
    const auto steps = static_cast<double>(trade.price.steps());
    const bool isOfCents = trade.price.steps() % 100 == 0;
    row[QStringLiteral("matchprice")] = QString::number(steps / 10000, 'f', isOfCents ? 2 : 4);
    row[QStringLiteral("price")] = steps / 10000;
    row[QStringLiteral("matchqty")] = QString::number(trade.quantity);
    row[QStringLiteral("vol")] = static_cast<double>(trade.quantity);
    row[QStringLiteral("matchamt")] = trade.amount.text();
    return row;
}

TEST_F(TradeAnswersTest, ListPastTradesWhateverTheirNumbersAre)
{
    const double prices[] = {0.0001, 0.01, 9.99, 10, 10.5, 99.1234, 1700, 123456.7801};
    const char *const orderNumbers[] = {"", "4711", "合同-1", "a\"b\\c/d", "\t\n\x01", "é€😀", "{}[],:"};
    Executions trades;
    for (int i = 0; i < 500; ++i) {
        trades.append(fill(i % 3 == 0 ? Side::Sell : Side::Buy, bank(), 20240101 + i % 28, prices[i % 8],
                           i % 7 == 0 ? 1000000000 : i + 1, QString::number(i)));
        trades.last().time = ClockTime::of(i % 24, i * 7 % 60, i * 11 % 60, i * 13 % 100).value();
        trades.last().orderNo = QString::fromUtf8(orderNumbers[i % 7]);
    }
    book(trades);

    const QJsonArray answered = rows(historyQuestion(bank(), "20240101", "20240131"));

    std::stable_sort(trades.begin(), trades.end(), [](const Execution &a, const Execution &b) {
        return std::make_pair(a.date, a.time) < std::make_pair(b.date, b.time);
    });
    ASSERT_EQ(answered.size(), trades.size());
    for (int i = 0; i < trades.size(); ++i) {
        ASSERT_EQ(answered[i].toObject(), expectedRow(trades[i])) << i;
    }
}

TEST_F(TradeAnswersTest, ListPastTradesOfTheRangeOldestFirst)
{
    book({fill(Side::Buy, bank(), 20240101, 10, 100), fill(Side::Buy, bank(), 20240102, 10, 100),
          fill(Side::Sell, bank(), 20240105, 10, 100), fill(Side::Buy, bank(), 20240106, 10, 100)});

    const QJsonArray trades = rows(historyQuestion(bank(), "20240102", "20240105"));

    ASSERT_EQ(trades.size(), 2);
    EXPECT_EQ(trades[0].toObject()[QStringLiteral("bizdate")].toString(), QStringLiteral("20240102"));
    EXPECT_EQ(trades[1].toObject()[QStringLiteral("bizdate")].toString(), QStringLiteral("20240105"));
    EXPECT_EQ(trades[1].toObject()[QStringLiteral("bsflag2")].toString(), QStringLiteral("S"));
    EXPECT_EQ(trades[1].toObject()[QStringLiteral("buy")], QJsonValue(false));
}

TEST_F(TradeAnswersTest, KeepTodayOutOfThePast)
{
    book(
        {fill(Side::Buy, bank(), 20240102, 10, 100), fill(Side::Buy, bank(), TradingDate::today(), 10, 200)});

    const QJsonArray past = rows(historyQuestion(bank(), "20240101", "20991231"));
    const QJsonArray now = rows(question("TodayTrade", bank()));

    ASSERT_EQ(past.size(), 1);
    EXPECT_EQ(past[0].toObject()[QStringLiteral("matchqty")].toString(), QStringLiteral("100"));
    ASSERT_EQ(now.size(), 1);
    EXPECT_EQ(now[0].toObject()[QStringLiteral("matchqty")].toString(), QStringLiteral("200"));
}

TEST_F(TradeAnswersTest, IgnoreKeysTheyDoNotKnow)
{
    QJsonObject object = question("TodayTrade", bank());
    object[QStringLiteral("colour")] = QStringLiteral("red");

    EXPECT_TRUE(ask(object)[QStringLiteral("success")].toBool());
}

TEST_F(TradeAnswersTest, TellTheNumberOfAPlacedOrderAndListIt)
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

class TradeAnswersAboutAccounts : public TradeAnswersTest
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

TEST_F(TradeAnswersAboutAccounts, NeedNoSecurityAndGoBackToWhoAsked)
{
    const QJsonObject answer = ask(json(R"({"cmd":"AccountInfo","screenId":"s","objectId":"{id}"})"));

    EXPECT_EQ(answer[QStringLiteral("success")], QJsonValue(true));
    EXPECT_EQ(answer[QStringLiteral("screenId")].toString(), QStringLiteral("s"));
    EXPECT_EQ(answer[QStringLiteral("objectId")].toString(), QStringLiteral("{id}"));
}

TEST_F(TradeAnswersAboutAccounts, TellTheCashOfANewAccount)
{
    EXPECT_EQ(account(), json(R"({"cash":"1000000.00","available":"1000000.00","positions":[]})"));
}

TEST_F(TradeAnswersAboutAccounts, KeepTheCashThatOpenBuysNeedWithTheirFees)
{
    place(Direction::Buy, 10, 1000); // commission 5.00, transfer fee 0.10

    const QJsonObject data = account();

    EXPECT_EQ(data[QStringLiteral("cash")].toString(), QStringLiteral("1000000.00"));
    EXPECT_EQ(data[QStringLiteral("available")].toString(), QStringLiteral("989994.90"));
}

TEST_F(TradeAnswersAboutAccounts, ListWhatIsHeldAndHowMuchOfItMayBeSold)
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

TEST_F(TradeAnswersTest, ListTheOrdersOfADay)
{
    QJsonObject object = question("EntrustHistoryTrade", bank());
    object[QStringLiteral("date")] = 20240102;
    EXPECT_EQ(rows(object).size(), 0);

    object[QStringLiteral("date")] = QStringLiteral("20240102");
    EXPECT_THAT(ask(object)[QStringLiteral("msg")].toString().toStdString(), HasSubstr("\"date\""));
}

TEST_F(TradeAnswersTest, ConfirmACancellationToWhoAsked)
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

TEST_F(TradeAnswersTest, SayWhyAnOrderIsNotCancelled)
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

TEST_F(TradeAnswersTest, SayThatAnOrderComesToMoreThanAnyAccountHas)
{
    QJsonObject object = question("EntrustPlace", bank());
    object[QStringLiteral("bsflag2")] = QStringLiteral("0B");
    object[QStringLiteral("orderprice")] = QStringLiteral("1000000");
    object[QStringLiteral("orderqty")] = QStringLiteral("1000000000");

    const QJsonObject answer = ask(object);

    EXPECT_EQ(answer[QStringLiteral("errcode")], QJsonValue(AnswerMessage::Refused));
    EXPECT_THAT(answer[QStringLiteral("msg")].toString().toStdString(), HasSubstr("price × quantity"));
}

TEST_F(TradeAnswersTest, TellThatThereIsNoCostWhenTheQuestionIsNotUnderstood)
{
    const QJsonObject answer =
        ask(json(R"({"cmd":"HolderCostPrice","stkcode":"00700","market":"HK","screenId":"s"})"));

    EXPECT_EQ(answer[QStringLiteral("success")], QJsonValue(false));
    EXPECT_EQ(answer[QStringLiteral("costprice")].toString(), QStringLiteral("nan"));
}

TEST_F(TradeAnswersTest, TellThatThereIsNoCostWhenTheLedgerFails)
{
    Database(location()).run(QStringLiteral("DROP TABLE holding"));

    const QJsonObject answer = ask(question("HolderCostPrice", bank()));

    EXPECT_EQ(answer[QStringLiteral("success")], QJsonValue(false));
    EXPECT_EQ(answer[QStringLiteral("costprice")].toString(), QStringLiteral("nan"));
}

TEST_F(TradeAnswersTest, TellOfNoCostWhenAnotherQuestionFails)
{
    EXPECT_FALSE(ask(json(R"({"cmd":"TodayTrade"})")).contains(QStringLiteral("costprice")));
}

struct WrongQuestion
{
    std::string name;
    const char *text;
    std::string field;
};

class TradeAnswersToWrongQuestions : public TradeAnswersTest,
                                     public ::testing::WithParamInterface<WrongQuestion>
{
};

TEST_P(TradeAnswersToWrongQuestions, AreAnsweredWithTheNameOfTheField)
{
    const QJsonObject answer = ask(json(GetParam().text));

    EXPECT_EQ(answer[QStringLiteral("success")], QJsonValue(false));
    EXPECT_EQ(answer[QStringLiteral("errcode")], QJsonValue(AnswerMessage::NotUnderstood));
    EXPECT_THAT(answer[QStringLiteral("msg")].toString().toStdString(),
                HasSubstr("\"" + GetParam().field + "\""));
}

INSTANTIATE_TEST_SUITE_P(
    With, TradeAnswersToWrongQuestions,
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

TEST_F(TradeAnswersTest, SurviveALedgerThatFails)
{
    Database(location()).run(QStringLiteral("DROP TABLE holding"));

    const QJsonObject answer = ask(question("HolderCostPrice", bank()));

    EXPECT_EQ(answer[QStringLiteral("success")], QJsonValue(false));
    EXPECT_EQ(answer[QStringLiteral("errcode")], QJsonValue(AnswerMessage::LedgerFailed));
}

} // namespace TradeModule
