#include "endpoint/BrokerProbe_p.h"

namespace LocalCommunication {

namespace {

constexpr int mostOpenQuestions = 3;

/// The packets of MQTT 5 in their shortest form: a client without a name, and "are you there?". Whatever the
/// broker says is an answer.
const QByteArray greeting = QByteArray::fromHex("100d00044d5154540502000000" // protocol, clean start
                                                "0000");                     // no name
const QByteArray question = QByteArray::fromHex("c000");

} // namespace

BrokerProbe::BrokerProbe(std::chrono::milliseconds interval, QObject *parent)
    : QObject(parent),
      m_socket(this),
      m_timer(this)
{
    m_timer.setInterval(interval);
    connect(&m_timer, &QTimer::timeout, this, &BrokerProbe::ask);
    connect(&m_socket, &QLocalSocket::connected, this, [this] { m_socket.write(greeting); });
    connect(&m_socket, &QLocalSocket::readyRead, this, [this] {
        m_socket.readAll();
        m_openQuestions = 0;
    });
}

void BrokerProbe::start(const QString &socketPath)
{
    stop();
    m_socketPath = socketPath;
    m_timer.start();
    ask();
}

void BrokerProbe::stop()
{
    m_timer.stop();
    m_socket.abort();
    m_openQuestions = 0;
}

void BrokerProbe::ask()
{
    if (m_openQuestions == mostOpenQuestions) {
        stop();
        Q_EMIT unanswered();
        return;
    }
    ++m_openQuestions;
    if (m_socket.state() == QLocalSocket::ConnectedState) {
        m_socket.write(question);
    } else if (m_socket.state() == QLocalSocket::UnconnectedState) {
        m_socket.connectToServer(m_socketPath); // the greeting is a question too
    }
}

} // namespace LocalCommunication
