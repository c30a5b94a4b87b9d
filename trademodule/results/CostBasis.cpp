#include "trademodule/results/CostBasis.h"

#include "trademodule/results/CheckedSum.h"

#include <algorithm>
#include <numeric>

namespace TradeModule {

CostBasis CostBasis::restored(CostMethod method, qint64 quantity, double exactCost)
{
    CostBasis basis(method);
    if (quantity > 0) {
        basis.m_lots.push_back(Lot::restored(quantity, exactCost));
        basis.m_quantity = quantity;
    }
    return basis;
}

void CostBasis::add(qint64 quantity, Money cost)
{
    if (m_lots.empty() || m_method == CostMethod::Fifo) {
        m_lots.emplace_back(quantity, cost);
    } else {
        m_lots.front().add(quantity, cost);
    }
    m_quantity = checkedSum(m_quantity, quantity);
}

void CostBasis::enlarge(qint64 quantity)
{
    m_lots.empty() ? add(quantity, Money()) : rescale(checkedSum(m_quantity, quantity));
}

Money CostBasis::shrink(qint64 quantity)
{
    if (quantity == m_quantity) {
        return leave(quantity);
    }
    rescale(m_quantity - quantity);
    return {};
}

Money CostBasis::sell(qint64 quantity, Money proceeds)
{
    if (m_method != CostMethod::Diluted || quantity == m_quantity) {
        return leave(quantity);
    }
    m_lots.front().remove(quantity, proceeds);
    m_quantity -= quantity;
    return proceeds;
}

Money CostBasis::leave(qint64 quantity)
{
    Money cost;
    m_quantity -= quantity;
    while (quantity > 0) {
        Lot &oldest = m_lots.front();
        const qint64 taken = std::min(quantity, oldest.quantity());
        cost = checkedSum(cost, oldest.take(taken));
        quantity -= taken;
        if (oldest.quantity() == 0) {
            m_lots.pop_front();
        }
    }
    forgetIfEmpty();
    return cost;
}

void CostBasis::earn(Money money)
{
    if (m_method == CostMethod::Diluted && m_quantity > 0) {
        m_earned = checkedSum(m_earned, money);
    }
}

Money CostBasis::cost() const
{
    return std::accumulate(m_lots.begin(), m_lots.end(), Money(),
                           [](Money sum, const Lot &lot) { return checkedSum(sum, lot.cost()); });
}

double CostBasis::exactCost() const
{
    return std::accumulate(m_lots.begin(), m_lots.end(), -m_earned.yuan(),
                           [](double sum, const Lot &lot) { return sum + lot.exactCost(); });
}

std::optional<double> CostBasis::costPrice() const
{
    if (m_quantity == 0) {
        return std::nullopt;
    }
    return exactCost() / static_cast<double>(m_quantity);
}

/// Spreads the shares over the lots by their sums from the oldest on, so that roundings do not add up. A lot
/// that keeps no share leaves its cost to the next one.
void CostBasis::rescale(qint64 quantity)
{
    std::deque<Lot> scaled;
    qint64 before = 0; // the shares of the lots so far, as they were
    qint64 after = 0;  // and as they are
    Money carried;
    for (const Lot &lot : m_lots) {
        before += lot.quantity();
        const qint64 shares = proportionRoundedDown(quantity, before, m_quantity) - after;
        after += shares;
        Lot moved = lot;
        moved.add(0, carried);
        moved.resize(shares);
        carried = shares == 0 ? moved.cost() : Money();
        if (shares > 0) {
            scaled.push_back(moved);
        }
    }
    m_lots = std::move(scaled);
    m_quantity = quantity;
}

void CostBasis::forgetIfEmpty()
{
    if (m_quantity == 0) {
        m_earned = Money();
    }
}

} // namespace TradeModule
