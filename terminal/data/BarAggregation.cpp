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

Bars toDays(const Bars &minutes)
{
    Bars days = joinSpans(minutes, [](const Bar &minute) { return qint64(minute.date); });
    for (Bar &day : days) {
        day.minute = 0;
    }
    return days;
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
