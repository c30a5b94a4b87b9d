#include "terminal/services/TradeServices.h"

#include "endpoint/BusAddress.h"
#include "terminal/services/BrokerProblem.h"
#include "terminal/services/ModuleWatch.h"

#include <QSysInfo>

#include <utility>

namespace Terminal {

using LocalCommunication::LocalBroker;

TradeServices::TradeServices(ServicePlan plan) : m_plan(std::move(plan))
{
    connect(&m_broker, &LocalBroker::stateChanged, this, &TradeServices::handleBrokerState);
}

TradeServices::~TradeServices() = default;

void TradeServices::start()
{
    const auto bus = LocalCommunication::BusAddress::ofDirectory(m_plan.busAddress);
    if (bus.isPlainOverNetwork()) {
        Q_EMIT warned(
            tr("The bus %1 is not encrypted: everybody on the way to it can read the account and place "
               "orders.")
                .arg(bus.toString()));
    }
    if (m_plan.startsBroker) {
        m_broker.start(m_plan.busAddress);
    } else {
        startModule();
    }
}

void TradeServices::replaceWhenSilent(const ModuleWatch *watch)
{
    connect(watch, &ModuleWatch::changed, this, [this, watch] {
        const std::optional<Trading::TradePresence> presence = watch->presence();
        if (watch->state() == ModuleWatch::State::Silent && presence && isOwn(*presence)) {
            m_module->replace();
        }
    });
}

/// Another window's module is that one's to replace.
bool TradeServices::isOwn(const Trading::TradePresence &presence) const
{
    return m_module && presence.host == QSysInfo::machineHostName() &&
           presence.process == m_module->processId();
}

void TradeServices::handleBrokerState(LocalBroker::State state)
{
    if (state == LocalBroker::State::Failed) {
        Q_EMIT busFailed(brokerProblemText(m_broker.problem()));
    }
    if (state != LocalBroker::State::Starting && state != LocalBroker::State::Stopped) {
        startModule(); // a broker that failed is tried, too: another program may run one
    }
}

/// After the broker: a client that finds none writes a warning.
void TradeServices::startModule()
{
    if (m_isReady) {
        return;
    }
    m_isReady = true;
    if (!m_plan.ledger.isEmpty()) {
        m_module = std::make_unique<TradeModuleProcess>(m_plan.moduleProgram, m_plan.ledger,
                                                        m_plan.busAddress, m_plan.language, nullptr);
        connect(m_module.get(), &TradeModuleProcess::failed, this, &TradeServices::moduleFailed);
        m_module->start();
        Q_EMIT moduleStarted();
    }
    Q_EMIT ready();
}

} // namespace Terminal
