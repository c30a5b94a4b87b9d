#include "terminal/trade/DeskOutcome.h"

#include "tradechartobject/common/TradeVocabulary.h"

#include <QJsonArray>

namespace Terminal {

namespace {

using namespace TradeChart;

QString textOf(const QJsonObject &object, const char *key)
{
    return object.value(QLatin1String(key)).toString();
}

/// The number of a new order, or words.
QString grantText(const QJsonObject &answer)
{
    const QJsonValue data = answer.value(QLatin1String(TradeKeyFields::DATA));
    return data.isArray() ? textOf(data.toArray().first().toObject(), TradeKeyFields::MSGOK)
                          : textOf(data.toObject(), TradeKeyFields::RTSORDERNO);
}

} // namespace

bool isGranted(const QJsonObject &answer)
{
    return answer.value(QLatin1String(TradeKeyFields::SUCCESS)).toBool();
}

QString refusalOf(const QJsonObject &answer)
{
    const QString reason = isGranted(answer) ? QString() : textOf(answer, TradeKeyFields::MSG);
    return isGranted(answer) || !reason.isEmpty() ? reason : QStringLiteral("?");
}

DeskOutcome outcomeOf(const QJsonObject &answer)
{
    return isGranted(answer) ? DeskOutcome{DeskOutcome::Kind::Accepted, grantText(answer)}
                             : DeskOutcome{DeskOutcome::Kind::Refused, refusalOf(answer)};
}

} // namespace Terminal
