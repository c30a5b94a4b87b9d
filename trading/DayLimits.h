#pragma once

#include "trading/Money.h"

#include <QString>

namespace Trading {

/// How far a price may go in a day, both ends included: the trading module holds orders against it, and the
/// terminal's ticket shows it.
struct DayLimits
{
    Money lowest;
    Money highest;

    constexpr bool contain(Money price) const { return !(price < lowest) && !(price > highest); }
};

/// 10 % around the close of the day before, and 20 % on the boards of young companies; to the nearest step of
/// prices, half a step up.
DayLimits dayLimits(const QString &code, Money closeBefore);

} // namespace Trading
