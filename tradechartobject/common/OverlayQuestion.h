// The questions of the overlays, as flat JSON objects.
#pragma once

#include "tradechartobject/ChartInterface.h"

#include <QByteArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace TradeChart {

/// {"cmd","stkcode","market"}: what every question about a security carries.
QJsonObject securityRequest(const char *command, const Korvane::tagCodeWithName &security);

/// The same with "screenId", so that the answer finds its way to the chart's screen.
QJsonObject screenRequest(const char *command, const Korvane::tagCodeWithName &security,
                          Korvane::IChartAxis &axis);

/// JSON text of a question; most travel compact.
QByteArray toJson(const QJsonObject &request, QJsonDocument::JsonFormat format = QJsonDocument::Compact);

} // namespace TradeChart
