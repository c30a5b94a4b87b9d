#include "trademodule/ledger/ServerProbe.h"

#include <chrono>

namespace TradeModule {

namespace {

constexpr std::chrono::seconds longestAnswer(5);

/// "May I speak TLS?", which a server answers with one letter before it wants to know who asks.
const QByteArray greeting = QByteArrayLiteral("\x00\x00\x00\x08\x04\xd2\x16\x2f");

} // namespace

ServerProbe::ServerProbe(PostgreSqlAddress address) : m_address(std::move(address))
{
    QObject::connect(&m_tcp, &QTcpSocket::connected, &m_tcp, [this] { greet(&m_tcp); });
    QObject::connect(&m_tcp, &QTcpSocket::readyRead, &m_tcp, [this] { end(true); });
    QObject::connect(&m_tcp, &QTcpSocket::errorOccurred, &m_tcp, [this] { end(false); });
    QObject::connect(&m_local, &QLocalSocket::connected, &m_local, [this] { greet(&m_local); });
    QObject::connect(&m_local, &QLocalSocket::readyRead, &m_local, [this] { end(true); });
    QObject::connect(&m_local, &QLocalSocket::errorOccurred, &m_local, [this] { end(false); });
    m_patience.setSingleShot(true);
    QObject::connect(&m_patience, &QTimer::timeout, &m_patience, [this] { end(false); });
}

bool ServerProbe::hasAnswered()
{
    if (m_hasAnswered || m_address.host().isEmpty()) { // nobody but the server's library knows where it is
        m_hasAnswered = false;
        return true;
    }
    if (!m_patience.isActive()) {
        ask();
    }
    return false;
}

void ServerProbe::ask()
{
    m_patience.start(longestAnswer);
    if (m_address.isUnixSocket()) {
        m_local.connectToServer(QStringLiteral("%1/.s.PGSQL.%2").arg(m_address.host()).arg(m_address.port()));
    } else {
        m_tcp.connectToHost(m_address.host(), static_cast<quint16>(m_address.port()));
    }
}

void ServerProbe::greet(QIODevice *connection)
{
    connection->write(greeting);
}

void ServerProbe::end(bool hasAnswered)
{
    if (!m_patience.isActive()) {
        return;
    }
    m_patience.stop();
    m_hasAnswered = hasAnswered;
    m_tcp.abort();
    m_local.abort();
}

} // namespace TradeModule
