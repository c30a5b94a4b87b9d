#include "trading/Presence.h"

#include "trading/ModuleVocabulary.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace Trading {

using namespace PresenceFields;

namespace {

QString key(const char *word)
{
    return QLatin1String(word);
}

QStringList textsOf(const QJsonArray &array)
{
    QStringList texts;
    for (const QJsonValue &value : array) {
        if (value.isString()) {
            texts.append(value.toString());
        }
    }
    return texts;
}

/// Zero for what is no number, and for numbers that no whole number of ours can be.
qint64 numberOf(const QJsonValue &value)
{
    constexpr double most = 9007199254740992.0; // JSON's numbers are exact up to here
    const double number = value.toDouble();
    return number >= 0 && number <= most ? static_cast<qint64>(number) : 0;
}

QDateTime timeOf(const QJsonValue &value)
{
    return QDateTime::fromString(value.toString(), Qt::ISODate).toUTC();
}

} // namespace

QString TradePresence::account() const
{
    const bool isFile = ledger.startsWith(QLatin1Char('/'));
    return isFile ? host + ledger : ledger;
}

TradePresence TradePresence::ended() const
{
    TradePresence offline;
    offline.instance = instance;
    offline.fence = fence;
    return offline;
}

QByteArray TradePresence::toJson() const
{
    QJsonObject object{{key(INSTANCE), instance}, {key(ONLINE), isOnline}, {key(FENCE), fence}};
    if (isOnline) {
        object.insert(key(VERSION), version);
        object.insert(key(PROTOCOL), protocol);
        object.insert(key(CAN), QJsonArray::fromStringList(can));
        object.insert(key(HOST), host);
        object.insert(key(PROCESS), process);
        object.insert(key(PROCESSSTART), processStart);
        object.insert(key(SINCE), since.toUTC().toString(Qt::ISODate));
        object.insert(key(READONLY), isReadOnly);
        object.insert(key(LEDGER), ledger);
    }
    return QJsonDocument(object).toJson(QJsonDocument::Compact);
}

std::optional<TradePresence> TradePresence::ofJson(const QByteArray &payload)
{
    const QJsonObject object = QJsonDocument::fromJson(payload).object();
    TradePresence presence;
    presence.instance = object.value(key(INSTANCE)).toString();
    if (presence.instance.isEmpty() || !object.value(key(ONLINE)).isBool()) {
        return std::nullopt;
    }
    presence.isOnline = object.value(key(ONLINE)).toBool();
    presence.fence = numberOf(object.value(key(FENCE)));
    presence.version = object.value(key(VERSION)).toString();
    presence.protocol = object.value(key(PROTOCOL)).toString();
    presence.can = textsOf(object.value(key(CAN)).toArray());
    presence.host = object.value(key(HOST)).toString();
    presence.process = numberOf(object.value(key(PROCESS)));
    presence.processStart = object.value(key(PROCESSSTART)).toString();
    presence.since = timeOf(object.value(key(SINCE)));
    presence.isReadOnly = object.value(key(READONLY)).toBool();
    presence.ledger = object.value(key(LEDGER)).toString();
    return presence;
}

bool replaces(const TradePresence &heard, const std::optional<TradePresence> &known)
{
    if (!known) {
        return true;
    }
    if (!heard.isOnline) {
        return heard.instance == known->instance || (!known->isOnline && heard.fence >= known->fence);
    }
    const bool isSameLedger = known->isOnline && heard.ledger == known->ledger;
    return !isSameLedger || heard.fence >= known->fence;
}

bool isOfAnotherLedger(const TradePresence &own, const TradePresence &heard)
{
    return heard.isOnline && heard.instance != own.instance && !heard.ledger.isEmpty() &&
           heard.account() != own.account();
}

bool isHiddenBy(const TradePresence &own, const TradePresence &heard)
{
    if (heard.fence > own.fence) {
        return false; // our successor
    }
    if (!heard.isOnline) {
        return true;
    }
    return heard.instance != own.instance && (heard.fence < own.fence || heard.instance < own.instance);
}

} // namespace Trading
