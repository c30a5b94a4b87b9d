#pragma once

#include "terminal/data/Loaded.h"
#include "trading/ClockTime.h"
#include "trading/Direction.h"

#include <optional>
#include <vector>

namespace Terminal {

using Trading::Direction;

/// An order that is to be placed when a replay has completed the bar that ends at `time`.
struct PlannedOrder
{
    Trading::ClockTime time;
    Direction side = Direction::Buy;
    qint64 quantity = 0; ///< shares
    double price = 0;    ///< yuan
};

using OrderPlan = std::vector<PlannedOrder>;

/// The trading minute that is written as hhmm; nothing when it is none.
std::optional<Trading::ClockTime> readTradingMinute(const QString &hhmm);

/// Reads "HHMM buy|sell QUANTITY PRICE", e.g. "1000 buy 500 13.35"; a failure says what it must be.
Loaded<PlannedOrder> readPlannedOrder(const QString &text);

} // namespace Terminal
