#pragma once

#include <QString>

namespace Trading {

/// How far a price may go in a day, in cents: the trading module holds orders against it, and the terminal's
/// ticket shows it.
struct DayLimits
{
    qint64 lowest = 0;
    qint64 highest = 0;
};

/// 10 % around the close of the day before, in cents, and 20 % on the boards of young companies; half a
/// cent is rounded up.
DayLimits dayLimits(const QString &code, qint64 closeBefore);

} // namespace Trading
