// The part of the server that a program speaks with is stopped: it takes what it is told and says nothing.
#include "tests/trademodule/support/ProgramFixture.h"
#include "trademodule/Error.h"
#include "trademodule/ledger/OrderBook.h"
#include "trademodule/ledger/ServingLease.h"

#include <QElapsedTimer>

#include <csignal>
#include <optional>
#include <utility>

namespace TradeModule {

namespace {

const QByteArray question = R"({"cmd":"TodayTrade","market":"SZ","stkcode":"000001"})";

class PostgreSqlFrozen : public ProgramOnABus
{
protected:
    void TearDown() override
    {
        thawSession();
        ProgramOnABus::TearDown();
    }

    void thawSession()
    {
        if (const pid_t frozen = std::exchange(m_frozen, 0); frozen > 0) {
            ::kill(frozen, SIGCONT);
        }
    }

    pid_t frozen() const { return m_frozen; }

    /// Stops the session that holds the lease.
    void freezeSession()
    {
        freeze(QStringLiteral("SELECT pid FROM pg_locks WHERE locktype = 'advisory' AND granted"));
    }

    /// Stops the session of whoever else is on the ledger.
    void freezeOther()
    {
        freeze(QStringLiteral("SELECT pid FROM pg_stat_activity "
                              "WHERE datname = current_database() AND pid <> pg_backend_pid()"));
    }

private:
    void freeze(const QString &sessions)
    {
        Rows row = ledger().database()->run(sessions);
        ASSERT_TRUE(row.next());
        m_frozen = static_cast<pid_t>(row.value(0).toInt());
        ASSERT_EQ(::kill(m_frozen, SIGSTOP), 0);
    }

    pid_t m_frozen = 0;
};

} // namespace

TEST_F(PostgreSqlFrozen, IsNoticedWithinTenSecondsAndReplaced)
{
    constexpr std::chrono::seconds longest(10);
    serve();
    freezeSession();
    QElapsedTimer clock;
    clock.start();

    chart().setRequestTimeout(longest);
    EXPECT_FALSE(ask(question).isEmpty());
    EXPECT_TRUE(waitUntil([this] { return ask(question)[QStringLiteral("success")].toBool(); }, longest));
    EXPECT_LT(std::chrono::milliseconds(clock.elapsed()), longest);
}

TEST_F(PostgreSqlFrozen, DoesNotKeepAModuleFromEnding)
{
    constexpr int longest = 2000;
    serve();
    freezeSession();
    chart().setRequestTimeout(std::chrono::milliseconds(500));
    EXPECT_TRUE(ask(question).isEmpty()); // it waits for the server now

    module().terminate();

    EXPECT_TRUE(module().waitForFinished(longest));
    EXPECT_EQ(module().exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(module().exitCode(), 1);
    thawSession();
    serve(); // for the end of the test
}

TEST_F(PostgreSqlFrozen, IsSaidWhereItKeepsTheLeaseOfAModuleThatIsGone)
{
    constexpr std::chrono::seconds longest(30);
    serve();
    freezeSession();
    module().kill();
    ASSERT_TRUE(module().waitForFinished());
    startModule({QStringLiteral("--standby")});
    QByteArray said;
    const auto says = [&](const char *words) {
        return waitUntil([&] { return (said += module().readAllStandardError()).contains(words); }, longest);
    };

    EXPECT_TRUE(says("must be ended there")) << said.toStdString();
    EXPECT_THAT(said.toStdString(), ::testing::HasSubstr("its process " + std::to_string(frozen())));

    thawSession();
    EXPECT_TRUE(says("serving the ledger")) << said.toStdString();
}

TEST_F(PostgreSqlFrozen, IsLeftByAModuleThatStandsBy)
{
    constexpr std::chrono::seconds longest(15);
    std::optional<ServingLease> lease(std::in_place, ledger().database());
    lease->take();
    startModule({QStringLiteral("--standby")});
    QByteArray said;
    const auto says = [&](const char *words) {
        return waitUntil([&] { return (said += module().readAllStandardError()).contains(words); }, longest);
    };
    ASSERT_TRUE(says("standing by")) << said.toStdString();

    freezeOther();
    lease.reset();

    EXPECT_TRUE(says("serving the ledger")) << said.toStdString();
}

TEST_F(PostgreSqlFrozen, IsLeftByAStatementThatTakesTooLong)
{
    ledger().database()->setLongestStatement(std::chrono::milliseconds(200));

    EXPECT_THROW(ledger().database()->run(QStringLiteral("SELECT pg_sleep(60)")), LedgerUnavailable);
    EXPECT_NO_THROW(ledger().positions());
}

} // namespace TradeModule
