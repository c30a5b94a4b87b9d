// Two serving programs on one ledger and one bus: when one ends, or freezes, the other follows.
#include "tests/trademodule/support/ProgramFixture.h"
#include "trademodule/ledger/OrderBook.h"
#include "trademodule/ledger/ServingTable.h"

#include <QElapsedTimer>

#include <csignal>

#include <chrono>

namespace TradeModule {

using namespace std::chrono_literals;

namespace {

using ::testing::HasSubstr;

class StandbyTest : public ProgramOnABus
{
protected:
    void SetUp() override
    {
        ProgramOnABus::SetUp();
        if (IsSkipped()) {
            return;
        }
        ASSERT_TRUE(chart().join(broker().address()));
        chart().setRequestTimeout(std::chrono::milliseconds(200));
        m_owner = startServing();
        ASSERT_TRUE(waitUntil([this] { return isAnswered(); }));
        m_standby = startServing({QStringLiteral("--standby")});
        ASSERT_TRUE(waitUntil(
            [this] { return (m_said += m_standby->readAllStandardError()).contains("standing by"); }));
    }

    void TearDown() override
    {
        end(m_standby.get());
        end(m_owner.get());
    }

    std::unique_ptr<QProcess> startServing(const QStringList &options = {})
    {
        return start(busOptions() + ledgerOptions() + QStringList{QStringLiteral("serve")} + options);
    }

    bool isAnswered() { return !ask("{\"cmd\":\"?\"}").isEmpty(); }

    static void signalTo(const QProcess &process, int signal)
    {
        ASSERT_EQ(::kill(static_cast<pid_t>(process.processId()), signal), 0);
    }

    /// Of the process that the ledger names as the one that serves it.
    qint64 servingProcess() { return ServingTable(ledger().database()).server().process.number; }

    bool standbyServes() { return servingProcess() == m_standby->processId() && isAnswered(); }

    int orderCount() { return OrderBook(&ledger()).ofDay(TradingDate::today()).size(); }

    QProcess &owner() { return *m_owner; }
    QProcess &standby() { return *m_standby; }
    QByteArray said() { return m_said += m_standby->readAllStandardError(); }

private:
    static void end(QProcess *process)
    {
        if (process != nullptr && process->state() != QProcess::NotRunning) {
            signalTo(*process, SIGCONT);
            process->terminate();
            EXPECT_TRUE(process->waitForFinished());
        }
    }

    std::unique_ptr<QProcess> m_owner;
    std::unique_ptr<QProcess> m_standby;
    QByteArray m_said;
};

} // namespace

TEST_F(StandbyTest, NamesWhoServesAndAnswersNothing)
{
    EXPECT_THAT(said().toStdString(), HasSubstr("process " + std::to_string(owner().processId())));
    EXPECT_EQ(said().count('\n'), 2) << "what it begins with, and for whom it waits";
    signalTo(owner(), SIGSTOP); // for less time than a frozen one gets
    EXPECT_FALSE(isAnswered());
    signalTo(owner(), SIGCONT);
    EXPECT_TRUE(waitUntil([this] { return isAnswered(); }));
    EXPECT_EQ(servingProcess(), owner().processId());
}

TEST_F(StandbyTest, EndsWhenItIsToldTo)
{
    standby().terminate();

    ASSERT_TRUE(standby().waitForFinished(2000));
    EXPECT_EQ(standby().exitCode(), 0);
}

TEST_F(StandbyTest, FollowsAnOwnerThatEnds)
{
    owner().terminate();

    EXPECT_TRUE(waitUntil([this] { return standbyServes(); }, 5s));
}

TEST_F(StandbyTest, FollowsAnOwnerThatWasKilledWithinFiveSeconds)
{
    ASSERT_EQ(ask(placing)[QStringLiteral("ordersno")], QJsonValue(QStringLiteral("1")));
    signalTo(owner(), SIGKILL);

    EXPECT_TRUE(waitUntil([this] { return standbyServes(); }, 5s));
    chart().setRequestTimeout(20s);
    const QByteArray answer = chart().request("TradeQuery", placing);
    EXPECT_EQ(jsonOf(answer)[QStringLiteral("ordersno")], QJsonValue(QStringLiteral("2")))
        << answer.constData();
}

TEST_F(StandbyTest, SaysWhomItFollowed)
{
    const std::string process = std::to_string(owner().processId());
    signalTo(owner(), SIGKILL);

    EXPECT_TRUE(waitUntil([this] { return said().contains("fence"); }, 5s));
    EXPECT_THAT(said().toStdString(), HasSubstr("followed process " + process + " on "));
    EXPECT_THAT(said().toStdString(), HasSubstr("the fence is 2 now"));
}

TEST_F(StandbyTest, FollowsAnOwnerThatIsFrozenAndChangesNothingWhenItWakesUp)
{
    constexpr std::chrono::milliseconds frozenForLong = 10s;
    constexpr auto longestFollowing = 20s;
    QElapsedTimer clock;
    clock.start();
    signalTo(owner(), SIGSTOP);
    EXPECT_TRUE(ask(placing).isEmpty()); // waits in the frozen one's inbox

    ASSERT_TRUE(waitUntil([this] { return standbyServes(); }, longestFollowing));
    EXPECT_GE(clock.elapsed(), frozenForLong.count());
    if (owner().state() == QProcess::Running) { // only its connection could be ended
        signalTo(owner(), SIGCONT);
        ASSERT_TRUE(waitUntil([this] { return owner().state() == QProcess::NotRunning; }));
        EXPECT_EQ(owner().exitStatus(), QProcess::NormalExit);
        EXPECT_EQ(owner().exitCode(), 1);
        EXPECT_THAT(owner().readAllStandardError().toStdString(),
                    HasSubstr("another process serves this ledger now: process " +
                              std::to_string(standby().processId())));
    }
    EXPECT_EQ(orderCount(), 0);
    EXPECT_EQ(ask(placing)[QStringLiteral("ordersno")], QJsonValue(QStringLiteral("1")));
}

} // namespace TradeModule
