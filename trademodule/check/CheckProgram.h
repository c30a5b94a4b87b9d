#pragma once

#include <QStringList>

namespace TradeModule {

/// Runs `trademodule-check` with its command line, the program's name first. Returns how it ends: 0 when the
/// module is as the guides say, 1 when it is not or nobody answers, 2 when the command line cannot be
/// understood.
int runCheckProgram(const QStringList &arguments, bool hasExchangeTime);

} // namespace TradeModule
