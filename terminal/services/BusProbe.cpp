#include "terminal/services/BusProbe.h"

#include "endpoint/EndPoint.h"

#include <QTimer>

#include <chrono>
#include <utility>

namespace Terminal {

namespace {

constexpr std::chrono::milliseconds longestWait{1500};

} // namespace

Gate busGate(const QString &address)
{
    return [address](QObject *context, std::function<void()> proceed) {
        auto *const probe = new LocalCommunication::EndPoint(context);
        auto *const timer = new QTimer(probe);
        const auto open = [probe, timer, proceed = std::move(proceed)] {
            QObject::disconnect(probe, &LocalCommunication::EndPoint::ready, timer, nullptr);
            timer->stop();
            probe->deleteLater();
            proceed();
        };
        QObject::connect(probe, &LocalCommunication::EndPoint::ready, timer, open);
        QObject::connect(timer, &QTimer::timeout, timer, open);
        timer->setSingleShot(true);
        timer->start(longestWait);
        probe->connect(address);
    };
}

} // namespace Terminal
