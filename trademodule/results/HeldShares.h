#pragma once

#include "trademodule/results/AccountEvent.h"
#include "trademodule/results/CostBasis.h"

namespace TradeModule {

/// The shares of one security that are held, and what an event does to them.
class HeldShares
{
public:
    /// What left with an event.
    struct Left
    {
        qint64 explained = 0; ///< shares that are known to have come in
        Money proceeds{};     ///< of a sale: what they brought after the fee
        Money cost{};         ///< what they had cost
    };

    explicit HeldShares(CostMethod method) : m_method(method), m_basis(method) {}
    /// What was kept in numbers goes on, but for CostMethod::Fifo, which must know each buy.
    static HeldShares restored(CostMethod method, qint64 quantity, double exactCost, qint64 unexplained);

    /// Takes the next event, in order of time. Of more shares than are held all leave, and the others add to
    /// unexplained().
    Left apply(const AccountEvent &event);

    CostMethod method() const { return m_method; }
    qint64 quantity() const { return m_basis.quantity(); }
    const CostBasis &basis() const { return m_basis; }
    /// Shares that left and never came in: earlier statements are missing.
    qint64 unexplained() const { return m_unexplained; }

private:
    Left sell(const AccountEvent &event);
    qint64 explained(qint64 quantity);

    CostMethod m_method;
    CostBasis m_basis;
    qint64 m_unexplained = 0;
};

} // namespace TradeModule
