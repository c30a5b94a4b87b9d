// A bus beyond this machine: TCP, TLS and passwords, here on the loopback interface.

#include "tests/endpoint/BusTest.h"
#include "tests/support/LogCapture.h"

#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTemporaryDir>

namespace {

void writeFile(const QString &path, const QByteArray &text)
{
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate)) << qPrintable(path);
    file.write(text);
}

int freePort()
{
    QTcpServer probe;
    probe.listen(QHostAddress::LocalHost);
    return probe.serverPort();
}

/// A certificate authority and a server certificate of the test's own.
class Certificates
{
public:
    Certificates()
    {
        run({"req", "-x509", "-newkey", "rsa:2048", "-nodes", "-days", "2", "-subj", "/CN=Test authority",
             "-keyout", "ca.key", "-out", "ca.pem"});
        run({"req", "-newkey", "rsa:2048", "-nodes", "-subj", "/CN=localhost", "-keyout", "server.key",
             "-out", "server.csr"});
        writeFile(path("server.ext"), "subjectAltName=DNS:localhost,IP:127.0.0.1\n");
        run({"x509", "-req", "-in", "server.csr", "-CA", "ca.pem", "-CAkey", "ca.key", "-CAcreateserial",
             "-days", "2", "-extfile", "server.ext", "-out", "server.pem"});
        run({"req", "-x509", "-newkey", "rsa:2048", "-nodes", "-days", "2", "-subj", "/CN=Somebody else",
             "-keyout", "other.key", "-out", "other.pem"});
    }

    QString path(const char *name) const { return m_directory.filePath(QLatin1String(name)); }

private:
    void run(const std::vector<const char *> &arguments)
    {
        QStringList list;
        for (const char *argument : arguments) {
            list.append(QLatin1String(argument));
        }
        QProcess openssl;
        openssl.setWorkingDirectory(m_directory.path());
        openssl.start(QStringLiteral("openssl"), list);
        ASSERT_TRUE(openssl.waitForFinished(60000));
        ASSERT_EQ(openssl.exitCode(), 0) << openssl.readAllStandardError().constData();
    }

    QTemporaryDir m_directory;
};

class Tls : public ::testing::Test
{
protected:
    static void SetUpTestSuite()
    {
        for (const char *program : {"openssl", "mosquitto_passwd"}) {
            if (QStandardPaths::findExecutable(QLatin1String(program)).isEmpty()) {
                return;
            }
        }
        certificates = new Certificates;
    }
    static void TearDownTestSuite()
    {
        delete certificates;
        certificates = nullptr;
    }

    void SetUp() override
    {
        if (!certificates) {
            GTEST_SKIP() << "openssl and mosquitto_passwd are needed";
        }
        ASSERT_EQ(QProcess::execute(QStringLiteral("mosquitto_passwd"),
                                    {QStringLiteral("-b"), QStringLiteral("-c"), file("users"),
                                     QStringLiteral("trader"), QStringLiteral("secret")}),
                  0);
        writeFile(file("acl"), "user trader\ntopic readwrite desk7/#\n");
        writeFile(file("password"), "secret\n");
        writeFile(file("wrong-password"), "guess\n");
        m_port = freePort();
        broker.setConfiguration(
            {QStringLiteral("listener %1 127.0.0.1").arg(m_port),
             QStringLiteral("cafile ") + certificates->path("ca.pem"),
             QStringLiteral("certfile ") + certificates->path("server.pem"),
             QStringLiteral("keyfile ") + certificates->path("server.key"),
             QStringLiteral("allow_anonymous false"), QStringLiteral("password_file ") + file("users"),
             QStringLiteral("acl_file ") + file("acl"), QStringLiteral("set_tcp_nodelay true"),
             QStringLiteral("max_packet_size 268435455")});
        broker.start();
        ASSERT_TRUE(
            waitUntil([this] { return takesConnections(); })); // this listener opens after the local one
    }

    bool takesConnections() const
    {
        QTcpSocket probe;
        probe.connectToHost(QStringLiteral("127.0.0.1"), static_cast<quint16>(m_port));
        return probe.waitForConnected(1000);
    }

    /// Writes the endpoint.ini of a terminal; returns its directory.
    QString address(const QString &host, const QString &password, const QString &authority)
    {
        writeFile(file("endpoint.ini"),
                  QStringLiteral("[bus]\nurl=mqtts://%1:%2\nprefix=desk7\nusername=trader\n"
                                 "password_file=%3\nca_file=%4\n")
                      .arg(host)
                      .arg(m_port)
                      .arg(password, authority)
                      .toUtf8());
        return m_directory.path();
    }
    QString goodAddress(const QString &host = QStringLiteral("127.0.0.1"))
    {
        return address(host, QStringLiteral("password"), certificates->path("ca.pem"));
    }

    QString file(const char *name) const { return m_directory.filePath(QLatin1String(name)); }

    static Certificates *certificates;
    TestBroker broker{TestBroker::Begin::NotStarted};

private:
    QTemporaryDir m_directory;
    int m_port = 0;
};

Certificates *Tls::certificates = nullptr;

} // namespace

TEST_F(Tls, CarriesMessagesAndRequests)
{
    RecordingEndPoint receiver;
    RecordingEndPoint sender;
    receiver.subscribe("c", "t");
    ASSERT_TRUE(receiver.join(goodAddress()));
    ASSERT_TRUE(sender.join(goodAddress()));
    const BackgroundResponder module(goodAddress(), "TradeQuery");

    EXPECT_TRUE(sender.sendMessage("c", "t", "p"));
    EXPECT_TRUE(receiver.waitForMessages(1));
    sender.setRequestTimeout(20000);
    EXPECT_EQ(sender.request("TradeQuery", "x"), "answer to x");
}

TEST_F(Tls, SendsWhatWasHandedOverBeforeTheBrokerAccepted)
{
    RecordingEndPoint receiver;
    receiver.subscribe("c", "t");
    ASSERT_TRUE(receiver.join(goodAddress()));
    RecordingEndPoint sender;
    sender.connect(goodAddress());

    EXPECT_TRUE(sender.sendMessage("c", "t", "first"));
    EXPECT_TRUE(sender.sendMessage("c", "t", "second"));

    ASSERT_TRUE(receiver.waitForMessages(2));
    EXPECT_THAT(receiver.payloads(), ::testing::ElementsAre("first", "second"));
}

TEST_F(Tls, BringsAnAnswerRightAfterConnecting)
{
    const BackgroundResponder module(goodAddress(), "TradeQuery");
    RecordingEndPoint asker;
    asker.setRequestTimeout(20000);
    asker.connect(goodAddress());
    asker.subscribe("c", "t");

    EXPECT_EQ(asker.request("TradeQuery", "at once"), "answer to at once");

    EXPECT_TRUE(waitUntil([&] { return asker.readyCount == 1; }));
}

TEST_F(Tls, CarriesTenMegabytes)
{
    const QByteArray payload(10 * 1024 * 1024, 'x');
    RecordingEndPoint receiver;
    RecordingEndPoint sender;
    receiver.subscribe("c", "t");
    ASSERT_TRUE(receiver.join(goodAddress()));
    ASSERT_TRUE(sender.join(goodAddress()));

    EXPECT_TRUE(sender.sendMessage("c", "t", payload));

    ASSERT_TRUE(receiver.waitForMessages(1));
    EXPECT_TRUE(receiver.messages[0].payload == payload);
}

TEST_F(Tls, CarriesAFloodInOrder)
{
    constexpr int Count = 2000;
    RecordingEndPoint receiver;
    RecordingEndPoint sender;
    receiver.subscribe("c", "t");
    ASSERT_TRUE(receiver.join(goodAddress()));
    ASSERT_TRUE(sender.join(goodAddress()));
    QList<QByteArray> sent;
    for (int i = 0; i < Count; ++i) {
        sent.append(QByteArray::number(i));
        ASSERT_TRUE(sender.sendMessage("c", "t", sent.last()));
    }

    ASSERT_TRUE(receiver.waitForMessages(Count));
    EXPECT_EQ(receiver.payloads(), sent);
}

TEST_F(Tls, ResolvesTheNameOfTheBroker)
{
    RecordingEndPoint endPoint;
    EXPECT_TRUE(endPoint.join(goodAddress(QStringLiteral("localhost"))));
}

TEST_F(Tls, JoinsAgainAfterACrash)
{
    const LogCapture log;
    RecordingEndPoint endPoint;
    ASSERT_TRUE(endPoint.join(goodAddress()));

    broker.kill();
    ASSERT_TRUE(waitUntil([&] { return !endPoint.isConnected(); }));
    broker.start();

    EXPECT_TRUE(waitUntil([&] { return endPoint.readyCount == 2; }));
}

TEST_F(Tls, LetsNobodyInWithAWrongPassword)
{
    const LogCapture log;
    RecordingEndPoint endPoint;
    endPoint.connect(
        address(QStringLiteral("127.0.0.1"), QStringLiteral("wrong-password"), certificates->path("ca.pem")));

    EXPECT_TRUE(waitUntil([&] { return log.has(QStringLiteral("the broker refuses this client")); }))
        << qPrintable(log.text());
    EXPECT_FALSE(endPoint.isConnected());
    EXPECT_EQ(log.lines().size(), 1) << qPrintable(log.text());
    EXPECT_FALSE(log.has(QStringLiteral("guess")));
}

TEST_F(Tls, TrustsNoBrokerOfAnotherAuthority)
{
    const LogCapture log;
    RecordingEndPoint endPoint;
    endPoint.connect(
        address(QStringLiteral("127.0.0.1"), QStringLiteral("password"), certificates->path("other.pem")));

    EXPECT_TRUE(waitUntil([&] { return log.has(QStringLiteral("trying again")); }));
    EXPECT_EQ(endPoint.readyCount, 0);
    EXPECT_FALSE(endPoint.isConnected());
}

TEST_F(Tls, TellsWhenNobodyTakesConnections)
{
    const LogCapture log;
    broker.kill();
    RecordingEndPoint endPoint;
    endPoint.connect(goodAddress());

    const auto isTold = [&] {
        return log.has(QStringLiteral("refused")) || log.has(QStringLiteral("nobody takes connections"));
    };
    EXPECT_TRUE(waitUntil(isTold, 5000)) << qPrintable(log.text()); // sooner than a broker that hangs
}

TEST_F(Tls, TellsWhenTheNameIsUnknown)
{
    const LogCapture log;
    RecordingEndPoint endPoint;
    endPoint.connect(goodAddress(QStringLiteral("no-such-host.invalid")));

    EXPECT_TRUE(waitUntil([&] { return log.has(QStringLiteral("no-such-host.invalid")); }));
    EXPECT_FALSE(endPoint.isConnected());
}

TEST(Tcp, IsJoinedByNumberAndByEveryAddressOfAName)
{
    const LogCapture log;
    QTemporaryDir terminal;
    const int port = freePort();
    TestBroker broker(TestBroker::Begin::NotStarted);
    broker.setConfiguration(
        {QStringLiteral("listener %1 127.0.0.1").arg(port), QStringLiteral("allow_anonymous true")});
    broker.start();

    for (const char *host : {"127.0.0.1", "localhost"}) { // which may be ::1 first
        writeFile(terminal.filePath(QStringLiteral("endpoint.ini")),
                  QStringLiteral("[bus]\nurl=mqtt://%1:%2\n").arg(QLatin1String(host)).arg(port).toUtf8());
        RecordingEndPoint endPoint;
        EXPECT_TRUE(endPoint.join(terminal.path())) << host;
    }
}

TEST(Tcp, TellsWhenNobodyTakesConnections)
{
    const LogCapture log;
    QTemporaryDir terminal;
    writeFile(terminal.filePath(QStringLiteral("endpoint.ini")),
              QStringLiteral("[bus]\nurl=mqtt://127.0.0.1:%1\n").arg(freePort()).toUtf8());
    RecordingEndPoint endPoint;
    endPoint.connect(terminal.path());

    EXPECT_TRUE(waitUntil([&] { return log.has(QStringLiteral("trying again")); }, 5000));
    EXPECT_FALSE(endPoint.isConnected());
}
