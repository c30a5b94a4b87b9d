#include "trademodule/bus/BusVisit.h"

#include <QEventLoop>
#include <QTimer>

namespace TradeModule {

using LocalCommunication::EndPoint;

namespace {

constexpr std::chrono::seconds longestJoining(3);

} // namespace

bool joinInTime(EndPoint *endPoint, const QString &busDirectory)
{
    QEventLoop loop;
    QObject::connect(endPoint, &EndPoint::ready, &loop, &QEventLoop::quit);
    QTimer::singleShot(longestJoining, &loop, &QEventLoop::quit);
    endPoint->connect(busDirectory);
    if (!endPoint->isConnected()) {
        loop.exec();
    }
    return endPoint->isConnected();
}

} // namespace TradeModule
