#include "trademodule/bus/TradeNotifier.h"

#include "endpoint/EndPoint.h"
#include "tradechartobject/common/TradeVocabulary.h"
#include "trading/ModuleVocabulary.h"

#include <QEventLoop>
#include <QJsonDocument>
#include <QTimer>

namespace TradeModule {

namespace {

constexpr std::chrono::seconds longestJoining(3);

bool join(LocalCommunication::EndPoint *endPoint, const QString &busDirectory)
{
    QEventLoop loop;
    QObject::connect(endPoint, &LocalCommunication::EndPoint::ready, &loop, &QEventLoop::quit);
    QTimer::singleShot(longestJoining, &loop, &QEventLoop::quit);
    endPoint->connect(busDirectory);
    if (!endPoint->isConnected()) {
        loop.exec();
    }
    return endPoint->isConnected();
}

} // namespace

bool notifyCharts(const QString &busDirectory, const QVector<QJsonObject> &notifications)
{
    LocalCommunication::EndPoint endPoint(nullptr);
    if (!join(&endPoint, busDirectory)) {
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
