#include "endpoint/LocalBroker.h"

#include "endpoint/BusAddress.h"
#include "endpoint/DirectoryLock_p.h"
#include "tests/endpoint/BusTest.h"
#include "tests/support/LogCapture.h"

#include <gmock/gmock.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <csignal>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

using LocalCommunication::BusAddress;
using LocalCommunication::DirectoryLock;
using LocalCommunication::LocalBroker;
using State = LocalCommunication::LocalBroker::State;

namespace {

/// A terminal's directory and a runtime directory of its own.
class LocalBrokerTest : public ::testing::Test
{
protected:
    void SetUp() override { qputenv("XDG_RUNTIME_DIR", QFile::encodeName(m_runtime.path())); }
    void TearDown() override { qputenv("XDG_RUNTIME_DIR", m_runtimeBefore); }

    QString address() const { return m_terminal.path(); }
    QString socketPath() const { return BusAddress::ofDirectory(address()).socketPath; }
    QString busDirectory() const { return QFileInfo(socketPath()).path(); }

    static bool waitFor(const LocalBroker &broker, State state)
    {
        return waitUntil([&] { return broker.state() == state; });
    }

    void writeEndPointIni(const QByteArray &text)
    {
        QFile file(m_terminal.filePath(QStringLiteral("endpoint.ini")));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
    }

private:
    const QByteArray m_runtimeBefore = qgetenv("XDG_RUNTIME_DIR");
    QTemporaryDir m_terminal;
    QTemporaryDir m_runtime;
};

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

/// A socket that another user listens on: it is the listener's user that counts, not the file's. Only
/// root can make one.
class SocketOfNobody
{
public:
    explicit SocketOfNobody(const QString &path) : m_descriptor(::socket(AF_UNIX, SOCK_STREAM, 0))
    {
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        QFile::encodeName(path).toStdString().copy(address.sun_path, sizeof address.sun_path - 1);
        EXPECT_EQ(::bind(m_descriptor, reinterpret_cast<const sockaddr *>(&address), sizeof address), 0);
        EXPECT_EQ(::seteuid(65534), 0);
        EXPECT_EQ(::listen(m_descriptor, 5), 0);
        EXPECT_EQ(::seteuid(0), 0);
    }
    ~SocketOfNobody() { ::close(m_descriptor); }
    Q_DISABLE_COPY_MOVE(SocketOfNobody)

private:
    const int m_descriptor;
};

/// False also for a process whose parent has not picked up its end yet.
bool isAlive(pid_t process)
{
    QProcess ps;
    ps.start(QStringLiteral("ps"),
             {QStringLiteral("-o"), QStringLiteral("stat="), QStringLiteral("-p"), QString::number(process)});
    ps.waitForFinished();
    const QByteArray state = ps.readAll().trimmed();
    return !state.isEmpty() && !state.startsWith('Z');
}

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

TEST_F(LocalBrokerTest, KeepsItsDirectoryToItsUser)
{
    LocalBroker broker;
    broker.start(address());
    ASSERT_TRUE(waitFor(broker, State::Running));

    struct stat status = {};
    ASSERT_EQ(::stat(QFile::encodeName(busDirectory()).constData(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0700);
    EXPECT_EQ(status.st_uid, ::geteuid());
}

TEST_F(LocalBrokerTest, LetsNoOtherUserOfTheMachineIn)
{
    const QString setpriv = QStandardPaths::findExecutable(QStringLiteral("setpriv"));
    const QString client = QStandardPaths::findExecutable(QStringLiteral("mosquitto_pub"));
    if (::geteuid() != 0 || setpriv.isEmpty() || client.isEmpty()) {
        GTEST_SKIP() << "only root with setpriv and mosquitto_pub can act as another user";
    }
    LocalBroker broker;
    broker.start(address());
    ASSERT_TRUE(waitFor(broker, State::Running));
    const QString socket = socketPath();
    const QString runtime = QFileInfo(busDirectory()).path();
    ASSERT_EQ(::chmod(QFile::encodeName(runtime).constData(), 0755), 0); // what is left is the bus directory
    const QStringList publish{client,
                              QStringLiteral("--unix"),
                              socket,
                              QStringLiteral("-V"),
                              QStringLiteral("5"),
                              QStringLiteral("-t"),
                              QStringLiteral("Global/TradeNotify"),
                              QStringLiteral("-m"),
                              QStringLiteral("forged")};
    const QStringList asOwner = publish.mid(1);
    const QStringList asNobody =
        QStringList{QStringLiteral("--reuid=nobody"), QStringLiteral("--regid=nogroup"),
                    QStringLiteral("--clear-groups")} +
        publish;

    EXPECT_EQ(QProcess::execute(client, asOwner), 0);
    EXPECT_NE(QProcess::execute(setpriv, asNobody), 0);
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

TEST_F(LocalBrokerTest, UsesTheBrokerOfAnotherTerminalAndReplacesItWhenItEnds)
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

TEST_F(LocalBrokerTest, NeverServesADirectoryTwiceHoweverManyStartAtOnce)
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

TEST_F(LocalBrokerTest, EndsTheBrokerOfATerminalThatCrashesAndServesInItsPlace)
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

TEST_F(LocalBrokerTest, LeavesNoBrokerOfACrashedTerminalThatCanNotEndByItself)
{
    OtherTerminal other(address());
    const pid_t orphan = other.brokerId();
    ASSERT_NE(orphan, 0);
    ::kill(orphan, SIGSTOP);

    other.kill();

    EXPECT_TRUE(waitUntil([&] { return !isAlive(orphan); }));
}

TEST_F(LocalBrokerTest, WaitsForTheEndOfABrokerThatNoLongerAnswers)
{
    ASSERT_EQ(::mkdir(QFile::encodeName(busDirectory()).constData(), 0700), 0);
    DirectoryLock ending;
    ASSERT_TRUE(ending.tryAcquire(busDirectory() + QStringLiteral("/broker.lock")));

    LocalBroker broker;
    broker.start(address());
    EXPECT_FALSE(waitUntil([&] { return broker.processId() != 0; }, 1000));
    ending.release();

    EXPECT_TRUE(waitFor(broker, State::Running));
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

TEST_F(LocalBrokerTest, RefusesALinkInPlaceOfItsDirectory)
{
    const LogCapture log;
    QTemporaryDir target;
    ASSERT_TRUE(QFile::link(target.path(), busDirectory()));
    LocalBroker broker;

    broker.start(address());

    EXPECT_EQ(broker.state(), State::Failed);
    EXPECT_TRUE(broker.problem().contains(QLatin1String("link"))) << qPrintable(broker.problem());
    EXPECT_TRUE(QDir(target.path()).isEmpty());
}

TEST_F(LocalBrokerTest, RefusesADirectoryThatOthersMayEnter)
{
    const LogCapture log;
    ASSERT_TRUE(QDir().mkpath(busDirectory()));
    ASSERT_EQ(::chmod(QFile::encodeName(busDirectory()).constData(), 0770), 0);
    LocalBroker broker;

    broker.start(address());

    EXPECT_EQ(broker.state(), State::Failed);
    EXPECT_TRUE(broker.problem().contains(QLatin1String("chmod 700"))) << qPrintable(broker.problem());
}

TEST_F(LocalBrokerTest, RefusesADirectoryOfAnotherUser)
{
    if (::geteuid() != 0) {
        GTEST_SKIP() << "only root can give a directory away";
    }
    const LogCapture log;
    ASSERT_TRUE(QDir().mkpath(busDirectory()));
    ASSERT_EQ(::chmod(QFile::encodeName(busDirectory()).constData(), 0700), 0);
    ASSERT_EQ(::chown(QFile::encodeName(busDirectory()).constData(), 65534, 65534), 0);
    LocalBroker broker;

    broker.start(address());

    EXPECT_EQ(broker.state(), State::Failed);
    EXPECT_TRUE(broker.problem().contains(QLatin1String("another user"))) << qPrintable(broker.problem());
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

// The client's side of the same rules: whoever can put a socket in our place could read the account.

TEST_F(LocalBrokerTest, IsNotJoinedThroughALink)
{
    const LogCapture log;
    TestBroker impostor;
    ASSERT_TRUE(QFile::link(QFileInfo(impostor.socketPath()).path(), busDirectory()));
    RecordingEndPoint client;

    client.connect(address());

    EXPECT_FALSE(client.sendMessage("c", "t", "p"));
    EXPECT_TRUE(log.has(QStringLiteral("link"))) << qPrintable(log.text());
}

TEST_F(LocalBrokerTest, IsNotJoinedInADirectoryThatOthersMayEnter)
{
    const LogCapture log;
    LocalBroker broker;
    broker.start(address());
    ASSERT_TRUE(waitFor(broker, State::Running));
    ASSERT_EQ(::chmod(QFile::encodeName(busDirectory()).constData(), 0720), 0);
    RecordingEndPoint client;

    client.connect(address());

    EXPECT_FALSE(client.sendMessage("c", "t", "p"));
    EXPECT_TRUE(log.has(QStringLiteral("chmod 700"))) << qPrintable(log.text());
}

TEST_F(LocalBrokerTest, IsNotJoinedWhenItRunsAsAnotherUser)
{
    if (::geteuid() != 0) {
        GTEST_SKIP() << "only root can run a program as another user";
    }
    const LogCapture log;
    ASSERT_TRUE(QDir().mkpath(busDirectory()));
    ASSERT_EQ(::chmod(QFile::encodeName(busDirectory()).constData(), 0700), 0);
    const SocketOfNobody impostor(socketPath());
    RecordingEndPoint client;

    client.connect(address());

    EXPECT_FALSE(client.sendMessage("c", "t", "p"));
    EXPECT_TRUE(log.has(QStringLiteral("belongs to another user"))) << qPrintable(log.text());
}
