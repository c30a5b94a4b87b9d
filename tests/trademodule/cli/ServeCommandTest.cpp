// The program itself, on a real database and a real bus.
#include "tests/trademodule/support/ProgramFixture.h"
#include "trademodule/exchange/PaperExchange.h"
#include "trademodule/ledger/Transaction.h"

#include <QJsonArray>

#include <optional>

namespace TradeModule {

namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

/// A question to buy 1000 shares of the bank at 10.00, answered on the channel of a screen when it has one.
QByteArray placingAThousand(const QString &screen)
{
    QJsonObject question = jsonOf(R"({"cmd":"EntrustPlace","market":"SZ","stkcode":"000001",
                                      "bsflag2":"0B","orderprice":"10.00","orderqty":"1000"})");
    question[QStringLiteral("screenId")] = screen;
    return QJsonDocument(question).toJson(QJsonDocument::Compact);
}

/// A bar of today that opens at 9.90.
QByteArray quoteAt(const QString &time, int volume)
{
    QJsonObject quote = jsonOf(R"({"stkcode":"000001","market":"SZ","open":"9.90","high":"10.10",
                                   "low":"9.80","close":"10.00"})");
    quote[QStringLiteral("date")] = TradingDate::today().text();
    quote[QStringLiteral("time")] = time;
    quote[QStringLiteral("volume")] = QString::number(volume);
    return QJsonDocument(quote).toJson(QJsonDocument::Compact);
}

class ServeCommandTest : public ProgramOnABus
{
};

} // namespace

TEST_F(ServeCommandTest, AnswersOnTheChannelOfTheScreen)
{
    book({fill(Side::Buy, bank(), 20240102, 10, 100)});
    serve();
    ASSERT_TRUE(chart().listen("screen1", "TradeQuery"));

    ASSERT_TRUE(chart().sendMessage(
        "Global", "TradeQuery",
        R"({"cmd":"HolderCostPrice","market":"SZ","screenId":"screen1","stkcode":"000001"})"));

    ASSERT_TRUE(chart().waitForMessages(1));
    EXPECT_EQ(chart().messages[0].topic, "TradeQuery");
    const QJsonObject answer = jsonOf(chart().messages[0].payload);
    EXPECT_EQ(answer[QStringLiteral("data")].toObject()[QStringLiteral("costprice")].toString(),
              QStringLiteral("10.050"));
}

TEST_F(ServeCommandTest, AnswersARequestToItsSender)
{
    serve();

    const QJsonObject answer = ask(R"({"cmd":"TodayTrade","market":"SZ","stkcode":"000001"})");

    EXPECT_EQ(answer[QStringLiteral("success")], QJsonValue(true));
    EXPECT_TRUE(answer[QStringLiteral("data")].isArray());
}

TEST_F(ServeCommandTest, AnswersAQuestionWithoutAScreenOnTheChannelItCameOn)
{
    serve();
    ASSERT_TRUE(chart().listen("Global", "TradeQuery"));

    chart().sendMessage(
        "Global", "TradeQuery",
        R"({"cmd":"HistoryTrade","market":"SZ","stkcode":"000001","start":"20240101","end":"20240102"})");

    ASSERT_TRUE(chart().waitForMessages(1));
    EXPECT_EQ(jsonOf(chart().messages[0].payload)[QStringLiteral("success")], QJsonValue(true));
}

TEST_F(ServeCommandTest, AnswersNonsenseAndGoesOn)
{
    serve();

    for (const char *nonsense : {"", "{", "[]", "null", "{\"cmd\":{}}", "\xFF\xFE"}) {
        EXPECT_EQ(ask(nonsense)[QStringLiteral("success")], QJsonValue(false)) << nonsense;
    }
    EXPECT_TRUE(
        ask(R"({"cmd":"TodayTrade","market":"SZ","stkcode":"000001"})")[QStringLiteral("success")].toBool());
}

TEST_F(ServeCommandTest, TellsChartsAboutAnImportIntoARunningModule)
{
    serve();
    ASSERT_TRUE(chart().listen("Global", "TradeNotify"));

    const Ended ended =
        run(busOptions() + ledgerOptions() + QStringList{QStringLiteral("import"), write(oneRow)});

    EXPECT_EQ(ended.exitCode, 0) << ended.errors;
    ASSERT_TRUE(chart().waitForMessages(1));
    const QJsonObject notification = jsonOf(chart().messages[0].payload);
    EXPECT_EQ(notification[QStringLiteral("stkcode")].toString(), QStringLiteral("600519"));
    EXPECT_EQ(notification[QStringLiteral("market")].toString(), QStringLiteral("1"));
    EXPECT_TRUE(notification.contains(QStringLiteral("ordersno")));
    EXPECT_EQ(notification[QStringLiteral("orderstatus")].toString(), QStringLiteral("8"));
    EXPECT_EQ(
        ask(R"({"cmd":"HolderCostPrice","market":"SH","stkcode":"600519"})")[QStringLiteral("costprice")]
            .toString(),
        QStringLiteral("1700.000"));
}

TEST_F(ServeCommandTest, TellsChartsAboutAnImportThatIsTakenBack)
{
    serve();
    run(ledgerOptions() + QStringList{QStringLiteral("import"), write(oneRow)});
    ASSERT_TRUE(chart().listen("Global", "TradeNotify"));

    const Ended ended =
        run(busOptions() + ledgerOptions() + QStringList{QStringLiteral("undo"), QStringLiteral("1")});

    EXPECT_EQ(ended.exitCode, 0) << ended.errors;
    ASSERT_TRUE(chart().waitForMessages(1));
    const QJsonObject notification = jsonOf(chart().messages[0].payload);
    EXPECT_EQ(notification[QStringLiteral("stkcode")].toString(), QStringLiteral("600519"));
    EXPECT_FALSE(notification[QStringLiteral("bizdate")].toString().isEmpty()) << "past trades went, too";
}

TEST_F(ServeCommandTest, DealsAnOrderAgainstTheQuotesAndTellsTheCharts)
{
    serve();
    const QJsonObject placed = ask(placingAThousand(QString()));
    ASSERT_EQ(placed[QStringLiteral("success")], QJsonValue(true))
        << placed[QStringLiteral("msg")].toString().toStdString();
    ASSERT_TRUE(chart().listen("Global", "TradeNotify"));

    chart().sendMessage("Market", "Quote", quoteAt(QStringLiteral("1001"), 100000));

    const auto isDealt = [this] {
        return !chart().messages.isEmpty() &&
               jsonOf(chart().messages.constLast().payload)[QStringLiteral("orderstatus")] ==
                   QJsonValue(QStringLiteral("8"));
    };
    ASSERT_TRUE(waitUntil(isDealt));
    const QJsonObject trades = ask(R"({"cmd":"TodayTrade","market":"SZ","stkcode":"000001"})");
    const QJsonObject trade = trades[QStringLiteral("data")].toArray().at(0).toObject();
    EXPECT_EQ(trade[QStringLiteral("matchprice")].toString(), QStringLiteral("9.90"));
    EXPECT_EQ(trade[QStringLiteral("matchtime")].toString(), QStringLiteral("10010000"));
}

TEST_F(ServeCommandTest, TakesOrdersOfItsOtherCommands)
{
    serve();
    ASSERT_TRUE(chart().listen("Global", "TradeNotify"));
    const QStringList options = busOptions() + ledgerOptions();

    const Ended placed =
        run(options + QStringList{QStringLiteral("place"), QStringLiteral("000001"), QStringLiteral("buy"),
                                  QStringLiteral("10.00"), QStringLiteral("100")});
    ASSERT_EQ(placed.exitCode, 0) << placed.errors;
    EXPECT_THAT(placed.output, HasSubstr("order 1 is placed"));
    const Ended cancelled = run(options + QStringList{QStringLiteral("cancel"), QStringLiteral("1")});
    EXPECT_EQ(cancelled.exitCode, 0) << cancelled.errors;

    const auto isCancelled = [this] {
        return runOnLedger({QStringLiteral("orders")}).output.find("cancelled") != std::string::npos;
    };
    EXPECT_TRUE(waitUntil(isCancelled));
    EXPECT_TRUE(chart().waitForMessages(2));
}

TEST_F(ServeCommandTest, TellsOfTodaysOrdersOncePerSecurityWhenItJoins)
{
    PaperExchange exchange(&ledger());
    for (const SecurityId &security : {bank(), bank(), liquor()}) {
        const Order order = exchange.place(security, Direction::Buy, Money::ofYuan(9.99).value(), 100);
        exchange.cancel(order.date, order.number); // nothing more happens to it
    }
    ASSERT_TRUE(chart().join(broker().address()));
    ASSERT_TRUE(chart().listen("Global", "TradeNotify"));

    serve(); // whatever it tells when it joins is told before its first answer

    std::multiset<QString> told;
    for (const QByteArray &payload : chart().payloads()) {
        told.insert(jsonOf(payload)[QStringLiteral("ordersno")].toString());
    }
    EXPECT_THAT(told, ElementsAre(QStringLiteral("2"), QStringLiteral("3")));
}

TEST_F(ServeCommandTest, TellsOfNothingWhenItJoinsWithoutOrdersOfToday)
{
    book({fill(Side::Buy, bank(), 20240102, 10, 100)});
    ASSERT_TRUE(chart().join(broker().address()));
    ASSERT_TRUE(chart().listen("Global", "TradeNotify"));

    serve();

    EXPECT_THAT(chart().payloads(), IsEmpty());
}

TEST_F(ServeCommandTest, RefusesOrdersInTimeWhileTheLedgerIsBusy)
{
    constexpr int orderCount = 10;
    constexpr std::chrono::seconds requestTimeout(3);
    serve();
    ASSERT_TRUE(chart().listen("screen1", "TradeQuery"));
    std::optional<Transaction> import(std::in_place, ledger().database());

    for (int i = 0; i < orderCount; ++i) {
        chart().sendMessage("Global", "TradeQuery", placingAThousand(QStringLiteral("screen1")));
    }

    ASSERT_TRUE(chart().waitForMessages(orderCount, requestTimeout));
    for (const QByteArray &payload : chart().payloads()) {
        EXPECT_THAT(jsonOf(payload)[QStringLiteral("msg")].toString().toStdString(),
                    HasSubstr("the ledger is busy"));
    }
    import.reset();
    EXPECT_TRUE(ask(placingAThousand(QString()))[QStringLiteral("success")].toBool());
    EXPECT_EQ(OrderBook(&ledger()).ofDay(TradingDate::today()).size(), 1) << "refused orders were entered";
}

TEST_F(ServeCommandTest, DealsTheQuotesOfABusyTimeAfterwardsInTheirOrder)
{
    serve();
    ASSERT_TRUE(ask(placingAThousand(QString()))[QStringLiteral("success")].toBool());
    {
        const Transaction import(ledger().database());
        for (const char *time : {"1001", "1002", "1003"}) {
            chart().sendMessage("Market", "Quote", quoteAt(QLatin1String(time), 400));
        }
        ask(R"({"cmd":"TodayTrade","market":"SZ","stkcode":"000001"})"); // the quotes have come before
        ASSERT_EQ(tradeCount(), 0);
    }

    ASSERT_TRUE(waitUntil([this] { return tradeCount() == 3; }));
    QStringList dealt;
    const Executions trades = ledger().trades(bank(), DateRange());
    for (const Execution &trade : trades) {
        dealt.append(QStringLiteral("%1 at %2").arg(trade.dealNo).arg(trade.time.number()));
    }
    EXPECT_THAT(dealt, ElementsAre(QStringLiteral("P1-100 at 10010000"), QStringLiteral("P1-200 at 10020000"),
                                   QStringLiteral("P1-300 at 10030000")));
}

TEST_F(ServeCommandTest, AnswersItsSenderWhenNoChannelCanHaveTheNameOfTheScreen)
{
    serve();
    QJsonObject question = jsonOf(R"({"cmd":"TodayTrade","market":"SZ","stkcode":"000001"})");
    question[QStringLiteral("screenId")] = QString(70000, QLatin1Char('s'));

    const QJsonObject answer = ask(QJsonDocument(question).toJson(QJsonDocument::Compact));

    EXPECT_EQ(answer[QStringLiteral("success")], QJsonValue(false));
    EXPECT_THAT(answer[QStringLiteral("msg")].toString().toStdString(), HasSubstr("\"screenId\""));
}

TEST_F(ServeCommandTest, SaysThatAListIsNoQuestion)
{
    serve();

    EXPECT_EQ(ask("[1]")[QStringLiteral("msg")].toString(),
              QStringLiteral("the question is JSON, but no object"));
}

TEST_F(ServeCommandTest, IgnoresQuotesThatAreNone)
{
    serve();

    for (const char *nonsense : {"", "{}", "[1]", R"({"stkcode":"000001","market":"SZ","time":"1001"})"}) {
        chart().sendMessage("Market", "Quote", nonsense);
    }

    EXPECT_TRUE(
        ask(R"({"cmd":"TodayTrade","market":"SZ","stkcode":"000001"})")[QStringLiteral("success")].toBool());
}

TEST_F(ServeCommandTest, RefusesToServeALedgerThatIsServed)
{
    serve();

    const Ended second = run(busOptions() + ledgerOptions() + QStringList{QStringLiteral("serve")});

    EXPECT_EQ(second.exitCode, 1);
    EXPECT_THAT(second.errors, HasSubstr("served already: process " + std::to_string(module().processId()) +
                                         " on " + QSysInfo::machineHostName().toStdString() + ", since 20"));
}

TEST_F(ServeCommandTest, SaysWhichLedgerItServesOnWhichBus)
{
    serve();

    QByteArray said;
    ASSERT_TRUE(waitUntil([&] {
        said += module().readAllStandardError();
        return said.contains("serving the ledger") && said.endsWith('\n');
    }));

    EXPECT_THAT(said.toStdString(),
                HasSubstr("serving the ledger " + Database(location()).shownLocation().toStdString() +
                          " on the bus of " + broker().address().toStdString() + ", fence 1"));
}

TEST_F(ServeCommandTest, ServesALedgerWhoseModuleWasKilled)
{
    serve();
    module().kill();
    ASSERT_TRUE(module().waitForFinished());

    serve();
}

TEST_F(ServeCommandTest, SaysWhenNoChartCouldBeTold)
{
    broker().kill();

    const Ended ended =
        run(busOptions() + ledgerOptions() + QStringList{QStringLiteral("import"), write(oneRow)});

    EXPECT_EQ(ended.exitCode, 0);
    EXPECT_THAT(ended.output, HasSubstr("there is no bus"));
    EXPECT_EQ(tradeCount(), 1);
}

} // namespace TradeModule
