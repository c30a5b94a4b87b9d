#include "trademodule/ledger/ServerProbe.h"

#include "tests/support/WaitUntil.h"

#include <gtest/gtest.h>

#include <QLocalServer>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTemporaryDir>

namespace TradeModule {

namespace {

/// A server on this machine that may answer the first thing it is told.
class Server
{
public:
    Server()
    {
        QObject::connect(&m_server, &QTcpServer::newConnection, &m_server, [this] {
            QTcpSocket *const client = m_server.nextPendingConnection();
            ++connections;
            QObject::connect(client, &QTcpSocket::readyRead, client, [this, client] {
                heard += client->readAll();
                client->write(answer);
            });
        });
        m_server.listen(QHostAddress::LocalHost);
    }

    PostgreSqlAddress address() const
    {
        return PostgreSqlAddress(
            QStringLiteral("postgresql://trader@127.0.0.1:%1/account").arg(m_server.serverPort()));
    }

    void close() { m_server.close(); }

    QByteArray answer = "N"; ///< "no TLS", as PostgreSQL says it; empty: it says nothing
    QByteArray heard;
    int connections = 0;

private:
    QTcpServer m_server;
};

} // namespace

TEST(ServerProbe, HearsAServerOnTheNetworkOnce)
{
    Server server;
    ServerProbe probe(server.address());

    EXPECT_FALSE(probe.hasAnswered()) << "nobody was asked yet";
    EXPECT_TRUE(waitUntil([&] { return probe.hasAnswered(); }));
    EXPECT_EQ(server.heard, QByteArray("\x00\x00\x00\x08\x04\xd2\x16\x2f", 8));
    EXPECT_FALSE(probe.hasAnswered()) << "it is asked anew";
}

TEST(ServerProbe, TakesTheWillingnessToSpeakTlsForAnAnswer)
{
    Server server;
    server.answer = "S";
    ServerProbe probe(server.address());

    EXPECT_TRUE(waitUntil([&] { return probe.hasAnswered(); }));
}

TEST(ServerProbe, DoesNotTakeAConnectionForAnAnswer)
{
    Server server;
    server.answer.clear();
    ServerProbe probe(server.address());

    EXPECT_FALSE(probe.hasAnswered());
    ASSERT_TRUE(waitUntil([&] { return !server.heard.isEmpty(); }));
    EXPECT_FALSE(probe.hasAnswered());
    EXPECT_FALSE(probe.hasAnswered());
    EXPECT_EQ(server.connections, 1) << "the first question is still open";
}

TEST(ServerProbe, AsksAgainWhereNothingListened)
{
    Server away;
    const PostgreSqlAddress address = away.address();
    away.close();
    ServerProbe probe(address);
    EXPECT_FALSE(probe.hasAnswered());
    EXPECT_FALSE(waitUntil([&] { return probe.hasAnswered(); }, std::chrono::milliseconds(100)));

    QTcpServer back;
    QObject::connect(&back, &QTcpServer::newConnection, &back,
                     [&back] { back.nextPendingConnection()->write("N"); });
    ASSERT_TRUE(back.listen(QHostAddress::LocalHost, static_cast<quint16>(address.port())));
    EXPECT_TRUE(waitUntil([&] { return probe.hasAnswered(); }));
}

TEST(ServerProbe, HearsAServerOnASocketOfThisMachine)
{
    const QTemporaryDir directory;
    QLocalServer server;
    QObject::connect(&server, &QLocalServer::newConnection, &server,
                     [&server] { server.nextPendingConnection()->write("N"); });
    ASSERT_TRUE(server.listen(directory.filePath(QStringLiteral(".s.PGSQL.5432"))));
    ServerProbe probe(
        PostgreSqlAddress(QStringLiteral("postgresql:///account?host=%1").arg(directory.path())));

    EXPECT_TRUE(waitUntil([&] { return probe.hasAnswered(); }));
}

} // namespace TradeModule
