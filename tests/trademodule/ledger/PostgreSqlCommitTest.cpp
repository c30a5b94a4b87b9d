// The connection to the server breaks while a change is being committed.
#include "tests/trademodule/support/CommitProxy.h"
#include "tests/trademodule/support/ExchangeFixture.h"
#include "tests/trademodule/support/LedgerAudit.h"
#include "tests/trademodule/support/ProgramFixture.h"
#include "tests/trademodule/support/ServerSocket.h"

#include <QUrl>
#include <QUrlQuery>

#include <future>
#include <thread>

namespace TradeModule {

namespace {

using namespace TradeChart::OrderStatus;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;
using CommitFault = CommitProxy::Fault;

class PostgreSqlCommit : public Program
{
protected:
    void SetUp() override
    {
        Program::SetUp();
        if (IsSkipped()) {
            return;
        }
        m_proxy.emplace(ServerSocket::directoryOf(location()));
        m_behind.emplace(throughProxy());
        m_behind->setPatience(std::chrono::milliseconds(200));
    }

    void TearDown() override
    {
        m_behind.reset();
        m_proxy.reset();
    }

    QString throughProxy() const
    {
        return location().replace(ServerSocket::directoryOf(location()), m_proxy->directory());
    }

    /// Of the ledger as it is seen through the proxy.
    Ledger &behind() { return *m_behind; }
    CommitProxy &proxy() { return *m_proxy; }

    void change()
    {
        OrderBook orders(&behind());
        Transaction transaction = orders.begin();
        orders.setCash(yuan(4711));
        transaction.commit();
    }

    bool isChanged() { return OrderBook(&ledger()).cash() == yuan(4711); }

    PaperExchange exchange()
    {
        return PaperExchange(&behind(),
                             [this](const Order &order) { m_told.push_back(order.status.toStdString()); });
    }

    /// A change that the server makes and cannot confirm any more. Its mark; nothing where that is known.
    std::optional<qint64> changeInDoubt()
    {
        proxy().fail(CommitFault::LoseAnswer);
        OrderBook orders(&behind());
        Transaction transaction = orders.begin();
        orders.setCash(yuan(4711));
        proxy().setAway(true);
        try {
            transaction.commit();
        } catch (const OutcomeUnknown &unknown) {
            return unknown.mark();
        }
        return {};
    }

    void endSessionBehind()
    {
        Rows session = behind().database()->run(QStringLiteral("SELECT pg_backend_pid()"));
        ASSERT_TRUE(session.next());
        ledger().database()->run(
            QStringLiteral("SELECT pg_terminate_backend(%1)").arg(session.value(0).toInt()));
    }

    /// Whether the server says that it follows another one.
    void setFollows(bool follows)
    {
        ledger().database()->run(
            QStringLiteral("CREATE OR REPLACE FUNCTION public.pg_is_in_recovery() RETURNS boolean "
                           "LANGUAGE sql AS 'SELECT %1'")
                .arg(follows ? QStringLiteral("true") : QStringLiteral("false")));
        behind().database()->run(QStringLiteral("SET search_path = public, pg_catalog"));
    }

    std::vector<std::string> m_told;

private:
    std::optional<CommitProxy> m_proxy;
    std::optional<Ledger> m_behind;
};

} // namespace

TEST_F(PostgreSqlCommit, IsKnownToBeDoneThoughItsAnswerWasLost)
{
    proxy().fail(CommitFault::LoseAnswer);

    EXPECT_NO_THROW(change());
    EXPECT_TRUE(isChanged());
}

TEST_F(PostgreSqlCommit, IsKnownToHaveFailedWhenTheServerNeverHeardOfIt)
{
    proxy().fail(CommitFault::LoseQuestion);

    EXPECT_THROW(change(), LedgerUnavailable);
    EXPECT_FALSE(isChanged());
}

TEST_F(PostgreSqlCommit, IsInDoubtUntilTheServerIsThereAgain)
{
    const std::optional<qint64> mark = changeInDoubt();
    ASSERT_TRUE(mark);
    EXPECT_THROW(behind().database()->isCommitted(*mark), LedgerUnavailable);

    proxy().setAway(false);
    EXPECT_TRUE(behind().database()->isCommitted(*mark));
}

TEST_F(PostgreSqlCommit, IsKnownAlsoAfterLaterChanges)
{
    change(); // its mark goes with the next one's
    const std::optional<qint64> mark = changeInDoubt();
    ASSERT_TRUE(mark);
    proxy().setAway(false);
    change();
    change();

    EXPECT_TRUE(behind().database()->isCommitted(*mark));
}

TEST_F(PostgreSqlCommit, IsNotMadeWhereAnotherServerTookOverThatNeverHeardOfIt)
{
    const Money before = OrderBook(&ledger()).cash();
    const std::optional<qint64> mark = changeInDoubt();
    ASSERT_TRUE(mark);
    ASSERT_TRUE(waitUntil([this] { return isChanged(); }));
    ledger().database()->run(QStringLiteral("DELETE FROM change_mark WHERE mark = %1").arg(*mark));
    ledger().database()->run(QStringLiteral("UPDATE account SET cash = %1").arg(before.steps()));
    proxy().setAway(false);

    EXPECT_FALSE(behind().database()->isCommitted(*mark));
}

TEST_F(PostgreSqlCommit, IsNotJudgedWhileItIsStillInProgress)
{
    constexpr qint64 mark = 4711;
    Ledger slow(location());
    {
        Transaction transaction(slow.database());
        slow.database()->run(
            QStringLiteral("INSERT INTO change_mark (mark, made_on) VALUES (%1, 29991231)").arg(mark));
        EXPECT_THROW(behind().database()->isCommitted(mark), LedgerUnavailable);
        transaction.commit();
    }

    EXPECT_TRUE(behind().database()->isCommitted(mark));
}

TEST_F(PostgreSqlCommit, IsWaitedForAlsoOverAConnectionThatIsOpenedAnew)
{
    constexpr qint64 mark = 4711;
    behind().database()->setPatience(std::chrono::seconds(20));
    behind().database()->setLongestStatement(std::chrono::milliseconds(300));
    behind().database()->reconnectAside();
    ASSERT_FALSE(behind().database()->isCommitted(mark));
    std::promise<void> hasBegun;
    const auto committing = std::async(std::launch::async, [this, &hasBegun] {
        Database slow(location());
        Transaction transaction(&slow);
        slow.run(QStringLiteral("INSERT INTO change_mark (mark, made_on) VALUES (%1, 29991231)").arg(mark));
        hasBegun.set_value();
        std::this_thread::sleep_for(std::chrono::milliseconds(700)); // more than a statement gets
        transaction.commit();
    });
    hasBegun.get_future().wait();

    endSessionBehind();

    EXPECT_TRUE(behind().database()->isCommitted(mark));
}

TEST_F(PostgreSqlCommit, IsNotJudgedByAServerThatFollowsAnotherOne)
{
    const std::optional<qint64> mark = changeInDoubt();
    ASSERT_TRUE(mark);
    proxy().setAway(false);
    ASSERT_TRUE(waitUntil([this] { return isChanged(); }));
    ledger().database()->run(QStringLiteral("DELETE FROM change_mark WHERE mark = %1").arg(*mark));
    setFollows(true);
    EXPECT_THROW(behind().database()->isCommitted(*mark), LedgerUnavailable) << "it may hear of it later";

    setFollows(false);
    EXPECT_FALSE(behind().database()->isCommitted(*mark));
}

TEST_F(PostgreSqlCommit, OfABarInDoubtDealsTheBarOnce)
{
    PaperExchange exchange = this->exchange();
    exchange.take(bar(1000, 10, 10, 10));
    exchange.place(bank(), Direction::Buy, yuan(10), 1000);
    exchange.settle();
    m_told.clear();
    proxy().fail(CommitFault::LoseAnswer);
    proxy().setAway(true);
    EXPECT_THROW(exchange.take(bar(1001, 10, 10, 10, 2000)), OutcomeUnknown);
    EXPECT_THAT(m_told, IsEmpty());

    proxy().setAway(false);
    exchange.take(bar(1001, 10, 10, 10, 2000));

    EXPECT_THAT(ledger().trades(bank(), DateRange()), SizeIs(1));
    EXPECT_THAT(m_told, ElementsAre(PartDeal));
    EXPECT_THAT(audit(&ledger(), yuan(1e6)), IsEmpty());
    exchange.take(bar(1002, 10, 10, 10, 2000));
    EXPECT_THAT(ledger().trades(bank(), DateRange()), SizeIs(2)) << "the next bar";
}

TEST_F(PostgreSqlCommit, OfABarInDoubtDealsItOnceAlsoWhenSomethingElseFindsOutThatItWasMade)
{
    PaperExchange exchange = this->exchange();
    exchange.take(bar(1000, 10, 10, 10));
    exchange.place(bank(), Direction::Buy, yuan(10), 1000);
    exchange.settle();
    proxy().fail(CommitFault::LoseAnswer);
    proxy().setAway(true);
    EXPECT_THROW(exchange.take(bar(1001, 10, 10, 10, 2000)), OutcomeUnknown);
    proxy().setAway(false);
    exchange.settle();

    proxy().fail(CommitFault::LoseAnswer);
    proxy().setAway(true);
    EXPECT_ANY_THROW(exchange.place(bank(), Direction::Buy, yuan(9), 100));
    proxy().setAway(false);
    exchange.take(bar(1001, 10, 10, 10, 2000));

    EXPECT_THAT(ledger().trades(bank(), DateRange()), SizeIs(1));
}

TEST_F(PostgreSqlCommit, OfABarThatNeverHappenedIsMadeUpFor)
{
    PaperExchange exchange = this->exchange();
    exchange.take(bar(1000, 10, 10, 10));
    exchange.place(bank(), Direction::Buy, yuan(10), 1000);
    exchange.settle();
    proxy().fail(CommitFault::LoseQuestion);
    proxy().setAway(true);
    EXPECT_THROW(exchange.take(bar(1001, 10, 10, 10, 2000)), LedgerUnavailable);

    proxy().setAway(false);
    exchange.take(bar(1001, 10, 10, 10, 2000));

    EXPECT_THAT(ledger().trades(bank(), DateRange()), SizeIs(1));
}

TEST_F(PostgreSqlCommit, OfAnOrderFromTheCommandLineIsConfirmed)
{
    proxy().fail(CommitFault::LoseAnswer);

    const Ended placed =
        run({QStringLiteral("--ledger"), throughProxy(), QStringLiteral("place"), QStringLiteral("000001"),
             QStringLiteral("buy"), QStringLiteral("10"), QStringLiteral("100")});

    EXPECT_EQ(placed.exitCode, 0) << placed.errors;
    EXPECT_THAT(OrderBook(&ledger()).ofDay(TradingDate::today()), SizeIs(1));
}

} // namespace TradeModule
