// How far a price may go in a day: for the trading module, which holds orders against it, and for the
// terminal, whose ticket shows it. The overlays do not use it.
#pragma once

#include <QString>

namespace TradeChart::Module {

/// The lowest and the highest price of a day, in cents.
struct DayLimits
{
    qint64 lowest = 0;
    qint64 highest = 0;
};

/// 10 % around the close of the day before, in cents, and 20 % on the boards of young companies; halves of
/// a cent go up. Whole numbers: a binary fraction would put half of the halves a cent too low.
inline DayLimits dayLimits(const QString &code, qint64 closeBefore)
{
    const bool isYoungBoard = code.startsWith(QLatin1String("30")) || code.startsWith(QLatin1String("688"));
    const qint64 percent = isYoungBoard ? 20 : 10;
    const auto part = [closeBefore](qint64 percents) { return (closeBefore * percents + 50) / 100; };
    return {part(100 - percent), part(100 + percent)};
}

} // namespace TradeChart::Module
