#pragma once

#include "trademodule/SharedTypes.h"

namespace TradeModule {

/// Shares that have one cost per share, and money for that cost of which no cent gets lost: what leaves with
/// sold shares and what stays always add up to what was put in.
///
/// The cost per share is a ratio and is never rounded. What leaves is in whole cents: the difference of what
/// stays in the books before and after. So a rounding never adds to the one before, and the last share takes
/// the rest.
class Lot
{
public:
    Lot() = default;
    Lot(qint64 quantity, Money cost);
    /// One whose unrounded cost, in yuan, was kept.
    static Lot restored(qint64 quantity, double cost);

    void add(qint64 quantity, Money cost);
    /// Other shares for the same cost.
    void resize(qint64 quantity) { m_quantity = quantity; }
    /// Shares leave for a cost that is known.
    void remove(qint64 quantity, Money cost);
    /// Shares leave with their part of the cost, which is given back. At most quantity().
    Money take(qint64 quantity);

    qint64 quantity() const { return m_quantity; }
    Money cost() const { return m_cost; }
    /// Unrounded, in yuan.
    double exactCost() const { return m_exactSteps / static_cast<double>(Money::stepsPerYuan); }

private:
    qint64 m_quantity = 0;
    Money m_cost{};
    double m_exactSteps =
        0; // steps rather than yuan: those that were put in are whole, so that a half is a half
};

} // namespace TradeModule
