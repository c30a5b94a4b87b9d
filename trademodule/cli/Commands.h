#pragma once

#include "trademodule/cli/Command.h"

namespace TradeModule {

Command serveCommand();
Command importCommand();
Command tradesCommand();
Command positionsCommand();

} // namespace TradeModule
