#include "terminal/ui/ServiceStates.h"

#include "terminal/session/TradingSession.h"

#include <chrono>

namespace Terminal {

namespace {

/// A module that has said nothing by then is not starting any more.
constexpr std::chrono::milliseconds startPatience = std::chrono::seconds(10);

} // namespace

ServiceStates::ServiceStates(TradingSession *session, const QString &ledger)
    : m_session(session),
      m_ledger(ledger)
{
    m_moduleStarts.setSingleShot(true);
    m_moduleStarts.setInterval(startPatience);
    connect(&m_moduleStarts, &QTimer::timeout, this, &ServiceStates::changed);
    connect(m_session->module(), &ModuleWatch::changed, this, &ServiceStates::takeFound);
    connect(m_session, &TradingSession::stageChanged, this, &ServiceStates::changed);
}

BusState ServiceStates::bus() const
{
    if (!m_busFailure.isEmpty()) {
        return {BusState::Failed, m_busFailure};
    }
    return m_session->stage() == TradingSession::Stage::Apart ? BusState{} : busStateOf(*m_session->module());
}

ModuleState ServiceStates::module() const
{
    const TradingSession::Stage stage = m_session->stage();
    if (!m_moduleFailure.isEmpty()) {
        return {ModuleState::Failed, m_moduleFailure};
    }
    if (stage == TradingSession::Stage::Apart) {
        return {ModuleState::Unasked};
    }
    const ModuleState found = moduleStateOf(*m_session->module(), m_ledger);
    const bool isBusFine = m_busFailure.isEmpty() && m_session->module()->bus() != ModuleWatch::Bus::Lost;
    const bool isAbsent = found.kind == ModuleState::Absent || found.kind == ModuleState::NoBus;
    if (!isAbsent || !isBusFine) {
        return found;
    }
    if (m_moduleStarts.isActive()) {
        return {ModuleState::Starting};
    }
    return stage == TradingSession::Stage::Awaiting ? ModuleState{ModuleState::Awaited} : found;
}

void ServiceStates::noteModuleStart()
{
    m_moduleStarts.start();
    Q_EMIT changed();
}

void ServiceStates::noteModuleFailure(const QString &reason)
{
    m_moduleFailure = reason;
    Q_EMIT changed();
}

void ServiceStates::noteBusFailure(const QString &reason)
{
    m_busFailure = reason;
    Q_EMIT changed();
}

void ServiceStates::takeFound()
{
    const ModuleWatch &watch = *m_session->module();
    if (watch.bus() == ModuleWatch::Bus::Joined) {
        m_busFailure.clear();
    }
    if (watch.isAnswering()) {
        m_moduleFailure.clear();
        m_moduleStarts.stop(); // when none is there from now on, it has gone
    }
    Q_EMIT changed();
}

} // namespace Terminal
