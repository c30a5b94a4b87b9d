#include "terminal/data/BarAggregation.h"

#include <algorithm>

namespace Terminal {

namespace {

qint64 weekOf(const Bar &bar)
{
    constexpr int daysOfWeek = 7;
    return dayOf(bar).calendarDate().toJulianDay() / daysOfWeek; // Julian day 0 was a Monday
}

qint64 monthOf(const Bar &bar)
{
    return bar.date / 100;
}

template <typename SpanOf>
Bars joinSpans(const Bars &days, SpanOf spanOf)
{
    Bars spans;
    qint64 current = -1;
    for (const Bar &day : days) {
        const qint64 span = spanOf(day);
        if (span == current) {
            extendBar(spans.back(), day);
        } else {
            spans.push_back(day);
        }
        current = span;
    }
    return spans;
}

} // namespace

void extendBar(Bar &bar, const Bar &next)
{
    bar.date = next.date;
    bar.high = std::max(bar.high, next.high);
    bar.low = std::min(bar.low, next.low);
    bar.close = next.close;
    bar.volume += next.volume;
}

Bars joinDays(const Bars &days, ChartPeriod period)
{
    switch (period) {
    case ChartPeriod::Week:
        return toWeeks(days);
    case ChartPeriod::Month:
        return toMonths(days);
    case ChartPeriod::Day:
    case ChartPeriod::Minute:
        break;
    }
    return days;
}

Bars toDays(const Bars &minutes)
{
    Bars days = joinSpans(minutes, [](const Bar &minute) { return qint64(minute.date); });
    for (Bar &day : days) {
        day.minute = 0;
    }
    return days;
}

bool isOfSameSpan(const Bar &a, const Bar &b, ChartPeriod period)
{
    switch (period) {
    case ChartPeriod::Week:
        return weekOf(a) == weekOf(b);
    case ChartPeriod::Month:
        return monthOf(a) == monthOf(b);
    case ChartPeriod::Day:
        return a.date == b.date;
    case ChartPeriod::Minute:
        break;
    }
    return a.date == b.date && a.minute == b.minute;
}

Bars toWeeks(const Bars &days)
{
    return joinSpans(days, weekOf);
}

Bars toMonths(const Bars &days)
{
    return joinSpans(days, monthOf);
}

} // namespace Terminal
