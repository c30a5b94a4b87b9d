#pragma once

#include "trademodule/cli/Command.h"

namespace TradeModule {

Command serveCommand();
Command importCommand();
Command importsCommand();
Command undoCommand();
Command openCommand();
Command moneyCommand();
Command tradesCommand();
Command positionsCommand();
Command placeCommand();
Command cancelCommand();
Command ordersCommand();
Command accountCommand();
Command resultsCommand();
Command costCommand();
Command practiceCommand();
Command statusCommand();

} // namespace TradeModule
