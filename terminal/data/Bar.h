#pragma once

#include "trading/ClockTime.h"
#include "trading/TradingDate.h"

#include <cstdint>
#include <vector>

namespace Terminal {

/// What one bar of a chart knows. Prices in the currency of the security, volume in shares.
struct Bar
{
    std::int32_t date = 0;   ///< trading day as yyyymmdd; the last one of a week's or month's bar
    std::int32_t minute = 0; ///< end of the bar in minutes since midnight; 0 for bars of a day or more
    double open = 0;
    double high = 0;
    double low = 0;
    double close = 0;
    double volume = 0;

    bool rises() const { return close >= open; }

    friend bool operator==(const Bar &a, const Bar &b)
    {
        return a.date == b.date && a.minute == b.minute && a.open == b.open && a.high == b.high &&
               a.low == b.low && a.close == b.close && a.volume == b.volume;
    }
    friend bool operator!=(const Bar &a, const Bar &b) { return !(a == b); }
};

/// The trading day of a bar; requires one that has a day.
inline Trading::TradingDate dayOf(const Bar &bar)
{
    return Trading::TradingDate::ofNumber(bar.date).value();
}

/// When a bar of a minute ends; requires one that does so at a time of a clock.
inline Trading::ClockTime endOf(const Bar &bar)
{
    return Trading::ClockTime::ofMinute(bar.minute).value();
}

/// Oldest bar first.
using Bars = std::vector<Bar>;

} // namespace Terminal
