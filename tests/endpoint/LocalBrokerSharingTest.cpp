// Several terminals of one directory: one of them serves the bus, at any time.

#include "endpoint/DirectoryLock_p.h"
#include "tests/endpoint/LocalBrokerTest.h"

#include <algorithm>
#include <memory>
#include <vector>

using namespace std::chrono_literals;

using LocalCommunication::DirectoryLock;

namespace {

using LocalBrokerSharing = LocalBrokerTest;

/// Another terminal that serves the same directory, as a process that a test may kill.
class OtherTerminal
{
public:
    explicit OtherTerminal(const QString &address)
    {
        m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        m_process.start(QStringLiteral(LOCAL_BROKER_HOST), {address});
    }
    ~OtherTerminal() { kill(); }
    Q_DISABLE_COPY_MOVE(OtherTerminal)

    /// 0 when it does not come to serve the bus.
    pid_t brokerId()
    {
        if (m_brokerId == 0 && waitUntil([this] { return m_process.canReadLine(); })) {
            m_brokerId = m_process.readLine().trimmed().toInt();
        }
        return m_brokerId;
    }

    void kill()
    {
        m_process.kill();
        m_process.waitForFinished();
    }

private:
    QProcess m_process;
    pid_t m_brokerId = 0;
};

} // namespace

TEST_F(LocalBrokerSharing, UsesTheBrokerOfAnotherTerminalAndReplacesItWhenItEnds)
{
    LocalBroker first;
    first.start(address());
    ASSERT_TRUE(waitFor(first, State::Running));
    LocalBroker second;
    second.start(address());
    ASSERT_TRUE(waitFor(second, State::Reused));
    EXPECT_EQ(second.processId(), 0);

    first.stop();

    EXPECT_TRUE(waitFor(second, State::Running));
}

TEST_F(LocalBrokerSharing, NeverServesADirectoryTwiceHoweverManyStartAtOnce)
{
    std::vector<std::unique_ptr<LocalBroker>> brokers;
    for (int i = 0; i < 5; ++i) {
        brokers.push_back(std::make_unique<LocalBroker>());
    }
    int running = 0;
    int mostRunning = 0;
    for (auto &broker : brokers) {
        QObject::connect(broker.get(), &LocalBroker::stateChanged, broker.get(), [&] {
            running = static_cast<int>(std::count_if(
                brokers.begin(), brokers.end(), [](const auto &each) { return each->processId() != 0; }));
            mostRunning = std::max(mostRunning, running);
        });
        broker->start(address());
    }

    const auto isSettled = [&] {
        return std::all_of(brokers.begin(), brokers.end(), [](const auto &each) {
            return each->state() == State::Running || each->state() == State::Reused;
        });
    };
    ASSERT_TRUE(waitUntil(isSettled));
    EXPECT_EQ(running, 1);
    EXPECT_EQ(mostRunning, 1);
}

TEST_F(LocalBrokerSharing, EndsTheBrokerOfATerminalThatCrashesAndServesInItsPlace)
{
    OtherTerminal other(address());
    const pid_t orphan = other.brokerId();
    ASSERT_NE(orphan, 0);
    LocalBroker broker;
    broker.start(address());
    ASSERT_TRUE(waitFor(broker, State::Reused));

    other.kill();

    EXPECT_TRUE(waitFor(broker, State::Running));
    EXPECT_NE(broker.processId(), orphan);
    EXPECT_FALSE(isAlive(orphan));
}

TEST_F(LocalBrokerSharing, LeavesNoBrokerOfACrashedTerminalThatCannotEndByItself)
{
    OtherTerminal other(address());
    const pid_t orphan = other.brokerId();
    ASSERT_NE(orphan, 0);
    ::kill(orphan, SIGSTOP);

    other.kill();

    EXPECT_TRUE(waitUntil([&] { return !isAlive(orphan); }));
}

TEST_F(LocalBrokerSharing, WaitsForTheEndOfABrokerThatNoLongerAnswers)
{
    ASSERT_EQ(::mkdir(QFile::encodeName(busDirectory()).constData(), 0700), 0);
    DirectoryLock ending;
    ASSERT_EQ(ending.tryAcquire(busDirectory() + QStringLiteral("/broker.lock")),
              DirectoryLock::Result::Held);

    LocalBroker broker;
    broker.start(address());
    // that it waits shows only by time: it tells nobody of it
    EXPECT_FALSE(waitUntil([&] { return broker.processId() != 0; }, 1s));
    ending.release();

    EXPECT_TRUE(waitFor(broker, State::Running));
    RecordingEndPoint client;
    EXPECT_TRUE(client.join(address()));
}

TEST_F(LocalBrokerSharing, ServesEveryInstanceOfADirectoryOnABusOfItsOwn)
{
    LocalBroker shared;
    shared.start(address());
    ASSERT_TRUE(waitFor(shared, State::Running));
    RecordingEndPoint stranger;
    stranger.subscribe("c", "t");
    ASSERT_TRUE(stranger.join(address()));

    qputenv("TRADEBUS_INSTANCE", "/home/trader/account.db");
    LocalBroker own;
    RecordingEndPoint sender;
    RecordingEndPoint receiver;
    own.start(address());
    receiver.subscribe("c", "t");
    const bool isJoined = receiver.join(address()) && sender.join(address());
    qunsetenv("TRADEBUS_INSTANCE");

    ASSERT_TRUE(isJoined);
    EXPECT_TRUE(waitFor(own, State::Running));
    sender.sendMessage("c", "t", "p");
    ASSERT_TRUE(receiver.waitForMessages(1));
    ASSERT_TRUE(stranger.listen("End", "End")); // what was to come has come
    EXPECT_TRUE(stranger.messages.isEmpty());
}
