#include "tests/endpoint/LocalBrokerTest.h"

#include "tests/support/LogCapture.h"

#include <QStandardPaths>

#include <sys/resource.h>
#include <vector>

using namespace std::chrono_literals;

namespace {

/// This program has only so many descriptors left while it lives.
class FewDescriptors
{
public:
    explicit FewDescriptors(int left)
    {
        ::getrlimit(RLIMIT_NOFILE, &m_before);
        rlimit low = m_before;
        low.rlim_cur = 200;
        EXPECT_EQ(::setrlimit(RLIMIT_NOFILE, &low), 0);
        for (int last = ::dup(0); last >= 0; last = ::dup(0)) {
            m_taken.push_back(last);
        }
        for (; left > 0; --left) {
            ::close(m_taken.back());
            m_taken.pop_back();
        }
    }
    ~FewDescriptors()
    {
        for (const int each : m_taken) {
            ::close(each);
        }
        ::setrlimit(RLIMIT_NOFILE, &m_before);
    }
    Q_DISABLE_COPY_MOVE(FewDescriptors)

private:
    rlimit m_before{};
    std::vector<int> m_taken;
};

} // namespace

TEST_F(LocalBrokerTest, ServesTheEndpointsOfItsDirectory)
{
    LocalBroker broker;
    RecordingEndPoint receiver;
    RecordingEndPoint sender;
    receiver.subscribe("screen", "TradeNotify");

    broker.start(address());
    ASSERT_TRUE(receiver.join(address()));
    ASSERT_TRUE(sender.join(address()));
    sender.sendMessage("screen", "TradeNotify", "dealt");

    EXPECT_TRUE(receiver.waitForMessages(1));
    EXPECT_TRUE(waitFor(broker, State::Running));
    EXPECT_EQ(broker.problem(), QString());
}

TEST_F(LocalBrokerTest, ServesFromAPathWithBlanks)
{
    QTemporaryDir parent;
    const QString runtime = parent.filePath(QStringLiteral("Application Support"));
    ASSERT_TRUE(QDir().mkpath(runtime));
    ASSERT_EQ(::chmod(QFile::encodeName(runtime).constData(), 0700), 0);
    qputenv("XDG_RUNTIME_DIR", QFile::encodeName(runtime));
    LocalBroker broker;

    broker.start(address());

    EXPECT_TRUE(waitFor(broker, State::Running));
    RecordingEndPoint client;
    EXPECT_TRUE(client.join(address()));
}

TEST_F(LocalBrokerTest, StartsTheBrokerAgainWhenItDies)
{
    LocalBroker broker;
    broker.start(address());
    ASSERT_TRUE(waitFor(broker, State::Running));
    RecordingEndPoint receiver;
    receiver.subscribe("screen", "TradeNotify");
    ASSERT_TRUE(receiver.join(address()));
    const auto first = static_cast<pid_t>(broker.processId());

    const int readyBefore = receiver.readyCount;
    ::kill(first, SIGKILL);

    ASSERT_TRUE(waitUntil([&] { return receiver.readyCount > readyBefore; }));
    ASSERT_TRUE(waitFor(broker, State::Running));
    EXPECT_NE(broker.processId(), first);
    RecordingEndPoint sender;
    ASSERT_TRUE(sender.join(address()));
    sender.sendMessage("screen", "TradeNotify", "dealt");
    EXPECT_TRUE(receiver.waitForMessages(1));
}

TEST_F(LocalBrokerTest, EndsTheBrokerWhenItStops)
{
    LocalBroker broker;
    broker.start(address());
    ASSERT_TRUE(waitFor(broker, State::Running));
    const auto process = static_cast<pid_t>(broker.processId());

    broker.stop();

    EXPECT_FALSE(isAlive(process));
    EXPECT_EQ(broker.state(), State::Stopped);
    EXPECT_FALSE(QFileInfo::exists(socketPath()));
}

TEST_F(LocalBrokerTest, EndsABrokerThatHangs)
{
    LocalBroker broker;
    broker.start(address());
    ASSERT_TRUE(waitFor(broker, State::Running));
    const auto process = static_cast<pid_t>(broker.processId());
    ::kill(process, SIGSTOP);

    broker.stop();

    EXPECT_FALSE(isAlive(process));
}

TEST_F(LocalBrokerTest, ReplacesABrokerThatHangs)
{
    const LogCapture log;
    LocalBroker broker;
    broker.start(address());
    ASSERT_TRUE(waitFor(broker, State::Running));
    const auto hanging = static_cast<pid_t>(broker.processId());
    QString told;
    QObject::connect(&broker, &LocalBroker::stateChanged, &broker, [&](State state) {
        if (state == State::Failed) {
            told = broker.problem();
        }
    });

    ::kill(hanging, SIGSTOP);

    ASSERT_TRUE(waitUntil([&] { return broker.state() != State::Running; }, 10s));
    EXPECT_TRUE(log.has(QStringLiteral("does not answer"))) << qPrintable(log.text());
    EXPECT_TRUE(waitFor(broker, State::Running));
    EXPECT_FALSE(isAlive(hanging));
    EXPECT_TRUE(told.contains(QStringLiteral("did not answer"))) << qPrintable(told);
}

TEST_F(LocalBrokerTest, StaysStoppedWhenItIsStoppedWhileItTellsOfItsState)
{
    for (const State told : {State::Starting, State::Running}) {
        LocalBroker broker;
        QObject::connect(&broker, &LocalBroker::stateChanged, &broker, [&](State state) {
            if (state == told) {
                broker.stop();
            }
        });

        broker.start(address());

        ASSERT_TRUE(waitFor(broker, State::Stopped));
        EXPECT_EQ(broker.processId(), 0);
        LocalBroker other; // has the directory to itself
        other.start(address());
        EXPECT_TRUE(waitFor(other, State::Running));
        EXPECT_EQ(broker.state(), State::Stopped);
    }
}

TEST_F(LocalBrokerTest, StaysStoppedWhenItIsStoppedWhileItTellsOfADeath)
{
    const LogCapture log;
    LocalBroker broker;
    broker.start(address());
    ASSERT_TRUE(waitFor(broker, State::Running));
    QObject::connect(&broker, &LocalBroker::stateChanged, &broker, [&](State state) {
        if (state == State::Starting) {
            broker.stop();
        }
    });

    ::kill(static_cast<pid_t>(broker.processId()), SIGKILL);

    ASSERT_TRUE(waitFor(broker, State::Stopped));
    LocalBroker other;
    other.start(address());
    EXPECT_TRUE(waitFor(other, State::Running));
    EXPECT_EQ(broker.state(), State::Stopped);
}

TEST_F(LocalBrokerTest, ServesTheLastDirectoryThatItWasGivenThoughThatWasWhileItStopped)
{
    const QTemporaryDir second;
    LocalBroker broker;
    broker.start(address());
    ASSERT_TRUE(waitFor(broker, State::Running));
    int starts = 0;
    QObject::connect(&broker, &LocalBroker::stateChanged, &broker, [&](State) {
        if (starts++ == 0) {
            broker.start(address());
        }
    });

    broker.start(second.path());

    ASSERT_TRUE(waitFor(broker, State::Running));
    RecordingEndPoint client;
    EXPECT_TRUE(client.join(address()));
}

TEST_F(LocalBrokerTest, StartsNothingWhenTheBusIsElsewhere)
{
    writeEndPointIni("[bus]\nurl=mqtts://bus.example:8883\n");
    LocalBroker broker;

    broker.start(address());

    EXPECT_EQ(broker.state(), State::Elsewhere);
    EXPECT_EQ(broker.processId(), 0);
}

TEST_F(LocalBrokerTest, TellsWhatIsWrongWithTheAddress)
{
    const LogCapture log;
    writeEndPointIni("[bus]\nurl=http://bus.example\n");
    LocalBroker broker;

    broker.start(address());

    EXPECT_EQ(broker.state(), State::Failed);
    EXPECT_TRUE(broker.problem().contains(QLatin1String("bus/url"))) << qPrintable(broker.problem());
}

TEST_F(LocalBrokerTest, TellsWhenThePathIsTooLong)
{
    const LogCapture log;
    QTemporaryDir parent;
    const QString deep = parent.filePath(QString(90, QLatin1Char('d')));
    ASSERT_TRUE(QDir().mkpath(deep));
    ASSERT_EQ(::chmod(QFile::encodeName(deep).constData(), 0700), 0);
    qputenv("XDG_RUNTIME_DIR", QFile::encodeName(deep));
    LocalBroker broker;

    broker.start(address());

    EXPECT_EQ(broker.state(), State::Failed);
    EXPECT_TRUE(broker.problem().contains(QLatin1String("XDG_RUNTIME_DIR"))) << qPrintable(broker.problem());
}

TEST_F(LocalBrokerTest, TellsWhenTheProgramIsMissing)
{
    const LogCapture log;
    LocalBroker broker;
    broker.setProgram(QStringLiteral("/nowhere/mosquitto"));

    broker.start(address());

    ASSERT_TRUE(waitFor(broker, State::Failed));
    EXPECT_TRUE(broker.problem().contains(QLatin1String("/nowhere/mosquitto")))
        << qPrintable(broker.problem());
    EXPECT_TRUE(log.has(broker.problem()));
}

TEST_F(LocalBrokerTest, TellsWhenTheProgramEndsAtOnce)
{
    const LogCapture log;
    LocalBroker broker;
    broker.setProgram(QStandardPaths::findExecutable(QStringLiteral("false")));

    broker.start(address());

    ASSERT_TRUE(waitFor(broker, State::Failed));
    EXPECT_TRUE(broker.problem().contains(QLatin1String("does not start"))) << qPrintable(broker.problem());
}

TEST_F(LocalBrokerTest, TellsWhenItsLockCannotBeUsed)
{
    const LogCapture log;
    ASSERT_EQ(::mkdir(QFile::encodeName(busDirectory()).constData(), 0700), 0);
    const QString lock = busDirectory() + QStringLiteral("/broker.lock");
    ASSERT_TRUE(QDir().mkdir(lock));
    LocalBroker broker;

    broker.start(address());

    ASSERT_EQ(broker.state(), State::Failed);
    EXPECT_TRUE(broker.problem().contains(QLatin1String("broker.lock"))) << qPrintable(broker.problem());
    EXPECT_TRUE(log.has(broker.problem()));
    ASSERT_TRUE(QDir().rmdir(lock));
    EXPECT_TRUE(waitFor(broker, State::Running));
}

TEST_F(LocalBrokerTest, NamesTheProgramThatCannotBeStarted)
{
    const LogCapture log;
    LocalBroker broker;
    {
        const FewDescriptors few(4); // enough for its files, not for the pipes of a process
        broker.start(address());
    }

    ASSERT_EQ(broker.state(), State::Failed);
    EXPECT_TRUE(broker.problem().contains(QLatin1String("mosquitto' cannot be started")))
        << qPrintable(broker.problem());
    EXPECT_TRUE(waitFor(broker, State::Running));
}
