#pragma once

#include "trademodule/results/CostMethod.h"
#include "trademodule/results/Lot.h"

#include <deque>
#include <optional>

namespace TradeModule {

/// The shares of one security that are held and what they have cost, by one method. What comes in, less what
/// left with sold and other shares, is always cost(), to the cent.
///
/// The moving average is one lot that takes in everything; first in, first out keeps a lot for each buy; the
/// diluted cost is one lot from which a sale takes what it brought.
class CostBasis
{
public:
    explicit CostBasis(CostMethod method) : m_method(method) {}
    /// One whose quantity and exactCost() were kept: for the methods that have but one lot.
    static CostBasis restored(CostMethod method, qint64 quantity, double exactCost);

    void add(qint64 quantity, Money cost);
    /// Shares come for nothing: each lot grows in proportion.
    void enlarge(qint64 quantity);
    /// Shares vanish for nothing: each lot shrinks in proportion. At most quantity(); with the last share the
    /// cost leaves, and is given back.
    Money shrink(qint64 quantity);
    /// What the sold shares have cost. At most quantity(). By the diluted cost it is what they brought, so
    /// that a sale earns nothing, until the last one takes the rest.
    Money sell(qint64 quantity, Money proceeds);
    /// Shares leave without being sold; their cost is given back. At most quantity().
    Money leave(qint64 quantity);
    /// Money that the holding brought, less taxes: lowers the diluted cost while something is held.
    void earn(Money money);

    qint64 quantity() const { return m_quantity; }
    /// What the shares have cost; without earn().
    Money cost() const;
    /// Unrounded, in yuan, and with earn(): what is shown, and kept in ledgers.
    double exactCost() const;
    /// exactCost() of a share, in yuan; nothing when nothing is held.
    std::optional<double> costPrice() const;

private:
    void rescale(qint64 quantity);
    void forgetIfEmpty();

    CostMethod m_method;
    std::deque<Lot> m_lots; ///< those with shares, oldest first
    qint64 m_quantity = 0;
    Money m_earned{};
};

} // namespace TradeModule
