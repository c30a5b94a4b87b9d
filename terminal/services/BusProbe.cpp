#include "terminal/services/BusProbe.h"

#include "endpoint/Readiness.h"

#include <chrono>
#include <utility>

namespace Terminal {

using LocalCommunication::Readiness;

namespace {

constexpr std::chrono::milliseconds longestWait{1500};

} // namespace

Gate busGate(const QString &address)
{
    return [address](QObject *context, std::function<void()> proceed) {
        auto *const probe = new Readiness(context);
        const auto open = [probe, proceed = std::move(proceed)] {
            QObject::disconnect(probe, nullptr, probe, nullptr);
            probe->deleteLater();
            proceed();
        };
        QObject::connect(probe, &Readiness::joined, probe, open);
        QObject::connect(probe, &Readiness::timeIsUp, probe, open);
        probe->start(address, longestWait);
    };
}

} // namespace Terminal
