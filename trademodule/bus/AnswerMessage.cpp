#include "trademodule/bus/AnswerMessage.h"

#include "tradechartobject/common/TradeVocabulary.h"
#include "trademodule/bus/TradeRequest.h"
#include "trading/ModuleVocabulary.h"

#include <QJsonDocument>

namespace TradeModule {

using namespace TradeChart::TradeKeyFields;

const QLatin1String AnswerMessage::noCost("nan");

AnswerMessage::AnswerMessage(const TradeRequest &request)
{
    for (const char *const echoed : {CMD, STKCODE, SCREENID, OBJECTID, Trading::PlaceFields::CLIENTNO}) {
        if (!request.field(echoed).isUndefined()) {
            set(echoed, request.field(echoed));
        }
    }
    const auto market = marketOfLetters(request.field(MARKET).toString());
    set(MARKET, market ? marketNumber(*market) : QStringLiteral(""));
    set(SUCCESS, true);
    set(ERRCODE, NoError);
    set(MSG, QStringLiteral(""));
}

void AnswerMessage::set(const char *key, const QJsonValue &value)
{
    m_envelope[QLatin1String(key)] = value;
}

void AnswerMessage::set(const Content &content)
{
    for (auto field = content.fields.begin(); field != content.fields.end(); ++field) {
        m_envelope[field.key()] = field.value();
    }
    m_rows = content.rows;
}

void AnswerMessage::fail(ErrorCode code, const QString &reason)
{
    m_rows.clear();
    m_envelope.remove(QLatin1String(DATA));
    set(SUCCESS, false);
    set(ERRCODE, code);
    set(MSG, reason);
    if (m_envelope[QLatin1String(CMD)] == QLatin1String(TradeChart::CmdType::HOLDERCOSTPRICE)) {
        set(COSTPRICE, noCost);
    }
}

bool AnswerMessage::isFailure() const
{
    return m_envelope[QLatin1String(ERRCODE)].toInt() != NoError;
}

QString AnswerMessage::reason() const
{
    return m_envelope[QLatin1String(MSG)].toString();
}

QByteArray AnswerMessage::toJson() const
{
    QByteArray json = QJsonDocument(m_envelope).toJson(QJsonDocument::Compact);
    if (!m_rows.isEmpty()) {
        const QByteArray opening = ",\"" + QByteArray(DATA) + "\":";
        json.chop(1); // the closing brace
        json.reserve(json.size() + opening.size() + m_rows.size() + 1);
        json.append(opening).append(m_rows).append('}');
    }
    return json;
}

} // namespace TradeModule
