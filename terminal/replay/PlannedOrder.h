#pragma once

#include "terminal/data/Loaded.h"
#include "trading/Direction.h"

#include <vector>

namespace Terminal {

using Trading::Direction;

/// An order that is to be placed when a replay has completed the bar of `minute`.
struct PlannedOrder
{
    int minute = 0; ///< minutes since midnight
    Direction side = Direction::Buy;
    qint64 quantity = 0; ///< shares
    double price = 0;    ///< yuan
};

using OrderPlan = std::vector<PlannedOrder>;

/// Minutes since midnight of a trading minute that is written as hhmm; 0 when it is none.
int readTradingMinute(const QString &hhmm);

/// Reads "HHMM buy|sell QUANTITY PRICE", e.g. "1000 buy 500 13.35"; a failure says what it must be.
Loaded<PlannedOrder> readPlannedOrder(const QString &text);

} // namespace Terminal
