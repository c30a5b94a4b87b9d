#include "tradechartobject/common/TradeMessage.h"

#include "tradechartobject/common/Security.h"
#include "tradechartobject/common/TradeVocabulary.h"

#include <QJsonDocument>
#include <QLatin1String>

#include <utility>

namespace TradeChart {

TradeMessage::TradeMessage(QJsonObject fields) : m_fields(std::move(fields)) {}

std::optional<TradeMessage> TradeMessage::parse(const QByteArray &payload)
{
    QJsonObject fields = QJsonDocument::fromJson(payload).object();
    return fields.isEmpty() ? std::nullopt : std::make_optional(TradeMessage(std::move(fields)));
}

std::optional<TradeMessage> TradeMessage::parseReply(const QByteArray &payload)
{
    const QJsonDocument document = QJsonDocument::fromJson(payload);
    return document.isObject() ? std::make_optional(TradeMessage(document.object())) : std::nullopt;
}

bool TradeMessage::isCommand(const char *command) const
{
    return text(TradeKeyFields::CMD) == QLatin1String(command);
}

bool TradeMessage::isAbout(const Korvane::tagCodeWithName &security) const
{
    return securityCode(security).compare(text(TradeKeyFields::STKCODE), Qt::CaseInsensitive) == 0;
}

QString TradeMessage::text(const char *key) const
{
    return m_fields.value(QLatin1String(key)).toString();
}

bool TradeMessage::isTrue(const char *key) const
{
    return m_fields.value(QLatin1String(key)).toBool();
}

QJsonArray TradeMessage::rows() const
{
    return m_fields.value(QLatin1String(TradeKeyFields::DATA)).toArray();
}

TradeMessage TradeMessage::record() const
{
    return TradeMessage(m_fields.value(QLatin1String(TradeKeyFields::DATA)).toObject());
}

bool TradeMessage::has(const char *key) const
{
    return m_fields.contains(QLatin1String(key));
}

} // namespace TradeChart
