#include "terminal/services/SharedChannel.h"

#include "tradechartobject/common/TradeVocabulary.h"
#include "trading/ModuleVocabulary.h"

#include <QJsonDocument>
#include <QJsonObject>

namespace Terminal {

using namespace TradeChart;

SharedNews readSharedNews(const QByteArray &topic, const QByteArray &payload)
{
    const QJsonObject message = QJsonDocument::fromJson(payload).object();
    const QJsonValue rows = message.value(QLatin1String(TradeKeyFields::DATA));
    const bool isHistory =
        message.value(QLatin1String(TradeKeyFields::CMD)).toString() == QLatin1String(CmdType::HISTORYTRADE);
    SharedNews news;
    news.code = message.value(QLatin1String(TradeKeyFields::STKCODE)).toString();
    if (topic == Topic::TRADENOTIFY || (isHistory && !rows.isUndefined())) {
        news.kind = SharedNews::Data;
    } else if (isHistory && message.contains(QLatin1String(TradeKeyFields::SCREENID))) {
        // Their own questions name no screen, and are followed by the answer.
        news.kind = SharedNews::Spoilt;
    }
    return news;
}

SharedChannel::SharedChannel(QObject *parent) : QObject(parent), m_endPoint(nullptr)
{
    connect(&m_endPoint, &LocalCommunication::EndPoint::messageReceived, this,
            [this](const QByteArray &topic, const QByteArray &payload) {
                const SharedNews news = readSharedNews(topic, payload);
                if (news.kind != SharedNews::None) {
                    Q_EMIT heard(news);
                }
            });
}

void SharedChannel::start(const QString &address)
{
    m_endPoint.subscribe(Trading::Channel::GLOBAL, QList<QByteArray>{Topic::TRADENOTIFY, Topic::TRADEQUERY});
    m_endPoint.connect(address);
}

} // namespace Terminal
