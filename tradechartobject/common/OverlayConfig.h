// The configuration text of an overlay, as the host hands it over.
#pragma once

#include <QJsonObject>

namespace TradeChart {

/// The type of a configuration that names none.
constexpr int noAlgorithmType = -1;

/// The JSON object of the text; an empty one when the text is null or anything else.
QJsonObject parseConfig(const char *json);

/// The integer "type", which names what to draw; noAlgorithmType when it is missing or no integer.
int readAlgorithmType(const QJsonObject &config);

} // namespace TradeChart
