// The connection of the product's bus client, to the broker of a simulated world in the place of a real one.
#include "endpoint/MqttConnection_p.h"
#include "tests/world/SimulatedBus.h"

#include <QUuid>

/// What the MQTT library would keep of a connection.
struct mosquitto
{
    QByteArray clientId;
    std::optional<LocalCommunication::BusMessage> will;
    int socket = -1;
    int packets = 0;
};

namespace LocalCommunication {

using World::SimulatedBus;

void MqttConnection::HandleDeleter::operator()(mosquitto *handle) const
{
    SimulatedBus::instance()->close(handle->socket);
    delete handle;
}

MqttConnection::MqttConnection(BusAddress address, const QByteArray &clientId,
                               const std::optional<BusMessage> &will)
    : m_address(std::move(address)),
      m_handle(new mosquitto{clientId, will})
{
}

MqttConnection::~MqttConnection() = default;

MqttConnection::Opened MqttConnection::open(const QByteArray & /*host*/)
{
    m_handle->socket = SimulatedBus::instance()->open(m_handle->clientId, m_handle->will);
    if (m_handle->socket < 0) {
        m_error = QStringLiteral("nobody listens there");
        return Opened::Failed;
    }
    return Opened::UnderWay;
}

bool MqttConnection::leave()
{
    return SimulatedBus::instance()->leave(m_handle->socket);
}

int MqttConnection::descriptor() const
{
    return m_handle->socket;
}

bool MqttConnection::wantsToWrite() const
{
    return false;
}

bool MqttConnection::read()
{
    auto packets = SimulatedBus::instance()->take(m_handle->socket);
    if (!packets) {
        m_error = QStringLiteral("The connection was lost");
        return false;
    }
    for (SimulatedBus::Packet &packet : *packets) {
        switch (packet.kind) {
        case SimulatedBus::Packet::Greeting:
            m_accepted = true;
            break;
        case SimulatedBus::Packet::Subscribed:
            m_subscriptionsUnderWay.remove(packet.number);
            break;
        case SimulatedBus::Packet::Kept:
            ++m_sentCount;
            m_receipts.push_back(QString());
            break;
        case SimulatedBus::Packet::Message:
            m_received.push_back(std::move(packet.message));
            break;
        }
    }
    return true;
}

bool MqttConnection::write()
{
    return true;
}

bool MqttConnection::keepAlive()
{
    return true;
}

bool MqttConnection::subscribe(const QVector<QByteArray> &paths)
{
    const int packet = ++m_handle->packets;
    m_subscriptionsUnderWay.insert(packet, paths);
    SimulatedBus::instance()->subscribe(m_handle->socket, packet, paths);
    return true;
}

bool MqttConnection::publish(const BusMessage &message)
{
    const bool isTaken = SimulatedBus::instance()->publish(m_handle->socket, ++m_handle->packets, message);
    m_sentCount += isTaken && !message.isRetained ? 1 : 0;
    m_error = isTaken ? m_error : QStringLiteral("The connection was lost");
    return isTaken;
}

/// Every program of a world is on its one bus.
BusAddress BusAddress::ofDirectory(const QString & /*directory*/)
{
    BusAddress address;
    address.socketPath = QStringLiteral("/world/bus.sock");
    return address;
}

bool BusAddress::isPlainOverNetwork() const
{
    return false;
}

QString BusAddress::toString() const
{
    return QStringLiteral("unix://") + socketPath;
}

} // namespace LocalCommunication
