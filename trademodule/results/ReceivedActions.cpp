#include "trademodule/results/ReceivedActions.h"

namespace TradeModule {

void ReceivedActions::take(const AccountEvent &event)
{
    startDay(event.date);
    switch (event.kind) {
    case EventKind::Dividend:
        actionOn(event.date)->cash = actionOn(event.date)->cash + event.amount;
        break;
    case EventKind::Bonus:
        actionOn(event.date)->bonus += event.quantity;
        break;
    case EventKind::Merger:
        actionOn(event.date)->bonus -= event.quantity;
        break;
    case EventKind::Buy:
    case EventKind::Sell:
    case EventKind::In:
    case EventKind::Out:
    case EventKind::Tax:
    case EventKind::Interest:
        break;
    }
    m_held += bringsShares(event.kind) ? event.quantity : takesShares(event.kind) ? -event.quantity : 0;
}

void ReceivedActions::startDay(TradingDate date)
{
    if (date != m_day) {
        m_day = date;
        m_heldBefore = m_held;
    }
}

ReceivedAction *ReceivedActions::actionOn(TradingDate date)
{
    if (m_actions.empty() || m_actions.back().date != date) {
        m_actions.push_back({date, m_heldBefore});
    }
    return &m_actions.back();
}

} // namespace TradeModule
