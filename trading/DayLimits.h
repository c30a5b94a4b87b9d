#pragma once

#include "trading/Money.h"

namespace Trading {

/// How far a price may go in a day, both ends included: the trading module holds orders against it, and the
/// terminal's ticket shows it. Made by SecurityRules.
struct DayLimits
{
    Money lowest;
    Money highest;

    constexpr bool contain(Money price) const { return !(price < lowest) && !(price > highest); }
};

} // namespace Trading
