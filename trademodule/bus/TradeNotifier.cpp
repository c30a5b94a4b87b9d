#include "trademodule/bus/TradeNotifier.h"

#include "endpoint/EndPoint.h"
#include "tradechartobject/common/TradeVocabulary.h"
#include "trademodule/bus/BusNames.h"
#include "trademodule/bus/TradeAnswers.h"

#include <QEventLoop>
#include <QJsonDocument>
#include <QTimer>

#include <algorithm>

namespace TradeModule {

namespace {

constexpr int JoinTimeoutMs = 3000;

bool join(LocalCommunication::EndPoint *endPoint, const QString &busDirectory)
{
    QEventLoop loop;
    QObject::connect(endPoint, &LocalCommunication::EndPoint::ready, &loop, &QEventLoop::quit);
    QTimer::singleShot(JoinTimeoutMs, &loop, &QEventLoop::quit);
    endPoint->connect(busDirectory);
    if (!endPoint->isConnected()) {
        loop.exec();
    }
    return endPoint->isConnected();
}

} // namespace

bool notifyCharts(const QString &busDirectory, const QVector<Execution> &newest)
{
    LocalCommunication::EndPoint endPoint(nullptr);
    if (!join(&endPoint, busDirectory)) {
        return false;
    }
    const bool isSent = std::all_of(newest.begin(), newest.end(), [&endPoint](const Execution &execution) {
        return endPoint.sendMessage(
            globalChannel(), QByteArray(TradeChart::Topic::TRADENOTIFY),
            QJsonDocument(tradeNotification(execution)).toJson(QJsonDocument::Compact));
    });
    endPoint.disconnect(); // writes out what is still on its way
    return isSent;
}

} // namespace TradeModule
