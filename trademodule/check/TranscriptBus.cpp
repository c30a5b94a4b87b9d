#include "trademodule/check/TranscriptBus.h"

#include <QJsonDocument>
#include <QJsonObject>

namespace TradeModule {

void TranscriptBus::setListener(const Hear &hear)
{
    m_bus->setListener([this, hear](const HeardMessage &message) {
        write("module", message.channel, message.payload);
        hear(message);
    });
}

void TranscriptBus::say(const QByteArray &channel, const QByteArray &topic, const QByteArray &payload)
{
    write("check", channel, payload);
    m_bus->say(channel, topic, payload);
}

QByteArray TranscriptBus::request(const QByteArray &topic, const QByteArray &payload)
{
    write("check", {}, payload);
    const QByteArray answer = m_bus->request(topic, payload);
    if (!answer.isEmpty()) {
        write("module", {}, answer);
    }
    return answer;
}

void TranscriptBus::write(const char *from, const QByteArray &channel, const QByteArray &payload)
{
    const QJsonDocument message = QJsonDocument::fromJson(payload);
    const QJsonObject line{{QStringLiteral("from"), QLatin1String(from)},
                           {QStringLiteral("channel"), QString::fromUtf8(channel)},
                           {QStringLiteral("payload"),
                            message.isObject() ? QJsonValue(message.object()) : QString::fromUtf8(payload)}};
    m_out->write(QJsonDocument(line).toJson(QJsonDocument::Compact) + '\n');
}

} // namespace TradeModule
