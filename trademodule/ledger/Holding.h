#pragma once

#include "trademodule/ledger/Execution.h"

#include <optional>

namespace TradeModule {

/// How much of a security is held and at what cost: the moving average of the buys with their fees,
/// over the holding that is open. Shares that came in otherwise at a cost count as buys, those that left as
/// sells. A sell leaves the average as it is, bonus shares dilute it, a merger of shares raises it, and a
/// holding of nothing forgets it.
class Holding
{
public:
    Holding() = default;
    Holding(qint64 quantity, double cost, qint64 unexplained)
        : m_quantity(quantity),
          m_cost(cost),
          m_unexplained(unexplained)
    {
    }

    /// Takes the next entry, in order of time. A sell of more than is held leaves nothing and adds to
    /// unexplained().
    void add(const Execution &execution);

    qint64 quantity() const { return m_quantity; }
    /// Yuan paid for what is held.
    double cost() const { return m_cost; }
    /// Yuan per share; nothing when nothing is held.
    std::optional<double> costPrice() const;
    /// Shares sold that were never seen to come in: earlier statements are missing.
    qint64 unexplained() const { return m_unexplained; }

private:
    void sell(qint64 quantity);
    void merge(qint64 quantity);

    qint64 m_quantity = 0;
    double m_cost = 0;
    qint64 m_unexplained = 0;
};

} // namespace TradeModule
