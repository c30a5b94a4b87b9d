#pragma once

#include "trademodule/ledger/AccountHistory.h"
#include "trademodule/results/HeldShares.h"
#include "trademodule/results/ResultsVisitor.h"

namespace TradeModule {

/// Reckons what one security of a ledger cost and earned. What happened after `last` is left out: the books
/// are those of that day's evening. Gives what is held then. Takes a second for a million entries.
HeldShares reckon(AccountHistory *history, const KnownSecurity &security, CostMethod method, TradingDate last,
                  ResultsVisitor *visitor);

/// The same for money that belongs to no security.
void reckonOtherMoney(AccountHistory *history, TradingDate last, ResultsVisitor *visitor);

} // namespace TradeModule
