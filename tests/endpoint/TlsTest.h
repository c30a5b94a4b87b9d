#pragma once

#include "tests/endpoint/BrokerElsewhere.h"
#include "tests/endpoint/BusTest.h"
#include "tests/support/LogCapture.h"

#include <QProcess>
#include <QStandardPaths>
#include <QTcpSocket>
#include <QTemporaryDir>

#include <vector>

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
        sign("server", "DNS:localhost,IP:127.0.0.1", "2");
        sign("expired", "DNS:localhost,IP:127.0.0.1", "-1");
        sign("elsewhere", "DNS:bus.example.com", "2");
        run({"req", "-x509", "-newkey", "rsa:2048", "-nodes", "-days", "2", "-subj", "/CN=Somebody else",
             "-keyout", "other.key", "-out", "other.pem"});
    }

    QString path(const char *name) const { return m_directory.filePath(QLatin1String(name)); }

private:
    /// A certificate of the server's key for so many days.
    void sign(const char *name, const char *hosts, const char *days)
    {
        const QByteArray file = QByteArray(name) + ".pem";
        writeFile(path("server.ext"), QByteArray("subjectAltName=") + hosts + '\n');
        run({"x509", "-req", "-in", "server.csr", "-CA", "ca.pem", "-CAkey", "ca.key", "-CAcreateserial",
             "-days", days, "-extfile", "server.ext", "-out", file.constData()});
    }

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

/// A broker that wants TLS and a password, with a terminal's directory that points to it.
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
        serve("server.pem");
    }

    /// With this certificate.
    void serve(const char *certificate)
    {
        broker.setConfiguration(
            {QStringLiteral("listener %1 127.0.0.1").arg(m_port),
             QStringLiteral("cafile ") + certificates->path("ca.pem"),
             QStringLiteral("certfile ") + certificates->path(certificate),
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

    inline static Certificates *certificates = nullptr;
    TestBroker broker{TestBroker::Begin::NotStarted};

private:
    QTemporaryDir m_directory;
    int m_port = 0;
};
