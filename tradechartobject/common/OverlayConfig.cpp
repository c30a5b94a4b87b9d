#include "tradechartobject/common/OverlayConfig.h"

#include "tradechartobject/common/TradeVocabulary.h"

#include <QJsonDocument>

namespace TradeChart {

QJsonObject parseConfig(const char *json)
{
    return QJsonDocument::fromJson(json).object();
}

int readAlgorithmType(const QJsonObject &config)
{
    return config.value(QLatin1String(TradeKeyFields::ALGORITHMTYPE)).toInt(noAlgorithmType);
}

} // namespace TradeChart
