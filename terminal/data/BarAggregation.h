#pragma once

#include "terminal/data/Bar.h"
#include "terminal/data/ChartPeriod.h"

namespace Terminal {

/// Joins `next` to the end of `bar`: last close and date, highest high, lowest low, summed volume.
void extendBar(Bar &bar, const Bar &next);

/// The bars of a chart of this period, made of days: they themselves, their weeks or their months.
Bars joinDays(const Bars &days, ChartPeriod period);

/// True for bars of the same day, week or month, whichever a bar of the period spans.
bool isOfSameSpan(const Bar &a, const Bar &b, ChartPeriod period);

/// One bar per day that has a minute.
Bars toDays(const Bars &minutes);

/// One bar per week (Monday to Sunday) that has a trading day, dated by its last trading day.
Bars toWeeks(const Bars &days);

/// One bar per calendar month that has a trading day, dated by its last trading day.
Bars toMonths(const Bars &days);

} // namespace Terminal
