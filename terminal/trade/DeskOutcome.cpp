#include "terminal/trade/DeskOutcome.h"

#include "tradechartobject/common/TradeVocabulary.h"
#include "trading/ModuleVocabulary.h"

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

std::optional<Trading::ReplacementState> replacementOf(const QJsonObject &answer)
{
    const QJsonObject data = answer.value(QLatin1String(TradeKeyFields::DATA)).toObject();
    return Trading::replacementStateOf(textOf(data, Trading::ReplaceFields::REPLACEMENT));
}

DeskOutcome replaceOutcomeOf(const QJsonObject &answer)
{
    const QJsonObject data = answer.value(QLatin1String(TradeKeyFields::DATA)).toObject();
    DeskOutcome outcome{DeskOutcome::Kind::Accepted, textOf(data, Trading::ReplaceFields::REASON)};
    outcome.replacement = replacementOf(answer);
    if (outcome.replacement == Trading::ReplacementState::Placed) {
        outcome.text = textOf(data, Trading::ReplaceFields::NEWORDERNO);
    }
    return outcome;
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

bool isUnderWay(const QJsonObject &answer)
{
    return isGranted(answer) && replacementOf(answer) == Trading::ReplacementState::Waiting;
}

bool isWithoutLedger(const QJsonObject &answer)
{
    return !isGranted(answer) &&
           answer.value(QLatin1String(TradeKeyFields::ERRCODE)).toInt() == Trading::ErrorCode::LEDGERFAILED;
}

DeskOutcome outcomeOf(const QJsonObject &answer)
{
    if (isGranted(answer) && replacementOf(answer)) {
        return replaceOutcomeOf(answer);
    }
    return isGranted(answer) ? DeskOutcome{DeskOutcome::Kind::Accepted, grantText(answer)}
                             : DeskOutcome{DeskOutcome::Kind::Refused, refusalOf(answer)};
}

} // namespace Terminal
