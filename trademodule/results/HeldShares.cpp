#include "trademodule/results/HeldShares.h"

#include "trademodule/results/CheckedSum.h"

#include <algorithm>

namespace TradeModule {

HeldShares HeldShares::restored(CostMethod method, qint64 quantity, double exactCost, qint64 unexplained)
{
    HeldShares shares(method);
    shares.m_basis = CostBasis::restored(method, quantity, exactCost);
    shares.m_unexplained = unexplained;
    return shares;
}

HeldShares::Left HeldShares::apply(const AccountEvent &event)
{
    switch (event.kind) {
    case EventKind::Buy:
    case EventKind::In:
        m_basis.add(event.quantity, checkedSum(event.amount, event.fee));
        return {};
    case EventKind::Bonus:
        m_basis.enlarge(event.quantity);
        return {};
    case EventKind::Sell:
        return sell(event);
    case EventKind::Merger: {
        const qint64 vanished = explained(event.quantity);
        return {vanished, {}, m_basis.shrink(vanished)};
    }
    case EventKind::Out: {
        const qint64 left = explained(event.quantity);
        return {left, {}, m_basis.leave(left)};
    }
    case EventKind::Dividend:
        m_basis.earn(event.amount);
        return {};
    case EventKind::Tax:
        m_basis.earn(-event.amount);
        return {};
    case EventKind::Interest:
        return {};
    }
    Q_UNREACHABLE();
}

HeldShares::Left HeldShares::sell(const AccountEvent &event)
{
    const qint64 sold = explained(event.quantity);
    const Money received = checkedSum(event.amount, -event.fee);
    const Money proceeds = sold == event.quantity ? received : partInCents(received, sold, event.quantity);
    return {sold, proceeds, m_basis.sell(sold, proceeds)};
}

qint64 HeldShares::explained(qint64 quantity)
{
    const qint64 known = std::min(quantity, m_basis.quantity());
    m_unexplained = checkedSum(m_unexplained, quantity - known);
    return known;
}

} // namespace TradeModule
