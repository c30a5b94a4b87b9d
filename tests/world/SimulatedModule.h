#pragma once

#include "tests/world/SimulatedTime.h"
#include "trademodule/bus/TradeService.h"
#include "trademodule/ledger/Ledger.h"
#include "trademodule/ledger/ServingLease.h"

#include <QTimer>

#include <memory>

namespace World {

/// A trading module as a program of a world: it serves a ledger as `trademodule serve --standby` does, from
/// the moment when nobody else does.
class SimulatedModule
{
public:
    SimulatedModule(SimulatedTime *time, const QString &ledger);

    /// False for one that stands by.
    bool isServing() const { return m_service != nullptr; }
    /// True when another one serves the ledger in its place: it has ended.
    bool isOutrun() const { return m_isOutrun; }
    Process process() const { return m_process; }

private:
    void standBy();
    void serve();
    void beat();

    const Process m_process;
    TradeModule::Ledger m_ledger;
    TradeModule::ServingLease m_lease;
    std::unique_ptr<TradeModule::TradeService> m_service;
    QTimer m_standby;
    QTimer m_heart;
    bool m_isOutrun = false;
};

} // namespace World
