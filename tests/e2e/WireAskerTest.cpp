// The trading module answers the broker's own command-line clients: what any MQTT 5 program may ask.
#include "tests/e2e/TradingModule.h"
#include "tests/e2e/WireClients.h"

#include <QDateTime>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <iterator>

namespace {

const QString questions = QStringLiteral("Global/TradeQuery");

QJsonObject json(const QByteArray &text)
{
    return QJsonDocument::fromJson(text).object();
}

/// yyyymmdd in Shanghai, where the module's day is.
QByteArray today()
{
    return QDateTime::currentDateTimeUtc().addSecs(8 * 3600).toString(QStringLiteral("yyyyMMdd")).toLatin1();
}

class WireAsker : public TradingModule, protected WireClients
{
protected:
    WireAsker() : WireClients(broker) {}

    void SetUp() override
    {
        if (!areInstalled()) {
            GTEST_SKIP() << "mosquitto-clients is not installed";
        }
    }

    /// Serves a ledger with these rows of a statement.
    void serveWith(const QByteArray &rows)
    {
        import(rows);
        serve();
    }

    /// The answer on the reply channel, asked for until the module is there.
    QJsonObject answer(const QByteArray &question)
    {
        QByteArray text;
        EXPECT_TRUE(waitUntil([&] {
            text = ask(questions, question);
            return !text.isEmpty();
        }));
        return json(text);
    }

    /// What simple readers take from the only row of an answer.
    QJsonObject onlyRow(const QByteArray &question)
    {
        const QJsonArray rows = answer(question)[QStringLiteral("data")].toArray();
        EXPECT_EQ(rows.size(), 1);
        QJsonObject taken;
        for (const char *const key : {"buy", "date", "price", "vol"}) {
            taken[QLatin1String(key)] = rows[0].toObject()[QLatin1String(key)];
        }
        return taken;
    }
};

TEST_F(WireAsker, IsToldTheCostOfAHolding)
{
    serveWith("20240102,09:30:15,600536,中国软件,买入,30.00,200,6000.00,1,11\n");
    const QJsonObject told = answer(R"({"cmd":"HolderCostPrice","stkcode":"600536","market":"SH"})");
    EXPECT_EQ(told[QStringLiteral("costprice")], QJsonValue(QStringLiteral("30.000")));
}

TEST_F(WireAsker, IsToldThatNothingIsHeld)
{
    serveWith("20240102,09:30:15,600536,中国软件,买入,30.00,200,6000.00,1,11\n");
    const QJsonObject told = answer(R"({"cmd":"HolderCostPrice","stkcode":"000001","market":"SZ"})");
    EXPECT_EQ(told[QStringLiteral("costprice")], QJsonValue(QStringLiteral("nan")));
}

TEST_F(WireAsker, IsToldTheTradesOfToday)
{
    serveWith(today() + ",09:30:15,600536,中国软件,买入,30.25,200,6050.00,1,11\n");
    EXPECT_EQ(onlyRow(R"({"cmd":"TodayTrade","stkcode":"600536","market":"SH"})"),
              json(R"({"buy":true,"price":30.25,"vol":200,"date":")" + today() + R"("})"));
}

TEST_F(WireAsker, IsToldTheTradesOfPastDays)
{
    serveWith("20240102,09:30:15,600536,中国软件,买入,30.00,200,6000.00,1,11\n"
              "20240103,09:30:15,600536,中国软件,卖出,31.50,100,3150.00,2,12\n");
    EXPECT_EQ(
        onlyRow(
            R"({"cmd":"HistoryTrade","stkcode":"600536","market":"SH","start":"20240103","end":"20240105"})"),
        json(R"({"buy":false,"date":"20240103","price":31.5,"vol":100})"));
}

TEST_F(WireAsker, HearsTheAnswerToAPlainMessageOnTheChannelOfEverybody)
{
    serveWith("20240102,09:30:15,600536,中国软件,买入,30.00,200,6000.00,1,11\n");
    listen();
    const QByteArray question = R"({"cmd":"HolderCostPrice","stkcode":"600536","market":"SH"})";
    QByteArrayList heard;
    ASSERT_TRUE(waitUntil([&] {
        say(questions, question);
        const QByteArrayList messages = takeHeard();
        std::copy_if(messages.begin(), messages.end(), std::back_inserter(heard),
                     [](const QByteArray &message) { return message.contains("\"success\""); });
        return !heard.isEmpty();
    }));

    const QByteArray path = questions.toLatin1() + ' ';
    ASSERT_TRUE(heard.front().startsWith(path)) << heard.front().toStdString();
    EXPECT_EQ(json(heard.front().mid(path.size()))[QStringLiteral("costprice")],
              QJsonValue(QStringLiteral("30.000")));
}

} // namespace
