#include "tradechartobject/common/OverlayQuestion.h"

#include "tradechartobject/common/Security.h"
#include "tradechartobject/common/TradeVocabulary.h"

#include <QLatin1String>
#include <QString>

namespace TradeChart {

QJsonObject securityRequest(const char *command, const Korvane::tagCodeWithName &security)
{
    return {{QLatin1String(TradeKeyFields::CMD), QLatin1String(command)},
            {QLatin1String(TradeKeyFields::STKCODE), securityCode(security)},
            {QLatin1String(TradeKeyFields::MARKET), marketCode(security)}};
}

QJsonObject screenRequest(const char *command, const Korvane::tagCodeWithName &security,
                          Korvane::IChartAxis &axis)
{
    QJsonObject request = securityRequest(command, security);
    request.insert(QLatin1String(TradeKeyFields::SCREENID), QString::fromUtf8(axis.screenId()));
    return request;
}

QByteArray toJson(const QJsonObject &request, QJsonDocument::JsonFormat format)
{
    return QJsonDocument(request).toJson(format);
}

} // namespace TradeChart
