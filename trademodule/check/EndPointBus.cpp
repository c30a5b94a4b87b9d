#include "trademodule/check/EndPointBus.h"

#include <QDeadlineTimer>
#include <QEventLoop>
#include <QTimer>

namespace TradeModule {

EndPointBus::EndPointBus(std::chrono::milliseconds patience) : m_patience(patience)
{
    m_endPoint.setRequestTimeout(patience);
    QObject::connect(&m_endPoint, &LocalCommunication::EndPoint::messageReceived, this,
                     [this](const QByteArray &topic, const QByteArray &payload, const QByteArray &channel) {
                         if (m_hear) {
                             m_hear({channel, topic, payload});
                         }
                     });
}

bool EndPointBus::join(const QString &directory)
{
    m_endPoint.connect(directory);
    return hearUntil([this] { return m_endPoint.isConnected(); }, m_patience);
}

void EndPointBus::listen(const QByteArray &channel, const QByteArray &topic)
{
    m_endPoint.subscribe(channel, topic);
}

void EndPointBus::say(const QByteArray &channel, const QByteArray &topic, const QByteArray &payload)
{
    m_endPoint.sendMessage(channel, topic, payload);
}

QByteArray EndPointBus::request(const QByteArray &topic, const QByteArray &payload)
{
    return m_endPoint.request(topic, payload);
}

/// The timer ends a wait in which nothing comes.
bool EndPointBus::hearUntil(const std::function<bool()> &condition, std::chrono::milliseconds patience)
{
    const QDeadlineTimer deadline(patience);
    QEventLoop loop;
    QTimer wake;
    wake.start(std::chrono::milliseconds(10));
    while (!condition()) {
        if (deadline.hasExpired()) {
            return false;
        }
        loop.processEvents(QEventLoop::WaitForMoreEvents);
    }
    return true;
}

} // namespace TradeModule
