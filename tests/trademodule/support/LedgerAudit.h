#pragma once

#include "trademodule/ledger/Ledger.h"

#include <string>
#include <vector>

namespace TradeModule {

/// What of a paper account does not add up: each order against its executions, the executions against
/// holding and cash, each status against its quantities. Recomputed from the rows alone, while nobody
/// writes; empty when all is well. `openingCash` is what the account had before its first order.
std::vector<std::string> audit(Ledger *ledger, Money openingCash);

} // namespace TradeModule
