#pragma once

#include "terminal/data/Bar.h"
#include "trading/ClockTime.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace Terminal {

// The bars that a day has, as charts and files know them; when the exchanges are open is in
// trading/MarketRules.

/// Bars of a full trading day: 0930 for the opening auction, 0931–1130 and 1301–1500. A label marks
/// the end of its minute.
constexpr int minutesOfTradingDay = 241;

/// The bar of the opening auction, in minutes since midnight.
constexpr int auctionMinute = 9 * 60 + 30;

/// The last bar, in minutes since midnight.
constexpr int lastTradingMinute = 15 * 60;

/// True for a Saturday or Sunday on which the exchanges were closed; before 2000 some were not.
bool isClosedWeekend(Trading::TradingDate day);

/// True when a bar of a trading day may end at `minute` (minutes since midnight).
bool isTradingMinute(int minute);

/// The bar that a quote of this time is of, by its minute: the one that ends with the minute that is under
/// way. From 09:25 on it is that of the opening auction, and up to a minute after a session its last one, for
/// the last word is often some seconds late. Nothing at any other time.
std::optional<int> minuteOfQuote(Trading::ClockTime time);

/// The minutes of a full day that come after `minute`.
std::vector<std::int32_t> tradingMinutesAfter(int minute);

/// The minutes of one day with a bar for the opening auction: where the recording has none, one is
/// made, flat at the first open and without volume. Requires at least one bar.
Bars withAuctionBar(Bars minutes);

} // namespace Terminal
