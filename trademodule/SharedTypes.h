// What the trading module shares with the terminal goes by its short name here.
#pragma once

#include "trading/ClockTime.h"
#include "trading/Direction.h"
#include "trading/Market.h"
#include "trading/Money.h"
#include "trading/SecurityId.h"
#include "trading/TradingDate.h"

namespace TradeModule {

using Trading::ClockTime;
using Trading::Direction;
using Trading::directionOfCode;
using Trading::isOnCharts;
using Trading::Market;
using Trading::marketInLedger;
using Trading::marketOfLetters;
using Trading::marketOfNumber;
using Trading::Money;
using Trading::SecurityId;
using Trading::TradingDate;

} // namespace TradeModule
