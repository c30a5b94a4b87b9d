#pragma once

#include "trademodule/results/AccountEvent.h"

#include <vector>

namespace TradeModule {

/// What an account received on one day for the shares that it held: what a company did, as far as its holder
/// sees it.
struct ReceivedAction
{
    TradingDate date;
    qint64 held = 0;  ///< shares at the end of the day before, for which it was received
    Money cash{};     ///< dividends
    qint64 bonus = 0; ///< shares for nothing, a split's too; below 0 where shares were put together
};

/// Finds what was received among the events of one security. New shares that were paid for are not told:
/// a statement has neither their ex-date nor how many might have been bought.
class ReceivedActions
{
public:
    /// Oldest event first.
    void take(const AccountEvent &event);

    /// Oldest first, one for each day.
    const std::vector<ReceivedAction> &all() const { return m_actions; }

private:
    ReceivedAction *actionOn(TradingDate date);
    void startDay(TradingDate date);

    std::vector<ReceivedAction> m_actions;
    TradingDate m_day = TradingDate::first();
    qint64 m_heldBefore = 0; ///< at the end of the day before m_day
    qint64 m_held = 0;
};

} // namespace TradeModule
