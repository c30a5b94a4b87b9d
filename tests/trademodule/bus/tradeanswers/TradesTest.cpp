#include "tests/trademodule/bus/tradeanswers/TradeAnswersTest.h"

#include <algorithm>

namespace TradeModule {

namespace {

using TradeAnswersTrades = TradeAnswersTest;

QJsonObject historyQuestion(const SecurityId &security, const char *start, const char *end)
{
    QJsonObject object = question("HistoryTrade", security);
    object[QStringLiteral("start")] = QLatin1String(start);
    object[QStringLiteral("end")] = QLatin1String(end);
    return object;
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

TEST_F(TradeAnswersTrades, TellTwoScreensTheSameAndEachItsName)
{
    book({fill(Side::Buy, bank(), 20240102, 10.5, 300)});
    PaperExchange exchange(&ledger());
    TradeAnswers answers(&ledger(), &exchange);
    QJsonObject first = historyQuestion(bank(), "20240101", "20240131");
    QJsonObject second = first;
    second[QStringLiteral("screenId")] = QStringLiteral("screen2");

    const QByteArray answer = answers.answer(first);

    EXPECT_EQ(answers.answer(second), QByteArray(answer).replace("screen1", "screen2"));
}

TEST_F(TradeAnswersTrades, AreNewInTheAnswerAfterAChange)
{
    PaperExchange exchange(&ledger());
    TradeAnswers answers(&ledger(), &exchange);
    const QJsonObject asked = historyQuestion(bank(), "20240101", "20240131");
    const auto count = [&] {
        return QJsonDocument::fromJson(answers.answer(asked))[QStringLiteral("data")].toArray().size();
    };
    ASSERT_EQ(count(), 0);

    book({fill(Side::Buy, bank(), 20240102, 10.5, 300)});

    EXPECT_EQ(count(), 1);
}

TEST_F(TradeAnswersTrades, ListPastTradesWithEveryValueTheChartsRead)
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

TEST_F(TradeAnswersTrades, ListPastTradesWhateverTheirNumbersAre)
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

TEST_F(TradeAnswersTrades, ListPastTradesOfTheRangeOldestFirst)
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

TEST_F(TradeAnswersTrades, KeepTodayOutOfThePast)
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

} // namespace

} // namespace TradeModule
