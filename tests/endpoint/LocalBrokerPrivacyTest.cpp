// The bus of a terminal belongs to its user: nobody else gets in, and nobody can take its place.

#include "tests/endpoint/LocalBrokerTest.h"
#include "tests/support/LogCapture.h"

#include <QStandardPaths>

#include <sys/socket.h>
#include <sys/un.h>

namespace {

using LocalBrokerPrivacy = LocalBrokerTest;

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

} // namespace

TEST_F(LocalBrokerPrivacy, KeepsItsDirectoryToItsUser)
{
    LocalBroker broker;
    broker.start(address());
    ASSERT_TRUE(waitFor(broker, State::Running));

    struct stat status = {};
    ASSERT_EQ(::stat(QFile::encodeName(busDirectory()).constData(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0700);
    EXPECT_EQ(status.st_uid, ::geteuid());
}

TEST_F(LocalBrokerPrivacy, LetsNoOtherUserOfTheMachineIn)
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

TEST_F(LocalBrokerPrivacy, RefusesALinkInPlaceOfItsDirectory)
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

TEST_F(LocalBrokerPrivacy, RefusesADirectoryThatOthersMayEnter)
{
    const LogCapture log;
    ASSERT_TRUE(QDir().mkpath(busDirectory()));
    ASSERT_EQ(::chmod(QFile::encodeName(busDirectory()).constData(), 0770), 0);
    LocalBroker broker;

    broker.start(address());

    EXPECT_EQ(broker.state(), State::Failed);
    EXPECT_TRUE(broker.problem().contains(QLatin1String("chmod 700"))) << qPrintable(broker.problem());
}

TEST_F(LocalBrokerPrivacy, RefusesADirectoryOfAnotherUser)
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

// The client's side of the same rules: whoever can put a socket in our place could read the account.

TEST_F(LocalBrokerPrivacy, IsNotJoinedThroughALink)
{
    const LogCapture log;
    TestBroker impostor;
    ASSERT_TRUE(QFile::link(QFileInfo(impostor.socketPath()).path(), busDirectory()));
    RecordingEndPoint client;

    client.connect(address());

    EXPECT_FALSE(client.sendMessage("c", "t", "p"));
    EXPECT_TRUE(log.has(QStringLiteral("link"))) << qPrintable(log.text());
}

TEST_F(LocalBrokerPrivacy, IsNotJoinedInADirectoryThatOthersMayEnter)
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

TEST_F(LocalBrokerPrivacy, IsNotJoinedWhenItRunsAsAnotherUser)
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
