#pragma once

#include "trading/ClockTime.h"
#include "trading/TradingDate.h"

namespace Terminal {

/// The day of yyyymmdd, which the calendar must have.
constexpr Trading::TradingDate onDay(int yyyymmdd)
{
    return Trading::TradingDate::ofNumber(yyyymmdd).value();
}

/// The time of hhmm, which a clock must show.
constexpr Trading::ClockTime atTime(int hhmm)
{
    return Trading::ClockTime::of(hhmm / 100, hhmm % 100).value();
}

} // namespace Terminal
