#pragma once

#include <QJsonObject>
#include <QString>
#include <QVector>

namespace TradeModule {

/// Publishes notifications to every chart on the bus instance of `busDirectory` and returns when they are
/// on their way. False, and nothing was told, without a bus.
bool notifyCharts(const QString &busDirectory, const QVector<QJsonObject> &notifications);

} // namespace TradeModule
