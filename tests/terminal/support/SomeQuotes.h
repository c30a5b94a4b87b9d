#pragma once

#include "tests/terminal/support/DayAndTime.h"
#include "trading/Quote.h"

namespace Terminal {

inline const Trading::SecurityId quotedSecurity{QStringLiteral("600519"), Trading::Market::Shanghai};

/// A Thursday that tests have as today.
constexpr Trading::TradingDate quotedDay = onDay(20240104);

/// A quote of that day with one price.
inline Trading::Quote quoteAt(Trading::ClockTime time, double price, qint64 volume = 100)
{
    const Trading::Money money = Trading::Money::ofYuan(price).value();
    return {quotedSecurity, quotedDay, time, money, money, money, money, volume};
}

inline Trading::Quote quoteAt(int hhmm, double price, qint64 volume = 100)
{
    return quoteAt(atTime(hhmm), price, volume);
}

} // namespace Terminal
