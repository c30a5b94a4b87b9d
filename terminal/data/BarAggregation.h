#pragma once

#include "terminal/data/Bar.h"

namespace Terminal {

/// Joins `next` to the end of `bar`: last close and date, highest high, lowest low, summed volume.
void extendBar(Bar &bar, const Bar &next);

/// One bar per day that has a minute.
Bars toDays(const Bars &minutes);

/// One bar per week (Monday to Sunday) that has a trading day, dated by its last trading day.
Bars toWeeks(const Bars &days);

/// One bar per calendar month that has a trading day, dated by its last trading day.
Bars toMonths(const Bars &days);

} // namespace Terminal
