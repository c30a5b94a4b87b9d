#include "trading/MessageCheck.h"

#include "tradechartobject/common/TradeVocabulary.h"

#include <QJsonArray>

namespace Trading {

namespace {

void checkRecord(const MessageKeys &keys, const QJsonObject &record, const QString &way,
                 QVector<KeyFinding> *findings);

/// A row that is no object lacks every key.
void checkInside(const MessageKey &key, const QJsonValue &value, const QString &place,
                 QVector<KeyFinding> *findings)
{
    if (key.type == JsonType::Record) {
        return checkRecord(key.inside->keys, value.toObject(), place + QLatin1Char('/'), findings);
    }
    const QJsonArray rows = value.toArray();
    for (int row = 0; row < rows.size(); ++row) {
        checkRecord(key.inside->keys, rows[row].toObject(), QStringLiteral("%1/%2/").arg(place).arg(row),
                    findings);
    }
}

void checkTexts(const MessageKey &key, const QJsonArray &items, const QString &place,
                QVector<KeyFinding> *findings)
{
    for (const QJsonValue &item : items) {
        if (!item.isString()) {
            findings->append({&key, KeyFault::WrongType, place, item});
        }
    }
}

void checkRecord(const MessageKeys &keys, const QJsonObject &record, const QString &way,
                 QVector<KeyFinding> *findings)
{
    for (const MessageKey &key : keys) {
        const QJsonValue value = record.value(QLatin1String(key.key));
        const QString place = way + QLatin1String(key.key);
        const KeyFault fault = faultOf(key, value);
        if (fault != KeyFault::None) {
            findings->append({&key, fault, place, value});
        } else if (isLeftOut(key, value)) {
            continue; // and so is what it would hold
        } else if (key.inside != nullptr) {
            checkInside(key, value, place, findings);
        } else if (key.type == JsonType::Texts) {
            checkTexts(key, value.toArray(), place, findings);
        }
    }
}

bool isFailure(const MessageRow &message, const QJsonObject &object)
{
    const QJsonValue success = object.value(QLatin1String(TradeChart::TradeKeyFields::SUCCESS));
    return message.role == MessageRole::Answer && success.isBool() && !success.toBool();
}

} // namespace

QVector<KeyFinding> findingsIn(const MessageRow &message, const QJsonObject &object)
{
    QVector<KeyFinding> findings;
    const MessageRow &held = isFailure(message, object) ? *findMessage(MessageRole::Failure) : message;
    checkRecord(held.keys, object, QString(), &findings);
    return findings;
}

} // namespace Trading
