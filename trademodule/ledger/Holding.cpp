#include "trademodule/ledger/Holding.h"

#include <algorithm>

namespace TradeModule {

void Holding::add(const Execution &execution)
{
    switch (execution.side) {
    case Side::Buy:
    case Side::Allotment:
    case Side::In:
        m_quantity += execution.quantity;
        m_cost += (execution.amount + execution.fee).yuan();
        return;
    case Side::Bonus:
        m_quantity += execution.quantity;
        return;
    case Side::Merger:
        merge(execution.quantity);
        return;
    case Side::Sell:
    case Side::Out:
        sell(execution.quantity);
        return;
    }
}

void Holding::sell(qint64 quantity)
{
    const qint64 sold = std::min(quantity, m_quantity);
    m_unexplained += quantity - sold;
    const qint64 left = m_quantity - sold;
    m_cost = left == 0 ? 0.0 : m_cost * static_cast<double>(left) / static_cast<double>(m_quantity);
    m_quantity = left;
}

void Holding::merge(qint64 quantity)
{
    const qint64 vanished = std::min(quantity, m_quantity);
    m_unexplained += quantity - vanished;
    m_quantity -= vanished;
    m_cost = m_quantity == 0 ? 0.0 : m_cost;
}

std::optional<double> Holding::costPrice() const
{
    if (m_quantity == 0) {
        return std::nullopt;
    }
    return m_cost / static_cast<double>(m_quantity);
}

} // namespace TradeModule
