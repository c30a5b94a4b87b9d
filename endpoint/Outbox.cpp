#include "endpoint/Outbox_p.h"

#include <utility>

namespace LocalCommunication {

namespace {

constexpr qint64 maxUnsentBytes = 64 << 20;

/// An MQTT packet has at most 256 MiB, its topic and properties included.
constexpr int maxPayloadBytes = 268'435'455 - 3 * 65'536;

} // namespace

QString Outbox::problemWith(const BusMessage &message) const
{
    if (message.path.isEmpty()) {
        return QStringLiteral("its channel or topic is empty or too long");
    }
    if (message.payload.size() > maxPayloadBytes) {
        return QStringLiteral("it is larger than %1 bytes").arg(maxPayloadBytes);
    }
    if (m_bytes > maxUnsentBytes) {
        return QStringLiteral("the broker does not take messages any more");
    }
    return QString();
}

void Outbox::hold(const BusMessage &message)
{
    m_bytes += message.cost();
    m_held.push_back(message);
}

std::deque<BusMessage> Outbox::takeHeld()
{
    for (const BusMessage &message : m_held) {
        m_bytes -= message.cost();
    }
    return std::exchange(m_held, {});
}

void Outbox::handOver(const BusMessage &message)
{
    m_handedOver.push_back(message.cost());
    m_bytes += m_handedOver.back();
}

void Outbox::noteSent(int count)
{
    for (; count > 0 && !m_handedOver.empty(); --count) {
        m_bytes -= m_handedOver.front();
        m_handedOver.pop_front();
    }
}

void Outbox::clear()
{
    *this = Outbox();
}

} // namespace LocalCommunication
