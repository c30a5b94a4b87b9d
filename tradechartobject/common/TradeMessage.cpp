#include "tradechartobject/common/TradeMessage.h"

#include "tradechartobject/common/Security.h"
#include "tradechartobject/common/TradeVocabulary.h"

#include <QJsonDocument>
#include <QLatin1String>

#include <algorithm>
#include <cstddef>
#include <string_view>
#include <utility>

namespace TradeChart {

TradeMessage::TradeMessage(Fields fields) : m_fields(std::move(fields)) {}

bool TradeMessage::mayBeCommand(const QByteArray &payload, std::initializer_list<const char *> commands)
{
    const std::string_view text(payload.constData(), static_cast<std::size_t>(payload.size()));
    const auto isIn = [text](std::string_view word) { return text.find(word) != std::string_view::npos; };
    return std::any_of(commands.begin(), commands.end(), isIn) ||
           isIn("\\"); // words may be written in escapes
}

std::optional<TradeMessage> TradeMessage::parse(const QByteArray &payload)
{
    auto message = parseReply(payload);
    const auto *const fields = message ? std::get_if<QJsonObject>(&message->m_fields) : nullptr;
    return fields != nullptr && fields->isEmpty() ? std::nullopt : message;
}

std::optional<TradeMessage> TradeMessage::parseReply(const QByteArray &payload)
{
    if (auto flat = FlatMessage::read(payload)) {
        return TradeMessage(*std::move(flat));
    }
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
    return std::visit([key](const auto &fields) { return fields.value(QLatin1String(key)).toString(); },
                      m_fields);
}

bool TradeMessage::isTrue(const char *key) const
{
    return std::visit([key](const auto &fields) { return fields.value(QLatin1String(key)).toBool(); },
                      m_fields);
}

AnswerRows TradeMessage::rows() const
{
    const auto *const flat = std::get_if<FlatMessage>(&m_fields);
    return flat != nullptr
               ? AnswerRows(flat->rows())
               : AnswerRows(
                     std::get<QJsonObject>(m_fields).value(QLatin1String(TradeKeyFields::DATA)).toArray());
}

TradeMessage TradeMessage::record() const
{
    const auto *const fields =
        std::get_if<QJsonObject>(&m_fields); // a FlatMessage has no objects but in rows
    return TradeMessage(fields != nullptr ? fields->value(QLatin1String(TradeKeyFields::DATA)).toObject()
                                          : QJsonObject());
}

bool TradeMessage::has(const char *key) const
{
    return std::visit([key](const auto &fields) { return fields.contains(QLatin1String(key)); }, m_fields);
}

} // namespace TradeChart
