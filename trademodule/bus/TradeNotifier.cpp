#include "trademodule/bus/TradeNotifier.h"

#include "tradechartobject/common/TradeVocabulary.h"
#include "trademodule/bus/BusVisit.h"
#include "trading/ModuleVocabulary.h"

#include <QJsonDocument>

namespace TradeModule {

bool notifyCharts(const QString &busDirectory, const QVector<QJsonObject> &notifications)
{
    LocalCommunication::EndPoint endPoint(nullptr);
    if (!joinInTime(&endPoint, busDirectory)) {
        return false;
    }
    bool isSent = true;
    for (const QJsonObject &notification : notifications) {
        isSent = endPoint.sendMessage(Trading::Channel::GLOBAL, TradeChart::Topic::TRADENOTIFY,
                                      QJsonDocument(notification).toJson(QJsonDocument::Compact)) &&
                 isSent;
    }
    endPoint.disconnect(); // writes out what is still on its way
    return isSent;
}

} // namespace TradeModule
