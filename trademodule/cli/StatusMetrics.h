#pragma once

#include "trademodule/bus/StatusQuestion.h"

#include <QByteArray>
#include <QString>

namespace TradeModule {

/// How things stand on a bus in the text format of Prometheus. `bus` is the label that tells several apart.
QByteArray metricsOf(const BusStatus &found, const QString &bus);

/// Writes them where a collector reads files: it finds the old ones or the new ones, never a part. An Error
/// when they cannot be written.
void writeMetrics(const QString &path, const QByteArray &metrics);

} // namespace TradeModule
