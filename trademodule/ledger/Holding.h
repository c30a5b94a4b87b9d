#pragma once

#include "trademodule/ledger/Execution.h"
#include "trademodule/results/HeldShares.h"

#include <optional>

namespace TradeModule {

/// What an entry of the ledger does to the shares that are held.
AccountEvent eventOf(const Execution &execution);

/// How much of a security is held and at what cost, by the ledger's method, over the holding that is open;
/// fees are part of the cost. Bonus shares dilute it, a merger of shares raises it, and a holding of nothing
/// forgets it.
class Holding
{
public:
    explicit Holding(CostMethod method = CostMethod::Average) : m_shares(method) {}
    /// One whose numbers were kept: see HeldShares::restored().
    Holding(CostMethod method, qint64 quantity, double cost, qint64 unexplained)
        : m_shares(HeldShares::restored(method, quantity, cost, unexplained))
    {
    }

    /// Takes the next entry, in order of time. A sell of more than is held leaves nothing and adds to
    /// unexplained().
    void add(const Execution &execution) { add(eventOf(execution)); }
    void add(const AccountEvent &event) { m_shares.apply(event); }

    CostMethod method() const { return m_shares.method(); }
    qint64 quantity() const { return m_shares.quantity(); }
    /// Yuan that what is held cost.
    double cost() const { return m_shares.basis().exactCost(); }
    /// Yuan per share; nothing when nothing is held.
    std::optional<double> costPrice() const { return m_shares.basis().costPrice(); }
    /// Shares sold that were never seen to come in: earlier statements are missing.
    qint64 unexplained() const { return m_shares.unexplained(); }

private:
    HeldShares m_shares;
};

} // namespace TradeModule
