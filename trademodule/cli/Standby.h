#pragma once

#include "trademodule/cli/ServiceLog.h"
#include "trademodule/ledger/ServingLease.h"

namespace TradeModule {

/// Waits until the ledger's lease is free and takes it: within a second of its owner's end, and after ending
/// an owner that is frozen. Who it waits for is said once, in the log. False when the program was told
/// to end before. An Error when the ledger fails otherwise than for a while.
bool standByFor(ServingLease *lease, ServiceLog *log);

} // namespace TradeModule
