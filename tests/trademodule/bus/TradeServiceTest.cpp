// A module whose ledger's disk is full or fails for a while, and one that is not alone on its bus.
#include "trademodule/bus/TradeService.h"

#include "endpoint/Announcement.h"
#include "tests/endpoint/BusTest.h"
#include "tests/support/LogCapture.h"
#include "tests/trademodule/support/ExchangeFixture.h"
#include "tests/trademodule/support/FailingDisk.h"
#include "tests/trademodule/support/LedgerAudit.h"
#include "trademodule/ledger/ProcessIdentity.h"
#include "trading/Presence.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <set>

#include <unistd.h>

namespace TradeModule {

namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using Fault = FailingDisk::Fault;
using Lasting = FailingDisk::Lasting;

const QByteArray placingFromAScreen =
    R"({"cmd":"EntrustPlace","market":"SZ","stkcode":"000001","bsflag2":"0B",
                               "orderprice":"10.00","orderqty":"1000","screenId":"screen"})";

/// A bar of which the paper exchange deals 100 shares.
QByteArray quoteAt(const char *time)
{
    QJsonObject quote{{QStringLiteral("stkcode"), QStringLiteral("000001")},
                      {QStringLiteral("market"), QStringLiteral("SZ")},
                      {QStringLiteral("date"), TradingDate::today().text()},
                      {QStringLiteral("time"), QLatin1String(time)},
                      {QStringLiteral("volume"), QStringLiteral("400")}};
    for (const char *const price : {"open", "high", "low", "close"}) {
        quote[QLatin1String(price)] = QStringLiteral("10.00");
    }
    return QJsonDocument(quote).toJson(QJsonDocument::Compact);
}

/// A module that serves, and a chart that asks it; one order of 1000 shares is placed.
class TradeServiceOnABus : public LedgerFixture
{
protected:
    void SetUp() override
    {
        LedgerFixture::SetUp();
        m_service.emplace(m_broker.address(), &ledger(), Trading::TradePresence());
        ASSERT_TRUE(m_chart.join(m_broker.address()));
        ASSERT_TRUE(m_chart.listen("screen", "TradeQuery"));
        ASSERT_TRUE(waitUntil([this] { return success(placingFromAScreen); }));
    }

    void send(const char *quote) { m_chart.sendMessage("Market", "Quote", quoteAt(quote)); }

    QJsonObject ask(const QByteArray &question)
    {
        const int before = m_chart.messages.size();
        m_chart.sendMessage("Global", "TradeQuery", question);
        waitUntil([&] { return m_chart.messages.size() > before; }, std::chrono::seconds(5));
        return m_chart.messages.size() > before
                   ? QJsonDocument::fromJson(m_chart.messages.constLast().payload).object()
                   : QJsonObject();
    }

    bool success(const QByteArray &question) { return ask(question)[QStringLiteral("success")].toBool(); }

    int tradeCount() { return ledger().trades(bank(), DateRange()).size(); }

    std::vector<int> timesOfTrades()
    {
        std::vector<int> times;
        const Executions trades = ledger().trades(bank(), DateRange());
        for (const Execution &trade : trades) {
            times.push_back(trade.time.number() / 10000);
        }
        return times;
    }

private:
    TestBroker m_broker;
    RecordingEndPoint m_chart;
    std::optional<TradeService> m_service;
};

class TradeServiceOnAFailingDisk : public TradeServiceOnABus, public ::testing::WithParamInterface<Fault>
{
protected:
    void SetUp() override
    {
        if (!FailingDisk::install()) {
            GTEST_SKIP() << "Qt's driver HAS A SQLITE OF ITS OWN: no failing disk was put below it";
        }
        TradeServiceOnABus::SetUp();
    }

    FailingDisk m_disk;
};

/// Questions and presences are kept by the broker, so that the service hears them in the order in which it
/// has subscribed to them: first what is to be done, then who does it.
class TradeServiceOnACommonBus : public LedgerFixture
{
protected:
    using Notice = LocalCommunication::Announcement::Notice;

    void leave(LocalCommunication::Announcement *announcement, const Notice &notice)
    {
        RecordingEndPoint listener;
        listener.subscribe(notice.channel, notice.topic);
        ASSERT_TRUE(listener.join(m_broker.address()));
        announcement->start(m_broker.address(), notice);
        ASSERT_TRUE(listener.waitForMessages(1));
    }

    void leaveOrder() { leave(&m_order, {"Global", "TradeQuery", placingFromAScreen, "{}"}); }

    /// Of another ledger, by a process that runs: the one that has started this test.
    void letAnotherServe()
    {
        const ProcessIdentity process = ProcessIdentity::of(::getppid());
        Trading::TradePresence other = presenceOf("a", "/other.db");
        other.host = process.host;
        other.process = process.number;
        other.processStart = process.start;
        leave(&m_other, {"Global", "TradePresence", other.toJson(), other.ended().toJson()});
    }
    void letAnotherEnd() { m_other.stop(); }

    void serve()
    {
        m_service.emplace(m_broker.address(), &ledger(), presenceOf("b", "/own.db"));
        QObject::connect(&*m_service, &TradeService::occupied, [this] { m_isOccupied = true; });
        QObject::connect(&*m_service, &TradeService::begun, [this] { m_hasBegun = true; });
    }
    bool waits() const
    {
        return waitUntil([this] { return m_isOccupied; });
    }
    bool begins() const
    {
        return waitUntil([this] { return m_hasBegun; });
    }
    int orderCount() { return OrderBook(&ledger()).ofDay(TradingDate::today()).size(); }

private:
    static Trading::TradePresence presenceOf(const char *instance, const char *ledger)
    {
        Trading::TradePresence presence;
        presence.instance = QLatin1String(instance);
        presence.isOnline = true;
        presence.ledger = QLatin1String(ledger);
        return presence;
    }

    TestBroker m_broker;
    LocalCommunication::Announcement m_order;
    LocalCommunication::Announcement m_other;
    std::optional<TradeService> m_service;
    bool m_isOccupied = false;
    bool m_hasBegun = false;
};

std::string wordOfFault(const ::testing::TestParamInfo<Fault> &fault)
{
    return fault.param == Fault::IsFull ? "Full" : "Broken";
}

} // namespace

TEST_P(TradeServiceOnAFailingDisk, DealsTheQuotesOfThatTimeAfterwardsInTheirOrder)
{
    send("0931");
    ASSERT_TRUE(waitUntil([this] { return tradeCount() == 1; }));

    m_disk.failAt(1, GetParam(), Lasting::UntilMended);
    for (const char *const time : {"0932", "0933", "0934"}) {
        send(time);
    }
    ASSERT_TRUE(success(R"({"cmd":"TodayTrade","market":"SZ","stkcode":"000001","screenId":"screen"})"));
    ASSERT_TRUE(m_disk.hasFailed());
    ASSERT_EQ(tradeCount(), 1);

    m_disk.mend();
    ASSERT_TRUE(waitUntil([this] { return tradeCount() == 4; }));
    EXPECT_THAT(timesOfTrades(), ElementsAre(931, 932, 933, 934));
    EXPECT_THAT(audit(&ledger(), yuan(1e6)), IsEmpty());
}

TEST_P(TradeServiceOnAFailingDisk, EntersNoOrderAndSaysWhy)
{
    m_disk.failAt(1, GetParam(), Lasting::UntilMended);

    const QJsonObject answer = ask(placingFromAScreen);

    EXPECT_EQ(answer[QStringLiteral("errcode")], QJsonValue(2));
    EXPECT_THAT(answer[QStringLiteral("msg")].toString().toStdString(), HasSubstr("disk"));
    m_disk.mend();
    EXPECT_EQ(OrderBook(&ledger()).ofDay(TradingDate::today()).size(), 1);
    EXPECT_TRUE(success(placingFromAScreen));
}

TEST_P(TradeServiceOnAFailingDisk, PlacesNoOrderBeforeTheQuotesThatCameBeforeIt)
{
    m_disk.failAt(1, GetParam(), Lasting::UntilMended);
    send("0931");
    ASSERT_TRUE(waitUntil([this] { return m_disk.hasFailed(); }));
    m_disk.failAt(1, GetParam(), Lasting::Once); // the quote cannot be dealt when the question comes

    ASSERT_TRUE(success(placingFromAScreen));

    EXPECT_EQ(tradeCount(), 1) << "the quote was dealt before the answer";
}

TEST_P(TradeServiceOnAFailingDisk, SaysEachTroubleOnceAsLongAsItLasts)
{
    const LogCapture log;
    m_disk.failAt(1, GetParam(), Lasting::UntilMended);

    for (const char *const time : {"0932", "0933", "0934"}) {
        send(time);
    }
    ASSERT_TRUE(success(R"({"cmd":"TodayTrade","market":"SZ","stkcode":"000001","screenId":"screen"})"));

    const std::vector<QString> told = log.lines(QtWarningMsg);
    EXPECT_THAT(told, Not(IsEmpty()));
    EXPECT_EQ(std::set<QString>(told.begin(), told.end()).size(), told.size());
}

TEST_F(TradeServiceOnABus, LeavesAQuoteOutThatTheLedgerNeverTakesAndDealsTheNextOnes)
{
    const LogCapture log;
    Database *const database = ledger().database();
    database->run(QStringLiteral("ALTER TABLE told_minute RENAME TO away"));
    send("0931");
    ASSERT_TRUE(waitUntil([&log] { return log.has(QStringLiteral("a quote of 000001 is left out: ")); }))
        << qPrintable(log.text());
    EXPECT_EQ(tradeCount(), 0);
    database->run(QStringLiteral("ALTER TABLE away RENAME TO told_minute"));

    send("0932");

    EXPECT_TRUE(waitUntil([this] { return tradeCount() == 1; }));
    EXPECT_THAT(timesOfTrades(), ElementsAre(932));
}

TEST_F(TradeServiceOnACommonBus, DoesWhatItWasAskedBeforeItServed)
{
    leaveOrder();

    serve();

    ASSERT_TRUE(begins());
    EXPECT_TRUE(waitUntil([this] { return orderCount() == 1; }));
}

TEST_F(TradeServiceOnACommonBus, NeverDoesWhatTheOtherOneThatServedThereWasAsked)
{
    leaveOrder();
    letAnotherServe();
    serve();
    ASSERT_TRUE(waits());

    letAnotherEnd();

    ASSERT_TRUE(begins());
    EXPECT_EQ(orderCount(), 0);
}

INSTANTIATE_TEST_SUITE_P(ThatIs, TradeServiceOnAFailingDisk, ::testing::Values(Fault::IsFull, Fault::IoError),
                         &wordOfFault);

} // namespace TradeModule
