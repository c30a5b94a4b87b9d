#include "terminal/data/BarAggregation.h"

#include "terminal/data/CalendarDate.h"

#include <algorithm>

namespace Terminal {

namespace {

qint64 weekOf(std::int32_t date)
{
    // Julian day 0 was a Monday.
    return dateOf(date).toJulianDay() / 7;
}

qint64 monthOf(std::int32_t date)
{
    return date / 100;
}

template <typename SpanOf>
Bars joinSpans(const Bars &days, SpanOf spanOf)
{
    Bars spans;
    qint64 current = -1;
    for (const Bar &day : days) {
        const qint64 span = spanOf(day.date);
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

Bars toWeeks(const Bars &days)
{
    return joinSpans(days, weekOf);
}

Bars toMonths(const Bars &days)
{
    return joinSpans(days, monthOf);
}

} // namespace Terminal
