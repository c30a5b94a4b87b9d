#include "tradechartobject/common/BusLink.h"

#include "tradechartobject/common/DebugLog.h"
#include "tradechartobject/common/OverlayQuestion.h"
#include "tradechartobject/common/TradeVocabulary.h"

#include <QCoreApplication>
#include <QDebug>
#include <QList>
#include <QString>

namespace TradeChart::BusLink {

namespace {

constexpr char globalChannel[] = "Global";

} // namespace

void join(LocalCommunication::EndPoint &endPoint)
{
    endPoint.connect(QCoreApplication::applicationDirPath());
}

void subscribeScreen(LocalCommunication::EndPoint &endPoint, Korvane::IChartAxis &axis)
{
    endPoint.subscribe(axis.screenId(), QList<QByteArray>{Topic::TRADENOTIFY, Topic::TRADEQUERY});
    endPoint.subscribe(globalChannel, QByteArray(Topic::TRADENOTIFY));
}

void subscribeGlobal(LocalCommunication::EndPoint &endPoint)
{
    endPoint.subscribe(globalChannel, QList<QByteArray>{Topic::TRADENOTIFY, Topic::TRADEQUERY});
}

void leave(LocalCommunication::EndPoint &endPoint, const QObject *overlay)
{
    // First: a client that still delivers while it leaves would reach an object that is half gone.
    QObject::disconnect(&endPoint, nullptr, overlay, nullptr);
    endPoint.disconnect();
}

bool publish(LocalCommunication::EndPoint &endPoint, const QByteArray &json)
{
    return endPoint.sendMessage(globalChannel, Topic::TRADEQUERY, json);
}

bool send(LocalCommunication::EndPoint &endPoint, const QJsonObject &request, const char *function)
{
    const QByteArray json = toJson(request);
    if (!publish(endPoint, json)) {
        return false;
    }
    logSent(function, json);
    return true;
}

void logSent(const char *function, const QByteArray &json)
{
    if (isDebugLogOn()) {
        qDebug().nospace() << "send " << function << ": " << QString::fromUtf8(json);
    }
}

} // namespace TradeChart::BusLink
