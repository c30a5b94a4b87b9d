// What a restart of the database's server leaves of a ledger that is in use, and what becomes of one whose
// server says nothing.
#include "tests/trademodule/support/PostgreSqlServer.h"
#include "tests/trademodule/support/ProgramFixture.h"
#include "trademodule/Error.h"
#include "trademodule/ledger/OrderBook.h"
#include "trademodule/ledger/ServingLease.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <future>

namespace TradeModule {

namespace {

using ::testing::HasSubstr;

/// As long as it lives there is no server.
class Outage
{
public:
    Outage() { PostgreSqlServer::instance().stop(); }
    ~Outage() { PostgreSqlServer::instance().start(); }
    Q_DISABLE_COPY_MOVE(Outage)
};

void restartServer()
{
    const Outage outage;
}

Order anOrder()
{
    Order order{bank(), Direction::Buy, TradingDate::today(), ClockTime()};
    order.price = Money::ofYuan(10).value();
    order.quantity = 100;
    order.status = QStringLiteral("2");
    return order;
}

/// A host on which something listens that never says a word.
class SilentHost
{
public:
    SilentHost() : m_socket(::socket(AF_INET, SOCK_STREAM, 0))
    {
        sockaddr_in place{};
        place.sin_family = AF_INET;
        place.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t size = sizeof place;
        EXPECT_EQ(::bind(m_socket, reinterpret_cast<const sockaddr *>(&place), size), 0);
        EXPECT_EQ(::listen(m_socket, 8), 0);
        EXPECT_EQ(::getsockname(m_socket, reinterpret_cast<sockaddr *>(&place), &size), 0);
        m_port = ntohs(place.sin_port);
    }
    ~SilentHost() { ::close(m_socket); }
    Q_DISABLE_COPY_MOVE(SilentHost)

    QString location() const { return QStringLiteral("postgresql://trader@127.0.0.1:%1/ledger").arg(m_port); }

private:
    const int m_socket;
    int m_port = 0;
};

class PostgreSqlRestart : public LedgerFixture
{
};

class PostgreSqlRestartUnderAModule : public ProgramOnABus
{
protected:
    int orderCount() { return OrderBook(&ledger()).ofDay(TradingDate::today()).size(); }
};

} // namespace

TEST_F(PostgreSqlRestart, IsConnectedToAgainByTheNextUse)
{
    restartServer();

    EXPECT_THROW(ledger().positions(), LedgerUnavailable);
    EXPECT_NO_THROW(ledger().positions());
    EXPECT_EQ(book({fill(Side::Buy, bank(), 20240102, 10, 100)}).added, 1);
}

TEST_F(PostgreSqlRestart, LeavesNothingOfAChangeInProgress)
{
    OrderBook orders(&ledger());
    {
        Transaction transaction = orders.begin();
        orders.add(anOrder());
        restartServer();
        EXPECT_THROW(orders.add(anOrder()), LedgerUnavailable);
        EXPECT_THROW(transaction.commit(), LedgerUnavailable);
    }
    EXPECT_TRUE(orders.ofDay(TradingDate::today()).isEmpty());
}

TEST_F(PostgreSqlRestart, IsSaidNotToBeThereWhileItIsNot)
{
    const Outage outage;

    EXPECT_THROW(ledger().positions(), LedgerUnavailable);
    EXPECT_THROW(ledger().positions(), LedgerUnavailable);
}

TEST_F(PostgreSqlRestart, GivesTheRightToServeBackToWhoHadIt)
{
    ServingLease lease(ledger().database());
    lease.take();
    restartServer();
    ASSERT_THROW(ledger().positions(), LedgerUnavailable);
    ASSERT_NO_THROW(ledger().positions());

    Ledger other(location());
    EXPECT_THROW(ServingLease(other.database()).take(), LedgerError);
}

TEST_F(PostgreSqlRestart, LetsNothingBeChangedByWhoLostTheRightToServe)
{
    ServingLease lost(ledger().database());
    lost.take();
    restartServer();
    Ledger other(location());
    ServingLease lease(other.database());
    lease.take();
    ASSERT_THROW(ledger().positions(), LedgerUnavailable); // the connection is lost

    EXPECT_THROW(ledger().positions(), LeaseLost); // the right, too
    EXPECT_THROW(book({fill(Side::Buy, bank(), 20240102, 10, 100)}), LeaseLost);
}

TEST_F(PostgreSqlRestartUnderAModule, RefusesOrdersUntilTheServerIsThereAgain)
{
    serve();
    ASSERT_TRUE(ask(placing)[QStringLiteral("success")].toBool());
    {
        const Outage outage;
        const QJsonObject answer = ask(placing);
        EXPECT_EQ(answer[QStringLiteral("success")], QJsonValue(false));
        EXPECT_EQ(answer[QStringLiteral("errcode")], QJsonValue(2));
        EXPECT_THAT(answer[QStringLiteral("msg")].toString().toStdString(), HasSubstr("the ledger"));
    }
    ASSERT_TRUE(waitUntil([this] { return ask(placing)[QStringLiteral("success")].toBool(); }));

    ASSERT_THROW(ledger().positions(), LedgerUnavailable); // this test's own connection is lost, too
    EXPECT_EQ(orderCount(), 2);
    QByteArray log;
    ASSERT_TRUE(
        waitUntil([&] { return (log += module().readAllStandardError()).contains("it is there again"); }));
    EXPECT_EQ(log.count("it is there again"), 1) << log.toStdString();
}

TEST(PostgreSqlRestartSilence, IsNotWaitedForLong)
{
    if (const QString reason = TestLedger::unavailable(); !reason.isEmpty()) {
        GTEST_SKIP() << reason.toStdString();
    }
    auto host = std::make_unique<SilentHost>();
    const auto opening = std::async(std::launch::async, [location = host->location()] {
        EXPECT_THROW(Ledger ledger(location), LedgerUnavailable);
    });
    EXPECT_EQ(opening.wait_for(std::chrono::seconds(15)), std::future_status::ready);
    host.reset(); // who still waits is let go
}

} // namespace TradeModule
